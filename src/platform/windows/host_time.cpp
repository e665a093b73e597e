#include "platform/host_time.h"

namespace tarvendo {

// The calls with 64 in their names, since the plain ones know 32 bits only in the 32-bit program.

std::int64_t HostSeconds() {
  return _time64(nullptr);
}

bool HostLocalTime(std::int64_t seconds, std::tm& parts) {
  const __time64_t moment = seconds;
  const std::tm* const local = _localtime64(&moment);  // Each thread has a record of its own here.
  if (local == nullptr) return false;
  parts = *local;
  return true;
}

std::int64_t HostMoment(std::tm parts) {
  return _mktime64(&parts);
}

}  // namespace tarvendo
