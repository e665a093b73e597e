#pragma once

namespace tarvendo {

/// How many decimal digits a number has; 1 for 0 and less.
constexpr int DigitCount(long long number) {
  int digits = 1;
  for (; number >= 10; number /= 10)
    ++digits;
  return digits;
}

}  // namespace tarvendo
