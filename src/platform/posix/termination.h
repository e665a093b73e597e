#pragma once

namespace tarvendo {

/// A descriptor that can be read from as soon as, and for ever after, the process was asked to end:
/// whoever waits for something else polls it too. Negative when the host had none left to give.
int TerminationDescriptor();

/// Asks the process to end. May be called in a signal handler once TerminationDescriptor was
/// called.
void NoteTermination();

}  // namespace tarvendo
