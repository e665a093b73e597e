#include "platform/host_time.h"

namespace tarvendo {

static_assert(sizeof(std::time_t) >= sizeof(std::int64_t), "times are kept as 64-bit seconds");

std::int64_t HostSeconds() {
  return std::time(nullptr);
}

bool HostLocalTime(std::int64_t seconds, std::tm& parts) {
  const std::time_t moment = seconds;
  return localtime_r(&moment, &parts) != nullptr;
}

std::int64_t HostMoment(std::tm parts) {
  return std::mktime(&parts);
}

}  // namespace tarvendo
