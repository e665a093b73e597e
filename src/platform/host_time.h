#pragma once

#include <cstdint>
#include <ctime>

namespace tarvendo {

/// What clock.cpp asks of the host. May be called from any thread.

/// Seconds since the epoch.
std::int64_t HostSeconds();

/// The local calendar time at a moment; false when the host cannot tell.
bool HostLocalTime(std::int64_t seconds, std::tm& parts);

/// The moment of a local calendar time, in seconds since the epoch; negative when there is none.
std::int64_t HostMoment(std::tm parts);

}  // namespace tarvendo
