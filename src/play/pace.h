#pragma once

#include <chrono>

namespace tarvendo {

/// How long a game is waited for, and how often it is looked at.
struct Pace {
  std::chrono::milliseconds first_sign{10000};  ///< for a debug file to appear
  std::chrono::milliseconds look{2000};       ///< between two looks where the host gives no notices
  std::chrono::milliseconds fallback{10000};  ///< between two looks where it does: one may be lost
  std::chrono::milliseconds record{2000};     ///< for the record, behind the end of the game
  std::chrono::milliseconds last_word{
      60000};  ///< for more in a debug file whose WinBoard has ended
  std::chrono::milliseconds silence{1800000};  ///< of a debug file until somebody is told
  std::chrono::milliseconds patience{0};       ///< with a silent debug file; 0 is for ever
  std::chrono::milliseconds killing{5000};     ///< for the processes of a game that was ended
  /// With many games at once, a game is over when its processes have ended as well, or its record
  /// has not grown for `record`. Otherwise it is over as soon as there is a record.
  bool awaits_processes = false;
};

}  // namespace tarvendo
