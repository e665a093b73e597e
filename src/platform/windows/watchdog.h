#pragma once

namespace tarvendo {

/// Makes the thread that can end the process, unless it is there. To be called while all is well:
/// after a fault no thread may be able to start any more.
void PrepareWatchdog();

}  // namespace tarvendo
