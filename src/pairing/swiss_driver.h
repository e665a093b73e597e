#pragma once

namespace tarvendo {

class BracketList;
class Tourney;

/// How a Swiss round is to be paired.
struct PairingRequest {
  int time_limit = 0;     ///< seconds for each search; 0 and less stand for 10
  bool automatic = true;  ///< try all shapes of brackets; the following count only without it
  bool down = false;      ///< pair down with the given size
  bool up = false;        ///< pair up with it, after pairing down has failed
  int size = 0;           ///< width of the brackets in half points; less than 0 counts as 0
};

/// Pairs the current round of a Swiss tourney and adds its games. Computes the standings first.
/// Refuses, with a message, a round robin, and while a game of a former round is not played or its
/// result unknown. The automatic mode pairs down and up with wider and wider brackets, at last in
/// one big bracket, and prints " DOWN(%d)" and " UP(%d)" with the width in quarter points for each
/// shape that failed.
///
/// True when games were added, and also when not even the big bracket could be paired (with "Even
/// pairing one big bracket failed!"): callers go on as after a success.
bool PairSwissRound(Tourney& tourney, BracketList& brackets, const PairingRequest& request);

}  // namespace tarvendo
