#pragma once

#include <cstddef>

namespace tarvendo {

// The sanitizers would find these faults before the machine does.
#define TARVENDO_FAULTY \
  [[gnu::noinline]] __attribute__((no_sanitize("undefined", "address", "thread")))

TARVENDO_FAULTY inline void WriteNowhere() {
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;
}

TARVENDO_FAULTY inline void DivideByZero() {
  volatile int zero = 0;
  volatile int quotient = 7 / zero;
  static_cast<void>(quotient);
}

[[noreturn]] TARVENDO_FAULTY inline void ExecuteNonsense() {
  __builtin_trap();
}

/// Calls itself until the stack is used up. Returns a number so that the call cannot become a jump.
TARVENDO_FAULTY inline std::size_t Overflow(std::size_t depth) {
  volatile char frame[512];
  for (std::size_t i = 0; i < sizeof(frame); ++i) {
    frame[i] = static_cast<char>(depth);
  }
  return depth == 0 ? 0 : Overflow(depth + 1) + static_cast<std::size_t>(frame[depth % 512]);
}

}  // namespace tarvendo
