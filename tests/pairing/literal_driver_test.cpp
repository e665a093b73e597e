// Whole tourneys, round by round, against the driver's steps done literally: the same text, and so
// the same games in the same order with the same colours. TARVENDO_PAIRING_TOURNEYS sets their
// number.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/text.h"
#include "pairing/bracket_list.h"
#include "pairing/literal_search.h"
#include "pairing/pairing_field.h"
#include "pairing/random_chains.h"
#include "pairing/swiss_driver.h"
#include "tourney/game_list.h"
#include "tourney/small_tourney.h"
#include "tourney/standings.h"

namespace tarvendo {
namespace {

constexpr std::int64_t kLiteralBudget = 1'000'000;

/// The driver step by step, telling what it would print.
class LiteralDriver {
 public:
  /// The whole text of pairing the round of a tourney whose standings are computed.
  std::string PairRound(const Tourney& tourney, const PairingRequest& request) {
    const PairingField field = MakePairingField(tourney);
    text_ = Format("Pairing swiss round %d... ", tourney.State().round);
    if (request.automatic) {
      PairAutomatically(tourney, field);
    } else {
      PairAsAsked(tourney, field, request);
    }
    return text_;
  }

  /// Whether a literal search took too long, so that the text means nothing.
  bool GaveUp() const { return gave_up_; }

 private:
  enum class Outcome { kPaired, kFailed, kNoBrackets };

  Outcome Try(const Tourney& tourney, const PairingField& field, int width, int mode) {
    literal::BracketList list(field, kLiteralBudget);
    if (!list.CreateBrackets(width, mode)) {
      text_ += "Can't create brackets. Maybe there are still games to be played?\n";
      return Outcome::kNoBrackets;
    }
    const auto count = static_cast<int>(list.Chain().size());
    if (mode != 3) text_ += Format("%d brackets created.\n", count);
    int code = list.PairAll();
    if (list.GaveUp()) code = list.PairAllWithoutRepetitions();
    gave_up_ = gave_up_ || list.GaveUp();
    if (code != 0) return Outcome::kFailed;
    for (const auto& [white, black] : list.TakeGames(toggle_))
      AddGames(tourney, white, black);
    return Outcome::kPaired;
  }

  void AddGames(const Tourney& tourney, int white, int black) {
    for (int sub_round = 1; sub_round <= tourney.Settings().sub_rounds; ++sub_round) {
      text_ += Format("Adding game %2d %-12s - %2d %-12s\n", white,
                      tourney.FindParticipant(white)->texts.name.c_str(), black,
                      tourney.FindParticipant(black)->texts.name.c_str());
      std::swap(white, black);
    }
  }

  void PairAutomatically(const Tourney& tourney, const PairingField& field) {
    for (int width = 0; width < 2 * tourney.State().round; width += 2) {
      for (const int mode : {2, 1}) {
        if (Try(tourney, field, width, mode) != Outcome::kFailed) return;
        text_ += Format(mode == 2 ? " DOWN(%d)" : " UP(%d)", width);
      }
    }
    if (Try(tourney, field, 0, 3) == Outcome::kPaired) return;
    text_ +=
        "\nEven pairing one big bracket failed!\nIn order to continue you should either give more "
        "time or do some pairing manually.\n";
  }

  void PairAsAsked(const Tourney& tourney, const PairingField& field,
                   const PairingRequest& request) {
    for (const int mode : {2, 1}) {
      if (!(mode == 2 ? request.down : request.up)) continue;
      text_ += Format("Pairing %s, Bracket size %d...\n", mode == 2 ? "Down" : "Up",
                      request.size.half_points * 2);
      if (Try(tourney, field, request.size.half_points * 2, mode) != Outcome::kFailed) return;
      text_ += "failed.\n";
    }
  }

  std::string text_;
  bool toggle_ = false;
  bool gave_up_ = false;
};

/// One tourney of random results.
class RandomSwiss {
 public:
  explicit RandomSwiss(std::uint64_t seed) : dice_(seed) {
    const int players = dice_.Percent(90) ? 2 * dice_.Between(2, 7) : dice_.Between(3, 9);
    for (int number = 1; number <= players; ++number) {
      Player player;
      player.texts.name = "P" + std::to_string(number);
      player.number = number;
      tourney_.ChangeParticipants().push_back(player);
    }
    tourney_.ChangeSettings()->rounds = dice_.Between(2, players);
    tourney_.ChangeSettings()->sub_rounds = dice_.Percent(85) ? 1 : 2;
  }

  /// Pairs and plays rounds until one gets no games. Returns how many comparisons there were.
  int Compare() {
    int rounds = 0;
    while (rounds < tourney_.Settings().rounds && !testing::Test::HasFailure()) {
      const std::size_t games = tourney_.Games().size();
      PairBothWays();
      ++rounds;
      if (tourney_.Games().size() == games || literal_.GaveUp()) break;
      PlayRound();
    }
    return rounds;
  }

  bool GaveUp() const { return literal_.GaveUp(); }

 private:
  void PairBothWays() {
    PairingRequest request;
    request.automatic = dice_.Percent(80);
    request.down = dice_.Percent(70);
    request.up = dice_.Percent(70);
    request.size.half_points = dice_.Below(4);
    UpdateStandingsAndRound(tourney_);
    const std::string expected = literal_.PairRound(tourney_, request);
    machine_.TakeOutput();
    PairSwissRound(tourney_, brackets_, request);
    if (literal_.GaveUp()) return;
    EXPECT_EQ(machine_.TakeOutput(), expected);
  }

  void PlayRound() {
    if (dice_.Percent(10)) {
      Forfeit(tourney_, machine_.files,
              dice_.Between(1, static_cast<int>(tourney_.Participants().size())));
    }
    static constexpr int kResults[] = {kWhiteWins, kWhiteWins,  kBlackWins, kBlackWins,
                                       kDraw,      kUnfinished, kBothLose};
    for (Game& game : tourney_.ChangeGames()) {
      if (game.IsReady()) continue;
      game.status = kReady;
      game.result = kResults[dice_.Below(dice_.Percent(5) ? 7 : 5)];
    }
  }

  Dice dice_;
  CapturedLog machine_;
  Tourney tourney_;
  BracketList brackets_{machine_.clock};
  LiteralDriver literal_;
};

TEST(LiteralDriver, WholeTourneysArePairedAndToldAsByTheLiteralSteps) {
  const char* asked_for = std::getenv("TARVENDO_PAIRING_TOURNEYS");
  const int tourneys = asked_for == nullptr ? 3000 : std::atoi(asked_for);
  int rounds = 0;
  int gave_up = 0;
  for (int seed = 1; seed <= tourneys && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomSwiss tourney(static_cast<std::uint64_t>(seed));
    rounds += tourney.Compare();
    gave_up += tourney.GaveUp() ? 1 : 0;
  }
  std::printf("%d tourneys, %d rounds, %d given up\n", tourneys, rounds, gave_up);
  EXPECT_LE(gave_up * 50, tourneys);
}

}  // namespace
}  // namespace tarvendo
