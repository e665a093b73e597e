#pragma once

#include <optional>

#include "pairing/bracket_list.h"
#include "pairing/pairing_field.h"

namespace tarvendo {

class Tourney;

/// How a Swiss round is to be paired.
struct PairingRequest {
  int time_limit = 0;     ///< seconds for each search; 0 and less stand for 10
  bool automatic = true;  ///< try all shapes of brackets; the following count only without it
  bool down = false;      ///< pair down with the given size
  bool up = false;        ///< pair up with it, after pairing down has failed
  BracketSize size;       ///< of the brackets
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

/// How the search for the pairs of a round has ended.
enum class SearchEnd {
  kFound,
  kGivenUp,  ///< not even the big bracket could be paired; the user was told, callers go on
  kFailed,   ///< the shapes that were asked for cannot be paired
};

/// The pairing of one round in three steps, so that the one that may take seconds needs no tourney.
/// It prints what PairSwissRound prints. Used by one thread.
class SwissSearch {
 public:
  /// The step before the search: computes the standings and reads what the search needs. Nothing,
  /// with a message, when the round cannot be paired now.
  static std::optional<SwissSearch> Begin(Tourney& tourney, BracketList& brackets,
                                          const PairingRequest& request);

  /// The search itself; looks at nothing that others can change.
  SearchEnd Run(const PairingRequest& request);

  /// The step behind it: leaves the brackets as the search has left its own and, when it has found
  /// them, adds the games. The tourney must be as it was in Begin.
  void Finish(Tourney& tourney, BracketList& brackets, SearchEnd end);

 private:
  SwissSearch(const Tourney& tourney, const BracketList& brackets);

  SearchEnd PairAsAsked(const PairingRequest& request);
  SearchEnd PairAutomatically();
  SearchEnd PairOneBigBracket();
  /// Whether the round can be paired in brackets of this shape; nothing, with a message, when there
  /// are none.
  std::optional<bool> TryShape(BracketWidth width, BracketMode mode);

  BracketList brackets_;  ///< a copy
  PairingField field_;    ///< the same for every shape of brackets
  int round_;             ///< the current round, 1-based
};

}  // namespace tarvendo
