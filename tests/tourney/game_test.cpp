#include "tourney/game.h"

#include <gtest/gtest.h>

#include "base/record_file.h"

namespace tarvendo {
namespace {

Game Read(const std::string& bytes) {
  RecordReader reader(bytes);
  Game game;
  game.ReadRecord(reader);
  return game;
}

std::string Written(const Game& game) {
  RecordWriter writer;
  game.WriteRecord(writer);
  return writer.Text();
}

constexpr const char* kBlock = "2\n7\n8\n3\n5\n4\n1\n9\nt\\g7.BAT\nBeta\nt\\g7.PGN\nAlpha\n";

TEST(Game, ANewGameHasNothingDoneAndNoResult) {
  const Game game;
  EXPECT_EQ(game.status, 1);
  EXPECT_EQ(game.result, 1);
  EXPECT_EQ(game.white_player, "WhitePlayer");
  EXPECT_EQ(game.black_player, "BlackPlayer");
  EXPECT_EQ(game.pgn_file + game.bat_file, "");
  EXPECT_EQ(game.white + game.black + game.round + game.sub_round + game.number, 0);
  EXPECT_EQ(game.spool_index, 0);
}

TEST(Game, TheRecordIsReadInItsOrder) {
  const Game game = Read(kBlock);
  EXPECT_EQ(game.black, 2);
  EXPECT_EQ(game.number, 7);
  EXPECT_EQ(game.result, kDraw);
  EXPECT_EQ(game.round, 3);
  EXPECT_EQ(game.spool_index, 5);
  EXPECT_EQ(game.status, kReady);
  EXPECT_EQ(game.sub_round, 1);
  EXPECT_EQ(game.white, 9);
  EXPECT_EQ(game.bat_file, "t\\g7.BAT");
  EXPECT_EQ(game.black_player, "Beta");
  EXPECT_EQ(game.pgn_file, "t\\g7.PGN");
  EXPECT_EQ(game.white_player, "Alpha");
}

TEST(Game, ARecordReadBackWritesTheSameBytes) {
  Game game = Read(kBlock);
  EXPECT_EQ(Written(game), kBlock);
}

TEST(Game, FieldsBehindTheEndStayAsTheyWere) {
  const Game game = Read("2\n7\n");
  EXPECT_EQ(game.number, 7);
  EXPECT_EQ(game.result, kUnknown);
  EXPECT_EQ(game.white_player, "WhitePlayer");
}

TEST(Game, ResultsHaveTheirTexts) {
  EXPECT_STREQ(ResultText(kWhiteWins), "1 - 0");
  EXPECT_STREQ(ResultText(kBlackWins), "0 - 1");
  EXPECT_STREQ(ResultText(kDraw), "1/2 - 1/2");
  EXPECT_STREQ(ResultText(kBothLose), "0 - 0");
  for (const int result : {0, 1, 3, 17, 99, -1})
    EXPECT_STREQ(ResultText(result), "*");
}

TEST(Game, FinishedMeansReadyWithAResultThatCounts) {
  Game game;
  for (const int result : {kWhiteWins, kBlackWins, kDraw, kBothLose}) {
    game.result = result;
    game.status = kReady;
    EXPECT_TRUE(game.IsFinished()) << result;
    game.status = kSpooled;
    EXPECT_FALSE(game.IsFinished()) << result;
  }
  game.status = kReady;
  for (const int result : {kUnknown, kUnfinished}) {
    game.result = result;
    EXPECT_FALSE(game.IsFinished()) << result;
    EXPECT_TRUE(game.IsReady());
  }
}

TEST(Game, BothColoursPlayInIt) {
  Game game;
  game.white = 3;
  game.black = 4;
  EXPECT_TRUE(game.IsPlayedBy(3));
  EXPECT_TRUE(game.IsPlayedBy(4));
  EXPECT_FALSE(game.IsPlayedBy(5));
}

}  // namespace
}  // namespace tarvendo
