#include "pairing/bracket_pairing.h"

#include <optional>
#include <vector>

#include "pairing/bracket_task.h"
#include "pairing/first_pairing.h"

namespace tarvendo {
namespace {

constexpr std::size_t kTooManyForNoConflict = 11;
constexpr std::size_t kTooManyForWeakGivesWay = 17;

std::vector<ColourLevel> LevelsFor(std::size_t free_count) {
  std::vector<ColourLevel> levels;
  if (free_count < kTooManyForNoConflict) levels.push_back(kNoConflict);
  if (free_count < kTooManyForWeakGivesWay) levels.push_back(kWeakGivesWay);
  levels.push_back(kMediumGivesWay);
  return levels;
}

void RecordPairs(Bracket& bracket, const std::vector<SeatPair>& pairs, std::size_t seats) {
  std::vector<std::size_t> place_of(seats, bracket.Size());
  for (std::size_t place = 0; place < bracket.Size(); ++place) {
    if (bracket.Entries()[place].IsFree()) {
      place_of[PairingField::SeatOf(bracket.Entries()[place].number)] = place;
    }
  }
  for (const auto& [seat, other] : pairs)
    bracket.RecordPair(place_of[seat], place_of[other]);
}

bool PairAtLevel(const PairGraph& graph, Bracket& bracket, PairingClock& clock) {
  if (clock.CountedIsTimedOut()) return false;
  if (bracket.FreeCount() == 0) return true;
  const auto pairs = FirstPairing(graph, MakeTask(bracket));
  if (!pairs) return false;
  RecordPairs(bracket, *pairs, graph.SeatCount());
  return true;
}

}  // namespace

bool PairBracketLevels(LevelGraphs& graphs, Bracket& bracket, PairingClock& clock) {
  for (const ColourLevel level : LevelsFor(bracket.FreeCount())) {
    bracket.level = level;
    if (PairAtLevel(graphs.At(level), bracket, clock)) return true;
  }
  return false;
}

bool CanBePaired(LevelGraphs& graphs, const Bracket& bracket, Matching& scratch) {
  return bracket.FreeCount() == 0 ||
         HasPairing(graphs.At(kMediumGivesWay), MakeTask(bracket), scratch);
}

}  // namespace tarvendo
