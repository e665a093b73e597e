#pragma once

namespace tarvendo {

/// An event that is set as soon as, and for ever after, the process was asked to end: whoever waits
/// for something else waits for it too.
void* TerminationEvent();

/// From now on Ctrl-C, Ctrl-Break and the closing of the console window ask the process to end, as
/// long as `wanted` is told; otherwise they do what they do by default. A second Ctrl-C ends the
/// process at once. When the window is closed the program has four seconds to save what there is.
void HearConsoleEvents(bool wanted);

}  // namespace tarvendo
