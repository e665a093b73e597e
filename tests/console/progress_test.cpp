#include "console/progress.h"

#include <gtest/gtest.h>

#include "console/outputs.h"
#include "console/progress_display.h"
#include "fakes/captured_log.h"
#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::seconds;

class Counted : public TourneyTest {};

TEST_F(Counted, ARoundRobinIsCountedByItsGames) {
  tourney.ChangeSettings()->type = kRoundRobin;
  Enter({"Alpha", "Beta", "Gamma", "Delta"});
  AddReady(1, 2, kDraw, 1);
  AddReady(3, 4, kUnknown, 1);
  Add(1, 3, 2).status = kSpooled;
  Add(2, 4, 3);
  const RunCounts counts = CountRun(tourney);
  EXPECT_EQ(counts.played, 2U);
  EXPECT_EQ(counts.all, 4U);
  EXPECT_EQ(counts.without_result, 1U);
  EXPECT_EQ(counts.round, 2);
  EXPECT_EQ(counts.rounds, 3);
}

TEST_F(Counted, ASwissTourneyThatPairsByItselfCountsTheRoundsToCome) {
  EnterMany(8);
  tourney.ChangeSettings()->rounds = 3;
  tourney.ChangeSettings()->sub_rounds = 2;
  AddReady(1, 2, kDraw, 1);
  EXPECT_EQ(CountRun(tourney).all, 1U);
  EXPECT_EQ(CountRun(tourney).rounds, 3);
  tourney.ChangeSettings()->auto_run = 1;
  EXPECT_EQ(CountRun(tourney).all, 1U + 2 * 4 * 2);
  EXPECT_EQ(CountRun(tourney).round, 1) << "all that there is has been played";
}

TEST_F(Counted, WithoutGamesThereIsNothingToCount) {
  const RunCounts counts = CountRun(tourney);
  EXPECT_EQ(counts.all, 0U);
  EXPECT_EQ(counts.round, 0);
}

class ProgressOfARun : public ::testing::Test {
 protected:
  CapturedLog machine_;
  ManualClock& clock_ = machine_.clock;
  RunCounts counts_{10, 66, 4, 1, 3, 11, 10};
};

TEST_F(ProgressOfARun, BeforeTheFirstGameHasEndedNobodyKnowsTheRate) {
  const Progress progress(clock_.Steady(), 10);
  clock_.Advance(minutes(5));
  EXPECT_EQ(progress.Line(counts_, clock_.Steady()),
            "10/66 played, 4 playing, 1 without result, round 3/11");
  EXPECT_EQ(progress.LastLine(counts_, clock_.Steady()),
            "10/66 played, 1 without result, in 5 min 0 s");
}

TEST_F(ProgressOfARun, TheRateIsThatOfThisRunsGamesAlone) {
  const Progress progress(clock_.Steady(), 10);
  clock_.Advance(minutes(30));
  counts_.played = 20;
  counts_.ended_here = 16;
  EXPECT_EQ(progress.Line(counts_, clock_.Steady()),
            "20/66 played, 4 playing, 1 without result, round 3/11, 12.0/h, 3 h 50 min left");
  EXPECT_EQ(progress.LastLine(counts_, clock_.Steady()),
            "20/66 played, 1 without result, in 30 min, 12.0/h");
}

TEST_F(ProgressOfARun, FastGamesAreCountedByTheMinute) {
  const Progress progress(clock_.Steady(), 0);
  clock_.Advance(seconds(30));
  counts_.all = 100000;
  counts_.ended_here = 5000;
  counts_.played = 5000;
  EXPECT_EQ(
      progress.Line(counts_, clock_.Steady()),
      "5000/100000 played, 4 playing, 1 without result, round 3/11, 10000/min, 9 min 30 s left");
}

TEST_F(ProgressOfARun, AtTheSameMomentThereIsNoRate) {
  counts_.ended_here = 20;
  EXPECT_EQ(Progress(clock_.Steady(), 10).Line(counts_, clock_.Steady()),
            "10/66 played, 4 playing, 1 without result, round 3/11");
}

TEST_F(ProgressOfARun, SpansAreToldInTheirTwoLargestUnits) {
  EXPECT_EQ(SpanText(seconds(0)), "0 s");
  EXPECT_EQ(SpanText(std::chrono::milliseconds(59499)), "59 s");
  EXPECT_EQ(SpanText(seconds(60)), "1 min 0 s");
  EXPECT_EQ(SpanText(seconds(599)), "9 min 59 s");
  EXPECT_EQ(SpanText(seconds(600)), "10 min");
  EXPECT_EQ(SpanText(seconds(59 * 60 + 29)), "59 min");
  EXPECT_EQ(SpanText(seconds(59 * 60 + 30)), "1 h 0 min");
  EXPECT_EQ(SpanText(hours(23) + minutes(59)), "23 h 59 min");
  EXPECT_EQ(SpanText(hours(52) + minutes(29)), "2 d 4 h");
}

class Display : public ProgressOfARun {
 protected:
  std::string Looked(int columns, int looks) {
    std::string error;
    Outputs outputs([](const std::string&) {}, [&](const std::string& text) { error += text; },
                    true);
    ProgressDisplay display(
        clock_, outputs, [this] { return counts_; }, [=] { return columns; });
    for (int look = 0; look < looks; ++look)
      clock_.Advance(display.Look());
    display.End();
    return error;
  }
};

TEST_F(Display, ElsewhereThanAtATerminalALineComesEachMinuteAndTheLastAtTheEnd) {
  EXPECT_EQ(Looked(0, 3),
            "10/66 played, 4 playing, 1 without result, round 3/11\n"
            "10/66 played, 4 playing, 1 without result, round 3/11\n"
            "10/66 played, 1 without result, in 3 min 0 s\n");
  EXPECT_EQ(Looked(0, 0), "10/66 played, 1 without result, in 0 s\n");
}

TEST_F(Display, AtATerminalALineIsDrawnAnewEachSecondAndTakenAway) {
  const std::string line = "10/66 played, 4 playing";
  const std::string gone = "\r" + std::string(line.size(), ' ') + "\r";
  EXPECT_EQ(Looked(static_cast<int>(line.size()) + 1, 2),
            line + gone + line + gone + "10/66 played, 1 without result, in 2 s\n");
}

}  // namespace
}  // namespace tarvendo
