#pragma once

#include "pairing/bracket.h"
#include "pairing/matching.h"
#include "pairing/pair_graph.h"
#include "pairing/pairing_clock.h"

namespace tarvendo {

/// Pairs the free players of a bracket among themselves. A small bracket first insists on the
/// players' colours and gives way step by step (below 11 free players from the level 4 on, below 17
/// from 8 on, else 16 at once); the bracket keeps the level of the last attempt. False, and no
/// pairs, when it cannot be done or the time has run out; a bracket without free players is paired.
bool PairBracketLevels(LevelGraphs& graphs, Bracket& bracket, PairingClock& clock);

/// Whether PairBracketLevels would find a pairing, given time: the last level allows every pair
/// that the others do. `scratch` is any matching of the field.
bool CanBePaired(LevelGraphs& graphs, const Bracket& bracket, Matching& scratch);

/// Pairs one bracket by itself, within the limit of the clock, which it restarts. False, and no
/// pairs, when it cannot be done.
bool PairSingleBracket(const PairingField& field, Bracket& bracket, PairingClock& clock);

}  // namespace tarvendo
