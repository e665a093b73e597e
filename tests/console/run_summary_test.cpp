#include "console/run_summary.h"

#include <map>

#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

class Summary : public TourneyTest {
 protected:
  Summary() {
    tourney.ChangeSettings()->type = kRoundRobin;
    Enter({"Alpha", "Beta", "Gamma"});
  }

  /// A game that was played, with what its record tells.
  void AddPlayed(int white, int black, int result, const std::string& how, int plies) {
    const Game& game = AddReady(white, black, result);
    ends_[game.number] = {how, plies};
  }

  std::string Text() {
    return RunSummary(tourney, [this](const Game& game) { return ends_[game.number]; });
  }

  std::map<int, RecordedEnd> ends_;
};

TEST_F(Summary, TellsResultsEndingsAndTheLongestGame) {
  AddPlayed(1, 2, kBlackWins, "Black mates", 80);
  AddPlayed(2, 3, kDraw, "Draw by repetition", 123);
  AddPlayed(3, 1, kBlackWins, "Black mates", 60);
  AddPlayed(1, 3, kUnfinished, "", 20);
  Add(2, 1);
  EXPECT_EQ(Text(),
            "Engine  Games   Won Drawn  Lost  None  Points\n"
            "Beta        2     1     1     0     0     1.5\n"
            "Alpha       3     1     0     1     1     1.0\n"
            "Gamma       3     0     1     1     1     0.5\n"
            "How the games ended:\n"
            "      2  Black mates\n"
            "      1  (not told)\n"
            "      1  Draw by repetition\n"
            "The longest: game 2, Beta - Gamma, 62 moves, 1/2 - 1/2\n");
}

TEST_F(Summary, WithoutAPlayedGameThereIsNoneAndWithoutRecordsNoLongest) {
  Add(1, 2);
  EXPECT_EQ(Text(), "");
  AddPlayed(1, 2, kBothLose, "", 0);
  EXPECT_EQ(Text().find("The longest"), std::string::npos);
  EXPECT_NE(Text().find("Alpha       1     0     0     1     0     0.0\n"), std::string::npos);
}

TEST_F(Summary, AByeIsNoEngineButItsGamesCountForTheOthers) {
  tourney.ChangeParticipants()[1].texts.program_exe = "bye";
  AddPlayed(1, 2, kWhiteWins, "", 0);
  EXPECT_NE(Text().find("Alpha       1     1     0     0     0     1.0\n"), std::string::npos);
  EXPECT_EQ(Text().find("Beta"), std::string::npos);
}

TEST_F(Summary, WhatAnEngineHasWrittenDoesNothingToTheTerminalAndFillsNoScreens) {
  AddPlayed(1, 2, kWhiteWins, "\x1b[2J\x07", 10);
  AddPlayed(1, 2, kWhiteWins, std::string(1000, 'x'), 10);
  for (int i = 0; i < 30; ++i)
    AddPlayed(1, 2, kWhiteWins, "way " + std::to_string(10 + i), 10);
  const std::string text = Text();
  EXPECT_NE(text.find("      1  ?[2J?\n"), std::string::npos) << text;
  EXPECT_EQ(text.find(std::string(61, 'x')), std::string::npos);
  EXPECT_NE(text.find("     17  in other ways\n"), std::string::npos) << text;
}

}  // namespace
}  // namespace tarvendo
