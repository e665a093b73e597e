#include "tourney/rounds.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <utility>

#include "base/log.h"
#include "tourney/history.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr std::size_t kMostGames = 2000000;

int HalfOfParticipants(const Tourney& tourney) {
  return static_cast<int>(tourney.Participants().size() / 2);
}

/// The first round in which the participant has no game of some sub-round; 0 when there is none.
int FirstIncompleteRound(const Tourney& tourney, const Player& player) {
  std::set<std::pair<int, int>> played;
  for (const int index : player.games) {
    if (const Game* game = tourney.GameAt(index)) played.emplace(game->round, game->sub_round);
  }
  for (int round = 1; round <= tourney.Settings().rounds; ++round) {
    for (int sub_round = 1; sub_round <= tourney.Settings().sub_rounds; ++sub_round) {
      if (!played.contains({round, sub_round})) return round;
    }
    if (tourney.Settings().sub_rounds < 1) break;
  }
  return 0;
}

/// Whether 2 to the power of `rounds` reaches `participants`.
bool IsEnoughForOneWinner(int rounds, std::size_t participants) {
  return participants == 0 || rounds >= 63 ||
         (rounds >= 0 && (std::uint64_t{1} << rounds) >= participants);
}

}  // namespace

void RecomputeCurrentRound(Tourney& tourney) {
  if (!tourney.IsSwiss() || tourney.Settings().rounds == 0) return;
  int first = 0;
  for (const Player& player : tourney.Participants()) {
    const int round = FirstIncompleteRound(tourney, player);
    if (round != 0 && (first == 0 || round < first)) first = round;
  }
  if (first != 0) tourney.ChangeState()->round = first;
}

void AdjustRounds(Tourney& tourney) {
  const std::size_t participants = tourney.Participants().size();
  const auto settings = tourney.ChangeSettings();
  int& rounds = settings->rounds;
  if (!tourney.IsSwiss()) {
    rounds = RoundRobinRounds(static_cast<int>(participants));
  } else if (rounds > HalfOfParticipants(tourney)) {
    rounds = HalfOfParticipants(tourney);
    Print("Number of rounds adjusted to %d (maximum).\n", rounds);
  } else if (!IsEnoughForOneWinner(rounds, participants)) {
    rounds = std::max(rounds, 0);
    while (!IsEnoughForOneWinner(rounds, participants))
      ++rounds;
    Print("Number of rounds adjusted to %d (minimum).\n", rounds);
  }
}

void CutRoundsToHalf(Tourney& tourney) {
  const int half = HalfOfParticipants(tourney);
  if (tourney.Settings().rounds <= half) return;
  Print("Amount of rounds can't be more than half of players in the tourney.\n");
  Print("Setting Rounds to %d.\n", half);
  tourney.ChangeSettings()->rounds = half;
}

int LastSwissRound(const Tourney& tourney) {
  if (!tourney.IsSwiss()) return 0;
  return std::clamp(tourney.Settings().rounds, 0, HalfOfParticipants(tourney));
}

int RoundsWithoutGames(const Tourney& tourney) {
  int paired = 0;
  for (const Game& game : tourney.Games())
    paired = std::max(paired, game.round);
  return std::max(LastSwissRound(tourney) - paired, 0);
}

int PlayableSubRounds(const Tourney& tourney, std::size_t pairs) {
  const std::size_t most = kMostGames / std::max<std::size_t>(pairs, 1);
  return std::min(tourney.Settings().sub_rounds, static_cast<int>(std::max<std::size_t>(most, 1)));
}

int RoundRobinRounds(int participants) {
  return participants % 2 == 0 ? participants - 1 : participants;
}

bool AdvanceCurrentRound(Tourney& tourney) {
  if (!tourney.IsSwiss() || tourney.State().round >= tourney.Settings().rounds) return false;
  const auto& participants = tourney.Participants();
  const bool all_have_played =
      std::all_of(participants.begin(), participants.end(), [&](const Player& player) {
        return HasGameInRound(tourney, player, tourney.State().round, true);
      });
  if (all_have_played) ++tourney.ChangeState()->round;
  return all_have_played;
}

}  // namespace tarvendo
