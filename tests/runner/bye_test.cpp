// Games with a bye: nobody plays them, but they take their turn like all others.

#include <gtest/gtest.h>

#include "base/text.h"
#include "runner/play_fixture.h"

namespace tarvendo {
namespace {

std::string Announced(const std::string& game) {
  return "\n" + Stars(54) + "\n" + game + "\n" + Stars(54) + "\n> ";
}

/// Beta is a bye: of the two spooled games, Alpha has won the first, Gamma the second.
class PlayByes : public PlayGames {
 protected:
  PlayByes() { MakeBye(2); }

  void MakeBye(int number) {
    tourney.ChangeParticipants()[static_cast<std::size_t>(number) - 1].texts.program_exe = "bye";
  }

  void StartAnew(int games) {
    tourney.EraseAllGames();
    tourney.ChangeState()->last_game_number = 0;
    for (const char* batch : {"/t/g1.BAT", "/t/g2.BAT"})
      machine.files.Remove(batch);
    AddGames(games);
  }

  /// Number, status and result of each game.
  std::string Games() {
    std::string text;
    for (const Game& game : tourney.Games())
      text += Format("%d:%d:%d ", game.number, game.status, game.result);
    return text;
  }
};

TEST_F(PlayByes, NoBatchFileIsWrittenAndTheGameHasNoFiles) {
  StartAnew(3);
  SpoolAll(tourney, machine.files);
  EXPECT_EQ(Output(), "Game 1 spooled.\nGame 2 spooled.\nGame 3 spooled.\n");
  EXPECT_FALSE(machine.files.Has("/t/g1.BAT"));
  EXPECT_FALSE(machine.files.Has("/t/g2.BAT"));
  EXPECT_TRUE(machine.files.Has("/t/g3.BAT"));
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  EXPECT_EQ(GameNumber(1).bat_file, "");
  EXPECT_EQ(GameNumber(1).pgn_file, "");
}

TEST_F(PlayByes, InItsTurnItIsReadyAtOnceWonByTheOtherAndAnnounced) {
  StartAnew(2);
  SpoolAll(tourney, machine.files);
  Output();
  EXPECT_EQ(Pass(), kNever);
  EXPECT_EQ(Output(),
            Announced("Game 1: Alpha - Beta : 1 - 0") + Announced("Game 2: Beta - Gamma : 0 - 1"));
  EXPECT_EQ(Games(), "1:4:2 2:4:4 ");
  EXPECT_TRUE(loop_->IsIdle());
}

TEST_F(PlayByes, NothingIsStartedAndNothingGoesIntoThePgnFile) {
  StartAnew(2);
  SpoolAll(tourney, machine.files);
  Pass();
  EXPECT_TRUE(machine.processes.Batches().empty());
  EXPECT_FALSE(machine.files.Has("/t/all.pgn"));
  EXPECT_FALSE(machine.files.Has("/t/g1.run"));
  EXPECT_TRUE(machine.files.Has("/t/table.htm"));
}

TEST_F(PlayByes, BetweenTwoOfThemNobodyWins) {
  StartAnew(1);
  MakeBye(1);
  SpoolAll(tourney, machine.files);
  Output();
  Pass();
  EXPECT_EQ(Output(), Announced("Game 1: Alpha - Beta : 0 - 0"));
  EXPECT_EQ(Games(), "1:4:32 ");
  EXPECT_FALSE(ReplayUnfinished(tourney, machine.files)) << "it has a result";
}

TEST_F(PlayByes, ItAwaitsItsTurnAndKeepsNobodyWaiting) {
  StartAnew(4);
  for (const int number : {3, 1, 4, 2})
    Spool(tourney, machine.files, number);
  Pass();
  EXPECT_EQ(Games(), "1:2:1 2:2:1 3:2:1 4:2:1 ");
  EndGame(3, "1-0");
  PassTime(seconds(8));
  EXPECT_EQ(Games(), "1:4:2 2:2:1 3:4:2 4:2:1 ");
  EXPECT_EQ(machine.processes.Batches(), (std::vector<std::string>{"/t/g3.BAT", "/t/g4.BAT"}));
}

TEST_F(PlayByes, GamesThatWereSpooledBeforeItBecameAByeLoseTheirBatchFiles) {
  ASSERT_TRUE(machine.files.Has("/t/g1.BAT"));
  Pass();
  EXPECT_EQ(Games(), "1:4:2 2:4:4 ");
  EXPECT_FALSE(machine.files.Has("/t/g1.BAT"));
  EXPECT_EQ(GameNumber(1).bat_file, "");
}

TEST_F(PlayByes, RespoolingThemTakesTheBatchFilesAway) {
  RespoolAll(tourney, machine.files, file, running);
  EXPECT_FALSE(machine.files.Has("/t/g1.BAT"));
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  EXPECT_EQ(GameNumber(1).pgn_file, "");
}

TEST_F(PlayByes, ARecordThatIsThereAlreadyCounts) {
  PutPgn(1, "0-1");
  Pass();
  EXPECT_EQ(Games(), "1:4:4 2:4:4 ");
  EXPECT_TRUE(machine.files.Has("/t/all.pgn"));
}

TEST_F(PlayByes, AGameThatIsBeingPlayedIsPlayedToItsEnd) {
  tourney.ChangeParticipants()[1].texts.program_exe = "Beta.exe";
  PlayFirstGame();
  MakeBye(2);
  RespoolAll(tourney, machine.files, file, running);
  EXPECT_TRUE(machine.files.Has("/t/g1.BAT"));
  EndGame(1, "0-1");
  PassTime(seconds(8));
  EXPECT_EQ(Games(), "1:4:4 2:4:4 ");
}

TEST_F(PlayByes, AGameThatSomebodyElseIsPlayingIsNotGivenAway) {
  machine.files.HoldLock("/t/g1.run", "another program");
  Restart(2);
  Pass();
  EXPECT_EQ(Games().substr(0, 6), "1:2:1 ");
}

TEST_F(PlayByes, AGameWithoutAResultIsReplayedAsABye) {
  StartAnew(1);
  GameNumber(1).status = kReady;
  GameNumber(1).result = kUnfinished;
  EXPECT_TRUE(ReplayUnfinished(tourney, machine.files));
  Output();
  Pass();
  EXPECT_EQ(Games(), "1:4:2 ");
}

TEST_F(PlayByes, UnspooledItIsToBePlayedAgain) {
  StartAnew(1);
  SpoolAll(tourney, machine.files);
  Output();
  Unspool(tourney, machine.files, file, running);
  EXPECT_EQ(Output(), "Game 1 Alpha - Beta unspooled.\n");
  EXPECT_EQ(Games(), "1:1:1 ");
}

TEST_F(PlayByes, WithAutoSaveItsResultIsSavedAtOnce) {
  StartAnew(1);
  SpoolAll(tourney, machine.files);
  file.Save(tourney, "/t/saved.ini");
  tourney.ChangeSettings()->auto_save = 1;
  Pass();
  Tourney saved;
  TourneyFile(machine.files).Load(saved, "/t/saved.ini");
  ASSERT_EQ(saved.Games().size(), 1U);
  EXPECT_EQ(saved.Games()[0].result, kWhiteWins);
}

TEST_F(PlayByes, ARoundRobinWithAutoRunIsPlayedToItsEnd) {
  tourney.ChangeSettings()->auto_run = 1;
  for (const int number : {1, 3, 4})
    MakeBye(number);
  StartAnew(4);
  EXPECT_EQ(Pass(), kNever);
  for (const Game& game : tourney.Games())
    EXPECT_EQ(game.result, kBothLose) << game.number;
  EXPECT_EQ(tourney.Settings().auto_run, 0);
}

TEST_F(PlayByes, ASwissTourneyGoesOnFromARoundThatEndsWithAByesGame) {
  tourney.ChangeSettings()->type = kSwiss;
  tourney.ChangeSettings()->rounds = 2;
  tourney.ChangeSettings()->auto_run = 1;
  for (const int number : {1, 3, 4})
    MakeBye(number);
  StartAnew(0);
  Pass();
  EXPECT_EQ(tourney.Games().size(), 4U) << "two rounds of two games";
  for (const Game& game : tourney.Games())
    EXPECT_EQ(game.status, kReady) << game.number;
  EXPECT_TRUE(Printed("Tourney finished.\n"));
  EXPECT_EQ(tourney.Settings().auto_run, 0);
}

TEST_F(PlayByes, ManyGamesAtOnceHaveItsResultSavedWithTheOthers) {
  StartAnew(4);
  play_pace_.referee = RefereePace::kInGroups;
  play_pace_.between_games = seconds(0);
  Restart(4);
  SpoolAll(tourney, machine.files);
  file.Save(tourney, "/t/saved.ini");
  tourney.ChangeSettings()->auto_save = 1;
  Pass();
  EXPECT_EQ(Games(), "1:4:2 2:4:4 3:2:1 4:2:1 ");
  EXPECT_EQ(machine.processes.Batches().size(), 2U);
  machine.clock.Advance(seconds(2));
  Pass();
  Tourney saved;
  TourneyFile(machine.files).Load(saved, "/t/saved.ini");
  EXPECT_EQ(saved.FindGame(2)->result, kBlackWins);
  EXPECT_TRUE(machine.files.Has("/t/table.htm"));
}

}  // namespace
}  // namespace tarvendo
