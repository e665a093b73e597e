#pragma once

#include <cstdint>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "pairing/bracket_list.h"
#include "pairing/swiss_driver.h"
#include "platform/clock.h"
#include "tourney/tourney.h"

namespace tarvendo {

/// A Swiss tourney with results by chance, on the real machine (of which it uses the clock only).
/// Engines with a low number are stronger; one game in four is drawn.
class SwissSimulation {
 public:
  SwissSimulation(std::uint64_t seed, int participants, int rounds) : dice_(seed) {
    tourney.ChangeSettings()->rounds = rounds;
    for (int number = 1; number <= participants; ++number) {
      Player player;
      player.texts.name = "Engine " + std::to_string(number);
      player.number = number;
      tourney.ChangeParticipants().push_back(player);
    }
  }

  /// Pairs the next round automatically. False when it has got no games.
  bool Pair() {
    const std::size_t games = tourney.Games().size();
    PairSwissRound(tourney, brackets, PairingRequest());
    return tourney.Games().size() > games;
  }

  /// Gives every game without a result one.
  void Play() {
    for (Game& game : tourney.ChangeGames()) {
      if (game.IsReady()) continue;
      game.status = kReady;
      game.result = ResultOf(game);
    }
  }

  /// Pairs and plays so many rounds.
  void PlayRounds(int rounds) {
    for (int round = 1; round <= rounds; ++round) {
      Pair();
      Play();
    }
  }

 private:
  int Below(int below) { return static_cast<int>(dice_() % static_cast<std::uint64_t>(below)); }

  int ResultOf(const Game& game) {
    if (Below(4) == 0) return kDraw;
    const int participants = static_cast<int>(tourney.Participants().size());
    const int luck = Below(2 * participants) - participants + game.black - game.white;
    return luck > 0 ? kWhiteWins : kBlackWins;
  }

  std::mt19937_64 dice_;
  std::unique_ptr<Clock> clock_ = MakeClock();

 public:
  Tourney tourney;
  BracketList brackets{*clock_};
};

}  // namespace tarvendo
