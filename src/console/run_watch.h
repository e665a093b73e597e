#pragma once

namespace tarvendo {

class Outputs;
class Runner;
struct TourneyRoom;

/// Waits until the runner has nothing left to do, and tells on standard error how far the tourney
/// is; then, unless the process was asked to end, how it went. Called on the console thread,
/// without the tourney.
void AwaitWithProgress(TourneyRoom& room, Runner& runner, Outputs& outputs);

}  // namespace tarvendo
