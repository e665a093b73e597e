#pragma once

#include <vector>

#include "base/scores.h"

namespace tarvendo {

class Tourney;

/// What the standings tell of a participant.
struct ComputedStanding {
  int games_played = 0;  ///< READY games
  QuarterPoints sonneborn_berger = 0;
  QuarterPoints buchholz = 0;
  QuarterPoints points = 0;
  int rank = 0;  ///< 1 is best

  bool operator==(const ComputedStanding&) const = default;
};

/// The standings of all participants, in list order; changes and prints nothing.
///
/// Only READY games count. Buchholz is the sum of the points of the opponents met, each opponent
/// once; Sonneborn-Berger weighs each opponent's points by what was scored against him
/// (https://en.wikipedia.org/wiki/Buchholz_system,
/// https://en.wikipedia.org/wiki/Sonneborn-Berger_score). A Swiss tourney breaks ties by the first,
/// then by the second, a round robin by the second alone. Who is equal in all of it shares a rank,
/// and the ranks behind skip: 1, 2, 2, 4.
///
/// Games of players that are no participants count for the other player's games and points only.
/// Sums too large for their type stay at the largest number. Linear in the number of games, but for
/// the sorting.
std::vector<ComputedStanding> ComputeStandings(const Tourney& tourney);

/// Enters the standings that ComputeStandings gives with the participants. In a Swiss tourney then
/// moves the current round on when everybody has played in it (rounds.h). Prints nothing.
void UpdateStandingsAndRound(Tourney& tourney);

}  // namespace tarvendo
