// Worked example, four participants (three rounds), White first:
//   1-2 in round 2, 3-1 in round 3, 2-3 in round 1, then those with participant 4:
//   1-4 in round 1, 2-4 in round 3, 4-3 in round 2.

#include "tourney/round_robin.h"

#include <algorithm>

#include "base/log.h"
#include "platform/faults.h"
#include "tourney/game_list.h"
#include "tourney/pairing_games.h"
#include "tourney/rounds.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// A game takes some hundred bytes here and in the file.
constexpr int kMostPairings = 2000000;

/// Round numbers run 1 to `rounds` in a circle.
int WrappedRound(int round, int rounds) {
  return round > rounds ? round - rounds : round;
}

Pairing MainPairing(int low, int high, int rounds) {
  const int round = WrappedRound(low + high - 1, rounds);
  const bool low_has_white = (high - low) % 2 != 0;
  return low_has_white ? Pairing{round, high, low} : Pairing{round, low, high};
}

/// Participant k meets the last one in the round that the main pairings leave free for it.
Pairing PairingWithLast(int k, int last, int rounds) {
  const int round = WrappedRound(2 * k - 1, rounds);
  return round % 2 != 0 ? Pairing{round, last, k} : Pairing{round, k, last};
}

}  // namespace

std::vector<Pairing> RoundRobinSchedule(int participants) {
  if (participants < 2) return {};
  if (participants == 2) return {{1, 2, 1}};
  const bool is_even = participants % 2 == 0;
  const int last = is_even ? participants : participants + 1;
  const int rounds = last - 1;
  std::vector<Pairing> schedule;
  for (int low = 1; low <= last - 2; ++low) {
    for (int high = low + 1; high <= last - 1; ++high) {
      schedule.push_back(MainPairing(low, high, rounds));
    }
  }
  for (int k = 1; is_even && k <= last - 1; ++k) {
    schedule.push_back(PairingWithLast(k, last, rounds));
  }
  return schedule;
}

bool CreateRRGames(Tourney& tourney, FileSystem& files) {
  const auto count = static_cast<long long>(tourney.Participants().size());
  if (count * (count - 1) / 2 > kMostPairings) {
    Print("%lld players have more games to play than the %d that a tourney can hold.\n", count,
          kMostPairings);
    return false;
  }
  Print("Creating Round Robin games...");
  for (const Game& game : tourney.Games()) {
    EndWhenAsked();
    DeleteGameFiles(tourney, files, game);
  }
  tourney.EraseAllGames();
  const int participants = static_cast<int>(tourney.Participants().size());
  tourney.ChangeSettings()->rounds = RoundRobinRounds(participants);
  const std::vector<Pairing> schedule = RoundRobinSchedule(participants);
  const int sub_rounds = std::max(PlayableSubRounds(tourney, schedule.size()), 1);
  for (const Pairing& pairing : schedule) {
    EndWhenAsked();
    AddGamesOfPairing(tourney, pairing.first, pairing.second, pairing.round, sub_rounds);
  }
  Print("ready.\n");
  return true;
}

}  // namespace tarvendo
