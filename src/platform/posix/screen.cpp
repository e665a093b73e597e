#include "platform/posix/screen.h"

#include <sys/ioctl.h>
#include <unistd.h>

namespace tarvendo {

ScreenSize SizeOfScreen() {
  winsize told{};
  ScreenSize size;
  if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &told) != 0) return size;
  if (told.ws_row > 0) size.rows = told.ws_row;
  if (told.ws_col > 0) size.columns = told.ws_col;
  return size;
}

ScreenPlace PlaceBehind(const std::vector<int>& widths, int columns) {
  ScreenPlace place;
  for (const int given : widths) {
    const int width = given == kTabWidth ? 8 - place.column % 8 : given;
    if (place.column + width > columns) place = {place.row + 1, 0};
    place.column += width;
    if (place.column >= columns) place = {place.row + 1, 0};
  }
  return place;
}

}  // namespace tarvendo
