#include "runner/reporter.h"

#include <gtest/gtest.h>

#include <memory>

#include "runner/small_tourney.h"

namespace tarvendo {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class Reporting : public ::testing::Test, protected SmallTourney {
 protected:
  Reporting() {
    machine.files.MakeDirectory("/out");
    AddGames(4);
    reporter_ = std::make_unique<Reporter>(room, "/out");
  }

  /// How often the page has been written since the last call.
  int Written() {
    int pages = 0;
    for (const std::string& change : machine.files.Changes()) {
      const bool is_page = change.starts_with("rename ") && change.ends_with(" /out/index.html");
      if (is_page) ++pages;
    }
    const int before = std::exchange(written_, pages);
    return pages - before;
  }

  void Finish(int number) { GameNumber(number).status = kReady; }

  void Pass(milliseconds later = seconds(0)) {
    machine.clock.Advance(later);
    next_ = reporter_->Pass();
  }

  std::unique_ptr<Reporter> reporter_;
  std::optional<TimePoint> next_;
  int written_ = 0;
};

TEST_F(Reporting, WritesWhileGamesArePlayedEveryTenSecondsAtMost) {
  Pass();
  EXPECT_EQ(Written(), 0) << "nothing is played";
  tourney.ChangeSwitch()->SetRunning(true);
  Pass();
  EXPECT_EQ(Written(), 1);
  Finish(1);
  Pass(seconds(3));
  EXPECT_EQ(Written(), 0);
  ASSERT_TRUE(next_) << "it asks to be called when it is due";
  EXPECT_EQ(*next_ - machine.clock.Steady(), seconds(7));
  Pass(seconds(7));
  EXPECT_EQ(Written(), 1);
  EXPECT_FALSE(next_);
  Pass(seconds(20));
  EXPECT_EQ(Written(), 0) << "nothing has changed";
}

TEST_F(Reporting, WritesWhatChangedAtTheEndOfPlayToo) {
  tourney.ChangeSwitch()->SetRunning(true);
  Pass();
  EXPECT_EQ(Written(), 1);
  Finish(1);
  tourney.ChangeSwitch()->SetRunning(false);
  Pass(seconds(1));
  EXPECT_EQ(Written(), 0);
  Pass(seconds(9));
  EXPECT_EQ(Written(), 1);
  Finish(2);
  Pass(seconds(60));
  EXPECT_EQ(Written(), 0) << "a change by hand waits for the end of the script or the program";
}

TEST_F(Reporting, ShowsThatAnotherGameIsBeingPlayed) {
  tourney.ChangeSwitch()->SetRunning(true);
  Pass();
  GameOrder order;
  order.number = 2;
  room.running.With(shared.Take()).Add(order);
  Pass(seconds(10));
  EXPECT_EQ(Written(), 2);
  EXPECT_NE(machine.files.Bytes("/out/index.html").find("1 being played"), std::string::npos);
}

TEST_F(Reporting, WritesOnceBehindAScriptThatChangedTheTourney) {
  reporter_->WriteAtEnd();
  EXPECT_EQ(Written(), 0) << "nothing was loaded or changed";
  Finish(1);
  reporter_->WriteAtEnd();
  EXPECT_EQ(Written(), 1);
  reporter_->WriteAtEnd();
  EXPECT_EQ(Written(), 0) << "at the end of the program nothing is new";
  Finish(2);
  reporter_->WriteAtEnd();
  EXPECT_EQ(Written(), 1);
}

TEST_F(Reporting, WritesAtTheEndWhateverWasWrittenAMomentAgo) {
  tourney.ChangeSwitch()->SetRunning(true);
  Pass();
  Finish(1);
  Pass();
  reporter_->WriteAtEnd();
  EXPECT_EQ(Written(), 2);
  EXPECT_TRUE(machine.files.Has("/out/games.pgn"));
}

TEST_F(Reporting, ReadsThePgnFileOfTheTourney) {
  Finish(1);
  GameNumber(1).result = kWhiteWins;
  machine.files.Put("/t/all.pgn",
                    "[Event \"Cup\"]\n[Number \"1\"]\n[White \"Alpha\"]\n[Black \"Beta\"]\n\n"
                    "1. e4 e5 {White mates} 1-0\n\n");
  reporter_->WriteAtEnd();
  EXPECT_NE(machine.files.Bytes("/out/games.csv").find("White mates,normal,2,"), std::string::npos);
  EXPECT_NE(machine.files.Bytes("/out/games.pgn").find("[Termination \"normal\"]"),
            std::string::npos);
}

}  // namespace
}  // namespace tarvendo
