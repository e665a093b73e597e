#include "runner/pairer.h"

#include <gtest/gtest.h>

#include <functional>

#include "fakes/captured_log.h"
#include "runner/tourney_room.h"

namespace tarvendo {
namespace {

/// A clock that lets something happen whenever the search looks at it.
class MeddlingClock : public ManualClock {
 public:
  std::int64_t Now() override {
    if (on_look) on_look();
    return ManualClock::Now();
  }

  std::function<void()> on_look;
};

/// A Swiss tourney of four before its first round.
class ThePairer : public ::testing::Test {
 protected:
  ThePairer() {
    const Hold hold = room_.shared.Take();
    hold->ChangeSettings()->rounds = 2;
    for (const char* name : {"Alpha", "Beta", "Gamma", "Delta"}) {
      Player player;
      player.texts.name = name;
      player.number = static_cast<int>(hold->Participants().size()) + 1;
      hold->ChangeParticipants().push_back(player);
    }
  }

  std::size_t Games() { return room_.shared.Take()->Games().size(); }

  /// Whether the next two players of equal wishes get White in turn as they would without a search.
  bool IsToggleUntouched() {
    const Hold hold = room_.shared.Take();
    return !ColourToggle(room_.brackets.With(hold).toggle).FirstGetsWhite();
  }

  CapturedLog machine_;
  MeddlingClock clock_;
  Host host_{machine_.files, machine_.processes, clock_, machine_.watches};
  TourneyRoom room_{host_};
};

TEST_F(ThePairer, AddsTheGamesOfTheRound) {
  EXPECT_EQ(PairNextRound(room_), PairerResult::kPaired);
  EXPECT_EQ(Games(), 2U);
  EXPECT_EQ(machine_.TakeOutput().substr(0, 26), "Pairing swiss round 1... 1");
}

TEST_F(ThePairer, LeavesTheTourneyToOthersWhileItSearches) {
  int looks = 0;
  clock_.on_look = [&] {
    ++looks;
    EXPECT_EQ(room_.shared.Take()->Participants().size(), 4U) << "a hold would wait for ever";
  };
  EXPECT_EQ(PairNextRound(room_), PairerResult::kPaired);
  EXPECT_GT(looks, 0);
}

TEST_F(ThePairer, ThrowsAwayASearchThatWasOvertakenAndLeavesTheColoursTurn) {
  clock_.on_look = [&] { room_.shared.Take()->ChangeSettings()->sub_rounds += 1; };
  EXPECT_EQ(PairNextRound(room_), PairerResult::kOvertaken);
  EXPECT_EQ(Games(), 0U);
  EXPECT_TRUE(IsToggleUntouched());
  clock_.on_look = nullptr;
  room_.shared.Take()->ChangeSettings()->sub_rounds = 1;
  EXPECT_EQ(PairNextRound(room_), PairerResult::kPaired);
}

TEST_F(ThePairer, TellsThatAFormerRoundIsNotPlayed) {
  PairNextRound(room_);
  room_.shared.Take()->ChangeState()->round = 2;
  machine_.TakeOutput();
  EXPECT_EQ(PairNextRound(room_), PairerResult::kFailed);
  EXPECT_EQ(Games(), 2U);
}

}  // namespace
}  // namespace tarvendo
