#pragma once

#include <vector>

namespace tarvendo {

struct ScreenSize {
  int rows = 24;
  int columns = 80;
};

/// That of the terminal at standard output; the usual one when it does not say.
ScreenSize SizeOfScreen();

/// Counted from where a text began.
struct ScreenPlace {
  int row = 0;
  int column = 0;
};

/// In place of a width: a character that leads to the next multiple of eight.
constexpr int kTabWidth = -1;

/// Where the cursor stands behind characters of these widths, on a screen so many columns wide,
/// when it began at the left edge. One that has no room left in its row goes to the next one; a
/// full row is left.
ScreenPlace PlaceBehind(const std::vector<int>& widths, int columns);

}  // namespace tarvendo
