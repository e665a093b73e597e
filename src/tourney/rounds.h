#pragma once

#include <cstddef>

namespace tarvendo {

class Tourney;

/// Sets the current round of a Swiss tourney to the first round in which some participant has no
/// game of some sub-round (in any status). Leaves it when there is none, when Rounds is 0, and in a
/// round robin.
void RecomputeCurrentRound(Tourney& tourney);

/// Brings Rounds within its limits before a table is written. Round robin: what the number of
/// participants asks for, silently. Swiss: at most half of the participants ("Number of rounds
/// adjusted to %d (maximum).\n"), and otherwise at least enough for one winner, 2 to the power of
/// Rounds not below the number of participants ("... (minimum).\n").
void AdjustRounds(Tourney& tourney);

/// Cuts Rounds of a Swiss tourney to half of the participants, with a message when it was more.
void CutRoundsToHalf(Tourney& tourney);

/// The last round that a Swiss tourney will have: Rounds, but no more than half of the
/// participants; 0 in a round robin.
int LastSwissRound(const Tourney& tourney);

/// How many rounds of a Swiss tourney have no game yet; 0 in a round robin.
int RoundsWithoutGames(const Tourney& tourney);

/// How many games each of `pairs` pairs of a round plays: SubRounds (which may be 0 and less), but
/// no more than give 2,000,000 games in all, and at least one where SubRounds is more than that. A
/// mistyped number must not fill the memory.
int PlayableSubRounds(const Tourney& tourney, std::size_t pairs);

/// How many rounds a round robin of so many participants has.
int RoundRobinRounds(int participants);

/// Moves the current round of a Swiss tourney on by one when every participant has played in it (or
/// there is no participant), but never past Rounds. Returns whether it moved.
bool AdvanceCurrentRound(Tourney& tourney);

}  // namespace tarvendo
