#include "tourney/time_control.h"

#include <algorithm>
#include <limits>

#include "base/text.h"

namespace tarvendo {
namespace {

int ToField(long long value) {
  return static_cast<int>(std::clamp<long long>(value, std::numeric_limits<int>::min(),
                                                std::numeric_limits<int>::max()));
}

int ParseSeconds(const std::string& word) {
  Scanner scanner(word);
  long long minutes = 0;
  long long seconds = 0;
  if (!scanner.ReadNumber(minutes)) return 0;
  if (scanner.ReadCharacter(':')) scanner.ReadNumber(seconds);
  return ToField(static_cast<long long>(ToField(minutes)) * 60 + ToField(seconds));
}

}  // namespace

TimeControl ParseTimeControl(const std::string& text) {
  TimeControl control{0, 0, 0};
  Scanner scanner(text);
  long long mps = 0;
  long long inc = 0;
  if (!scanner.ReadNumber(mps)) return control;
  control.mps = ToField(mps);
  control.seconds = ParseSeconds(scanner.ReadWord());
  if (scanner.ReadNumber(inc)) control.inc = ToField(inc);
  return control;
}

}  // namespace tarvendo
