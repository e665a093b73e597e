#include "runner/batch_file.h"

#include <gtest/gtest.h>

#include "runner/small_tourney.h"

namespace tarvendo {
namespace {

/// A game of Alpha against Beta; each test looks at one piece of the command.
class BatchFile : public ::testing::Test, protected SmallTourney {
 protected:
  BatchFile() {
    game_.number = 7;
    game_.round = 3;
    game_.white = 1;
    game_.black = 2;
    game_.pgn_file = "c:\\t\\g7.PGN";
  }

  std::string Text() { return BatchText(tourney, game_); }

  /// The command behind WinBoard's path.
  std::string Options() {
    const std::string text = Text();
    return text.substr(text.find("winboard.exe") + 12);
  }

  bool Says(const std::string& piece) { return Text().find(piece) != std::string::npos; }

  PlayerTexts& White() { return tourney.ChangeParticipants()[0].texts; }
  PlayerTexts& Black() { return tourney.ChangeParticipants()[1].texts; }

  Game game_;
};

TEST_F(BatchFile, TheWholeTextOfAGame) {
  tourney.ChangeSettings()->winboard_path = "c:\\Program Files\\WinBoard\\winboard.exe";
  tourney.ChangeSettings()->time_control = {330, 0, 40};
  White() = {};
  White().dir = "c:\\engines\\alpha";
  White().program_exe = "alpha.exe";
  Black() = {};
  Black().program_exe = "beta.exe";
  Black().init_string = "xboard";
  EXPECT_EQ(Text(),
            "@rem Round 3\n"
            "@if NOT EXIST c:\\t\\g7.PGN \"c:\\Program Files\\WinBoard\\winboard.exe\"  /xponder "
            "/cp /mg 1 /sgf=c:\\t\\g7.PGN /tc 5:30 /inc -1 /mps 40 /clock /thinking /xlegal "
            "/fd=c:\\engines\\alpha /fcp=alpha.exe /scp='beta.exe xboard'  /debug /xexit /xpopup "
            "/autoflag ");
}

TEST_F(BatchFile, ARoundWithoutOrWithTheFirstSubRoundIsNamedAlone) {
  game_.sub_round = 0;
  EXPECT_EQ(Text().substr(0, 13), "@rem Round 3\n");
  game_.sub_round = 1;
  EXPECT_EQ(Text().substr(0, 13), "@rem Round 3\n");
}

TEST_F(BatchFile, ALaterSubRoundStandsBehindTheRound) {
  game_.round = 4;
  game_.sub_round = 2;
  EXPECT_EQ(Text().substr(0, 15), "@rem Round 4-2\n");
}

TEST_F(BatchFile, WholeMinutesHaveNoSeconds) {
  tourney.ChangeSettings()->time_control = {300, 0, 0};
  EXPECT_TRUE(Says("/tc 5 /inc"));
}

TEST_F(BatchFile, SecondsStandBehindAColonInTwoDigits) {
  tourney.ChangeSettings()->time_control = {90, 0, 0};
  EXPECT_TRUE(Says("/tc 1:30 /inc"));
  tourney.ChangeSettings()->time_control = {5, 0, 0};
  EXPECT_TRUE(Says("/tc 0:05 /inc"));
}

TEST_F(BatchFile, WithoutMovesPerPeriodTheIncrementCounts) {
  tourney.ChangeSettings()->time_control = {300, 2, 0};
  EXPECT_TRUE(Says("/tc 5 /inc 2 /mps 0 /clock"));
}

TEST_F(BatchFile, MovesPerPeriodSwitchTheIncrementOff) {
  tourney.ChangeSettings()->time_control = {300, 2, 40};
  EXPECT_TRUE(Says("/tc 5 /inc -1 /mps 40 /clock"));
}

TEST_F(BatchFile, PonderingIsSwitchedOnOrOff) {
  EXPECT_EQ(Options().substr(0, 12), "  /xponder /");
  tourney.ChangeSettings()->ponder = 1;
  EXPECT_EQ(Options().substr(0, 11), "  /ponder /");
}

TEST_F(BatchFile, APathOfWinBoardWithoutBlanksIsNotQuoted) {
  EXPECT_TRUE(Says("@if NOT EXIST c:\\t\\g7.PGN winboard.exe  /xponder "));
}

TEST_F(BatchFile, ANameOfThePgnFileWithABlankIsQuotedInBothPlaces) {
  game_.pgn_file = "c:\\my games\\g7.PGN";
  EXPECT_TRUE(Says("\n@if NOT EXIST \"c:\\my games\\g7.PGN\" winboard.exe  /xponder "));
  EXPECT_TRUE(Says("/mg 1 /sgf=\"c:\\my games\\g7.PGN\" /tc "));
}

TEST_F(BatchFile, TheOptionsOfTheTourneyStandBeforeTheEnginesWhiteFirst) {
  tourney.ChangeSettings()->white_options = "/w one";
  tourney.ChangeSettings()->black_options = "/b";
  EXPECT_TRUE(Says("/xlegal /w one /b /fcp=Alpha.exe "));
}

TEST_F(BatchFile, EachEngineGetsTheOptionsOfItsOwnColour) {
  White().white_options = "/ww";
  White().black_options = "/wb";
  Black().white_options = "/bw";
  Black().black_options = "/bb";
  EXPECT_TRUE(Says("/fcp=Alpha.exe /ww /scp=Beta.exe /bb  /debug"));
  EXPECT_FALSE(Says("/wb"));
  EXPECT_FALSE(Says("/bw"));
}

TEST_F(BatchFile, ADirectoryWithABlankIsQuoted) {
  White().dir = "c:\\my engines";
  Black().dir = "c:\\other engines";
  EXPECT_TRUE(Says("/fd=\"c:\\my engines\" /fcp=Alpha.exe "));
  EXPECT_TRUE(Says("/sd=\"c:\\other engines\" /scp=Beta.exe "));
}

TEST_F(BatchFile, AProgramWithABlankIsQuoted) {
  White().program_exe = "my alpha.exe";
  EXPECT_TRUE(Says("/fcp=\"my alpha.exe\" /scp="));
}

TEST_F(BatchFile, AProgramWithABlankAndAnInitStringStandsInBothKindsOfQuotes) {
  White().program_exe = "my alpha.exe";
  White().init_string = "-x 1";
  EXPECT_TRUE(Says("/fcp='\"my alpha.exe\" -x 1' /scp="));
}

TEST_F(BatchFile, AParticipantWhoIsNotThereContributesEmptyTexts) {
  game_.white = 99;
  EXPECT_TRUE(Says("/xlegal /fcp= /scp=Beta.exe "));
}

TEST_F(BatchFile, NamesMayHoldPercentSigns) {
  game_.pgn_file = "%s%n.PGN";
  tourney.ChangeSettings()->white_options = "%d";
  EXPECT_TRUE(Says("@if NOT EXIST %s%n.PGN "));
  EXPECT_TRUE(Says("/xlegal %d /fcp"));
}

TEST(GameFileName, IsTheNumberBehindTheFilesPath) {
  EXPECT_EQ(GameFileName("c:\\t\\", 7, ".BAT"), "c:\\t\\g7.BAT");
  EXPECT_EQ(GameFileName("", 12, ".PGN"), "g12.PGN");
  EXPECT_EQ(GameFileName("no_separator", 100, ".debug"), "no_separatorg100.debug");
}

}  // namespace
}  // namespace tarvendo
