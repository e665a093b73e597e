#pragma once

namespace tarvendo {

// On which threads EndWhenAsked (faults.h) throws: from the beginning on any that calls it.

/// From now on it throws on the calling thread only.
void EndOnThisThread();

/// From now on it throws on any thread again.
void EndOnAnyThread();

}  // namespace tarvendo
