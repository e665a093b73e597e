#include "runner/spool.h"

#include <gtest/gtest.h>

#include "runner/batch_file.h"
#include "runner/small_tourney.h"

namespace tarvendo {
namespace {

class SpoolGames : public ::testing::Test, protected SmallTourney {
 protected:
  /// The statuses of all games, a digit each: 1 NOTHING DONE, 2 SPOOLED, 4 READY.
  std::string Statuses() {
    std::string digits;
    for (const Game& game : tourney.Games())
      digits += std::to_string(game.status);
    return digits;
  }

  std::string Output() { return machine.TakeOutput(); }
};

TEST_F(SpoolGames, ASpooledGameHasItsFilesItsStatusAndItsPlaceInTheOrder) {
  AddGames(1);
  tourney.spool_counter = 5;
  EXPECT_TRUE(Spool(tourney, machine.files, 1));
  const Game& game = GameNumber(1);
  EXPECT_EQ(game.status, kSpooled);
  EXPECT_EQ(game.bat_file, "/t\\g1.BAT");
  EXPECT_EQ(game.pgn_file, "/t\\g1.PGN");
  EXPECT_EQ(game.spool_index, 5);
  EXPECT_EQ(tourney.spool_counter, 6);
  EXPECT_EQ(machine.files.Bytes("/t/g1.BAT"), BatchText(tourney, game));
  EXPECT_EQ(Output(), "Game 1 spooled.\n");
}

TEST_F(SpoolGames, NumberZeroTakesTheLowestRoundAndThereTheFirstOfTheList) {
  AddGames(4);
  GameNumber(1).round = 3;
  GameNumber(2).round = 2;
  GameNumber(3).round = 2;
  EXPECT_TRUE(Spool(tourney, machine.files, 0));
  EXPECT_EQ(Statuses(), "1211");
  EXPECT_TRUE(Spool(tourney, machine.files, 0));
  EXPECT_EQ(Statuses(), "1221");
}

TEST_F(SpoolGames, NumberZeroSaysThatNothingIsLeft) {
  AddGames(2);
  GameNumber(1).status = kSpooled;
  GameNumber(2).status = kReady;
  EXPECT_FALSE(Spool(tourney, machine.files, 0));
  EXPECT_EQ(Output(), "All games are either ready or spooled!\n");
}

TEST_F(SpoolGames, AGameWhoseNumberADamagedFileHasMadeZeroIsSpooledToo) {
  AddGames(1);
  GameNumber(1).number = 0;
  EXPECT_TRUE(Spool(tourney, machine.files, 0));
  EXPECT_EQ(Statuses(), "2");
}

TEST_F(SpoolGames, AReadyGameIsNotSpooledByItsNumberAndNothingIsSaid) {
  AddGames(1);
  GameNumber(1).status = kReady;
  EXPECT_FALSE(Spool(tourney, machine.files, 1));
  EXPECT_FALSE(Spool(tourney, machine.files, 9));
  EXPECT_EQ(Output(), "");
}

TEST_F(SpoolGames, SpoolingAgainMovesAGameToTheEndOfTheOrder) {
  AddGames(2);
  SpoolAll(tourney, machine.files);
  EXPECT_TRUE(Spool(tourney, machine.files, 1));
  EXPECT_GT(GameNumber(1).spool_index, GameNumber(2).spool_index);
  EXPECT_EQ(Statuses(), "22");
}

TEST_F(SpoolGames, SpoolingDeletesAnOldRecordOfTheGame) {
  AddGames(1);
  PutPgn(1, "1-0");
  EXPECT_TRUE(Spool(tourney, machine.files, 1));
  EXPECT_FALSE(machine.files.Has("/t/g1.PGN"));
}

TEST_F(SpoolGames, SpoolingDeletesWhatWasWrittenAboutAnEarlierFailure) {
  AddGames(2);
  machine.files.Put("/t/g1.err", "no engine");
  machine.files.Put("/t/g2.err", "no engine");
  EXPECT_TRUE(Spool(tourney, machine.files, 1));
  EXPECT_FALSE(machine.files.Has("/t/g1.err"));
  EXPECT_TRUE(machine.files.Has("/t/g2.err"));
}

TEST_F(SpoolGames, ABatchFileThatCannotBeOpenedLeavesTheGameAsItWas) {
  AddGames(1);
  PutPgn(1, "1-0");
  machine.files.Deny(FileOperation::kOpen, "/t/g1.BAT.tarvendo.new");
  machine.files.Deny(FileOperation::kOpen, "/t/g1.BAT");
  EXPECT_FALSE(Spool(tourney, machine.files, 1));
  EXPECT_EQ(Output(), "Error opening file for writing:  /t\\g1.BAT\n");
  EXPECT_EQ(GameNumber(1).status, kNothingDone);
  EXPECT_EQ(GameNumber(1).bat_file, "");
  EXPECT_EQ(tourney.spool_counter, 0);
  EXPECT_FALSE(machine.files.Has("/t/g1.PGN"));
}

TEST_F(SpoolGames, ADirectoryThatIsNotThereIsReportedForEachGame) {
  AddGames(2);
  tourney.ChangeSettings()->files_path = "/nowhere\\";
  SpoolAll(tourney, machine.files);
  EXPECT_EQ(Output(),
            "Error opening file for writing:  /nowhere\\g1.BAT\n"
            "Error opening file for writing:  /nowhere\\g2.BAT\n");
  EXPECT_EQ(Statuses(), "11");
}

TEST_F(SpoolGames, ADiskThatIsFullLeavesNoHalfBatchFile) {
  AddGames(1);
  machine.files.FailAt(FileOperation::kWrite, 1);
  EXPECT_FALSE(Spool(tourney, machine.files, 1));
  EXPECT_EQ(GameNumber(1).status, kNothingDone);
  EXPECT_FALSE(machine.files.Has("/t/g1.BAT"));
}

TEST_F(SpoolGames, BehindTheLargestPlaceTheCounterStartsAgain) {
  AddGames(1);
  tourney.spool_counter = 2147483647;
  EXPECT_TRUE(Spool(tourney, machine.files, 1));
  EXPECT_EQ(GameNumber(1).spool_index, 2147483647);
  EXPECT_EQ(tourney.spool_counter, -2147483647 - 1);
}

TEST_F(SpoolGames, ARoundIsSpooledButForItsReadyGames) {
  AddGames(4);
  for (Game& game : tourney.ChangeGames())
    game.round = 2;
  GameNumber(2).status = kReady;
  GameNumber(3).status = kSpooled;
  GameNumber(4).round = 3;
  SpoolRound(tourney, machine.files, 2);
  EXPECT_EQ(Output(), "Game 1 spooled.\nGame 3 spooled.\n");
  EXPECT_EQ(Statuses(), "2421");
}

TEST_F(SpoolGames, RoundZeroIsTheLowestThatHasSomethingToDo) {
  AddGames(3);
  GameNumber(1).status = kReady;
  SpoolRound(tourney, machine.files, 0);
  EXPECT_EQ(Output(), "Game 2 spooled.\n");
}

TEST_F(SpoolGames, RoundZeroSaysThatNothingIsLeftInWordsOfItsOwn) {
  SpoolRound(tourney, machine.files, 0);
  EXPECT_EQ(Output(), "All games are either spooled or ready!\n");
  SpoolRound(tourney, machine.files, 5);
  EXPECT_EQ(Output(), "");
}

TEST_F(SpoolGames, TheGamesOfAPlayerAreThoseOfEitherColour) {
  AddGames(3);
  SpoolPlayer(tourney, machine.files, 2);
  EXPECT_EQ(Output(), "Game 1 spooled.\nGame 2 spooled.\n");
  EXPECT_EQ(Statuses(), "221");
}

TEST_F(SpoolGames, APlayerWithoutGamesToDoIsToldSo) {
  AddGames(1);
  GameNumber(1).status = kSpooled;
  SpoolPlayer(tourney, machine.files, 2);
  EXPECT_EQ(Output(), "All games of player 2 are already either spooled or ready!\n");
}

TEST_F(SpoolGames, APlayerWhoIsNotInTheTourneyIsRefused) {
  SpoolPlayer(tourney, machine.files, 5);
  EXPECT_EQ(Output(), "Player number 5 does not exist in this tourney!\n");
}

TEST_F(SpoolGames, AllGamesAreSpooledInTheOrderOfRounds) {
  AddGames(4);
  GameNumber(1).round = 9;
  GameNumber(3).status = kReady;
  SpoolAll(tourney, machine.files);
  EXPECT_EQ(Output(), "Game 2 spooled.\nGame 4 spooled.\nGame 1 spooled.\n");
  SpoolAll(tourney, machine.files);
  EXPECT_EQ(Output(), "All games are either ready or spooled!\n");
}

TEST_F(SpoolGames, GamesWithoutAResultAreReplayed) {
  AddGames(4);
  for (Game& game : tourney.ChangeGames())
    game.status = kReady;
  GameNumber(1).result = kUnknown;
  GameNumber(2).result = kUnfinished;
  GameNumber(3).result = kBothLose;
  GameNumber(4).result = kDraw;
  EXPECT_TRUE(ReplayUnfinished(tourney, machine.files));
  EXPECT_EQ(Output(), "Game 1 spooled.\nGame 2 spooled.\n");
  EXPECT_EQ(Statuses(), "2244");
  EXPECT_FALSE(ReplayUnfinished(tourney, machine.files));
}

TEST_F(SpoolGames, AReplayThatCannotBeSpooledWaitsToBeSpooled) {
  AddGames(1);
  GameNumber(1).status = kReady;
  tourney.ChangeSettings()->files_path = "/nowhere\\";
  EXPECT_FALSE(ReplayUnfinished(tourney, machine.files));
  EXPECT_EQ(Statuses(), "1");
}

TEST_F(SpoolGames, UnspoolingCollectsFirstAndTakesTheRestBack) {
  AddGames(3);
  Spool(tourney, machine.files, 1);
  Spool(tourney, machine.files, 2);
  PutPgn(1, "1-0");
  Output();
  Unspool(tourney, machine.files, file, running);
  EXPECT_EQ(Statuses(), "411");
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_EQ(GameNumber(2).bat_file, "");
  EXPECT_FALSE(machine.files.Has("/t/g2.BAT"));
  const std::string output = Output();
  EXPECT_NE(output.find("Game 2 Beta - Gamma unspooled.\n"), std::string::npos);
  EXPECT_EQ(output.find("Game 1 Alpha - Beta unspooled."), std::string::npos);
  EXPECT_EQ(output.find("Game 3"), std::string::npos);
}

TEST_F(SpoolGames, RespoolingCollectsFirstAndWritesTheRestAgain) {
  AddGames(3);
  SpoolAll(tourney, machine.files);
  GameNumber(3).status = kNothingDone;
  PutPgn(1, "0-1");
  tourney.ChangeSettings()->ponder = 1;
  Output();
  RespoolAll(tourney, machine.files, file, running);
  EXPECT_EQ(Statuses(), "421");
  EXPECT_EQ(machine.files.Bytes("/t/g2.BAT"), BatchText(tourney, GameNumber(2)));
  EXPECT_NE(machine.files.Bytes("/t/g2.BAT").find("/ponder"), std::string::npos);
  EXPECT_EQ(GameNumber(2).spool_index, 3);
}

}  // namespace
}  // namespace tarvendo
