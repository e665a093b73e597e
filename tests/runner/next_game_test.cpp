#include "runner/next_game.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>

#include "runner/small_tourney.h"
#include "runner/spool.h"

namespace tarvendo {
namespace {

class NextGame : public ::testing::Test, protected SmallTourney {
 protected:
  /// The number of the game to run, 0 for none.
  int Next() {
    const Game* game = NextGameToRun(tourney, machine.files, brackets);
    return game != nullptr ? game->number : 0;
  }

  void MakeAllReady(int result) {
    for (Game& game : tourney.ChangeGames()) {
      game.status = kReady;
      game.result = result;
    }
  }

  /// Two participants fewer, and all games between the two that are left.
  void MakeSwiss(int rounds) {
    tourney.ChangeSettings()->type = kSwiss;
    tourney.ChangeSettings()->rounds = rounds;
    tourney.ChangeParticipants().resize(2);
  }

  /// Eight participants with AutoRun on, and no game yet: four rounds can be played.
  void MakeSwissOfEight() {
    tourney.ChangeSettings()->type = kSwiss;
    tourney.ChangeSettings()->rounds = 4;
    tourney.ChangeSettings()->auto_run = 1;
    for (const char* name : {"Epsilon", "Zeta", "Eta", "Theta"})
      AddParticipant(name);
  }

  /// The four games of a round that has been played, all of them draws.
  void AddPlayedRound(int round) {
    for (int white = 1; white <= 7; white += 2)
      tourney.AddGame(white, 1 + (white + 2 * round - 2) % 8, round, 1);
    MakeAllReady(kDraw);
    machine.TakeOutput();
  }

  /// How many games of the round there are.
  std::ptrdiff_t GamesOfRound(int round) {
    return std::count_if(tourney.Games().begin(), tourney.Games().end(),
                         [&](const Game& game) { return game.round == round; });
  }

  bool HasPrinted(const std::string& text) {
    printed_ += machine.TakeOutput();
    return printed_.find(text) != std::string::npos;
  }

  /// What the after-game step prints.
  std::string AfterGame() {
    machine.TakeOutput();
    NextRound(tourney, file, brackets);
    return machine.TakeOutput();
  }

 private:
  std::string printed_;
};

TEST_F(NextGame, IsTheOneThatWasSpooledFirst) {
  AddGames(3);
  Spool(tourney, machine.files, 2);
  Spool(tourney, machine.files, 1);
  EXPECT_EQ(Next(), 2);
  EXPECT_EQ(tourney.current_game, 2);
  GameNumber(2).status = kReady;
  EXPECT_EQ(Next(), 1);
}

TEST_F(NextGame, ThePlaceInTheOrderIsAnUnsignedNumber) {
  AddGames(2);
  tourney.spool_counter = 2147483647;
  Spool(tourney, machine.files, 2);
  Spool(tourney, machine.files, 1);
  EXPECT_EQ(Next(), 2);
}

TEST_F(NextGame, WithoutASpooledGameThereIsNoneAndNoCurrentOne) {
  AddGames(2);
  tourney.current_game = 1;
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(tourney.current_game, 0);
  EXPECT_EQ(machine.TakeOutput(), "");
}

TEST_F(NextGame, AutoRunSpoolsTheNextGameOfARoundRobin) {
  AddGames(2);
  tourney.ChangeSettings()->auto_run = 1;
  EXPECT_EQ(Next(), 1);
  EXPECT_EQ(machine.TakeOutput(), "Game 1 spooled.\n");
  EXPECT_EQ(tourney.Settings().auto_run, 1);
}

TEST_F(NextGame, AutoRunEndsWhenARoundRobinIsPlayed) {
  AddGames(2);
  MakeAllReady(kUnknown);
  tourney.ChangeSettings()->auto_run = 1;
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(machine.TakeOutput(), "All games are either ready or spooled!\n");
  EXPECT_EQ(tourney.Settings().auto_run, 0);
  EXPECT_EQ(GameNumber(1).status, kReady) << "a round robin replays nothing by itself";
}

TEST_F(NextGame, AutoRunEndsWhenNoBatchFileCanBeWritten) {
  AddGames(2);
  tourney.ChangeSettings()->files_path = "/nowhere\\";
  tourney.ChangeSettings()->auto_run = 1;
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(tourney.Settings().auto_run, 0);
}

TEST_F(NextGame, AutoRunSpoolsTheNextGameOfASwissTourney) {
  AddGames(2);
  MakeSwiss(2);
  tourney.ChangeSettings()->auto_run = 1;
  EXPECT_EQ(Next(), 1);
}

TEST_F(NextGame, AutoRunPairsTheFirstSwissRoundAndSpoolsItsFirstGame) {
  MakeSwissOfEight();
  EXPECT_EQ(Next(), 1);
  EXPECT_TRUE(HasPrinted("All games are either ready or spooled!\nPairing swiss round 1... "));
  EXPECT_TRUE(HasPrinted("Game 1 spooled.\n"));
  EXPECT_EQ(GamesOfRound(1), 4);
  EXPECT_EQ(tourney.Settings().auto_run, 1);
}

TEST_F(NextGame, AutoRunPairsTheNextSwissRoundWhenOneIsPlayed) {
  MakeSwissOfEight();
  AddPlayedRound(1);
  EXPECT_EQ(Next(), 5);
  EXPECT_TRUE(HasPrinted("Pairing swiss round 2... "));
  EXPECT_EQ(GamesOfRound(2), 4);
  EXPECT_EQ(tourney.Settings().auto_run, 1);
}

TEST_F(NextGame, NoRoundIsPairedWhileAGameIsLeft) {
  MakeSwissOfEight();
  AddPlayedRound(1);
  GameNumber(2).status = kNothingDone;
  EXPECT_EQ(Next(), 2);
  GameNumber(2).status = kReady;
  GameNumber(3).status = kSpooled;
  EXPECT_EQ(Next(), 3);
  EXPECT_EQ(GamesOfRound(2), 0);
}

TEST_F(NextGame, WithoutAutoRunNoSwissRoundIsPaired) {
  MakeSwissOfEight();
  tourney.ChangeSettings()->auto_run = 0;
  EXPECT_EQ(Next(), 0);
  EXPECT_EQ(GamesOfRound(1), 0);
}

TEST_F(NextGame, AGameWithoutResultThatKeepsTheRoundFromBeingPairedIsReplayed) {
  MakeSwissOfEight();
  AddPlayedRound(1);
  GameNumber(3).result = kUnknown;
  EXPECT_EQ(Next(), 3);
  EXPECT_TRUE(HasPrinted("Therefore pairing for round 2 can't be done.\nGame 3 spooled.\n"));
  EXPECT_EQ(GameNumber(3).status, kSpooled);
  EXPECT_EQ(GamesOfRound(2), 0);
  EXPECT_EQ(tourney.Settings().auto_run, 1);
}

TEST_F(NextGame, AutoRunEndsWhenNoRoundCanBePairedAndNothingBeReplayed) {
  MakeSwissOfEight();
  AddPlayedRound(1);
  tourney.ChangeSettings()->rounds = 1;
  EXPECT_EQ(Next(), 0);
  EXPECT_TRUE(HasPrinted("Can't create brackets. Maybe there are still games to be played?\n"));
  EXPECT_EQ(tourney.Settings().auto_run, 0);
  EXPECT_EQ(tourney.current_game, 0);
}

TEST_F(NextGame, AutoRunEndsWithoutAReplayWhenNotEvenOneBigBracketCanBePaired) {
  AddGames(1);
  MakeAllReady(kUnfinished);
  MakeSwiss(2);
  tourney.ChangeSettings()->auto_run = 1;
  EXPECT_EQ(Next(), 0);
  EXPECT_TRUE(HasPrinted("\nEven pairing one big bracket failed!\n"));
  EXPECT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(tourney.Settings().auto_run, 0);
}

TEST_F(NextGame, TheAfterGameStepPairsTheNextRoundWithAutoRun) {
  MakeSwissOfEight();
  AddPlayedRound(1);
  EXPECT_EQ(AfterGame().substr(0, 24), "Pairing swiss round 2...");
  EXPECT_EQ(GamesOfRound(2), 4);
  EXPECT_EQ(GameNumber(5).status, kNothingDone);
  EXPECT_EQ(tourney.Settings().auto_run, 1);
}

TEST_F(NextGame, TheAfterGameStepOnlyMovesTheRoundOnWithoutAutoRun) {
  MakeSwissOfEight();
  AddPlayedRound(1);
  tourney.ChangeSettings()->auto_run = 0;
  EXPECT_EQ(AfterGame(), "");
  EXPECT_EQ(tourney.State().round, 2);
  EXPECT_EQ(GamesOfRound(2), 0);
}

TEST_F(NextGame, ARoundWithAGameLeftIsNotFollowedByTheNext) {
  MakeSwissOfEight();
  AddPlayedRound(1);
  GameNumber(4).status = kSpooled;
  EXPECT_EQ(AfterGame(), "");
  EXPECT_EQ(GamesOfRound(2), 0);
}

TEST_F(NextGame, TheLastRoundIsNeverPairedByItself) {
  MakeSwissOfEight();
  for (int round = 1; round <= 3; ++round)
    AddPlayedRound(round);
  tourney.ChangeState()->round = 3;
  EXPECT_EQ(AfterGame(), "Tourney finished.\n");
  EXPECT_EQ(tourney.State().round, 4);
  EXPECT_EQ(tourney.Settings().auto_run, 0);
  EXPECT_EQ(GamesOfRound(4), 0);
}

TEST_F(NextGame, TheTourneyIsFinishedWhenEveryRoundIsPlayed) {
  MakeSwissOfEight();
  for (int round = 1; round <= 4; ++round)
    AddPlayedRound(round);
  tourney.ChangeState()->round = 4;
  EXPECT_EQ(AfterGame(), "Tourney finished.\n");
  EXPECT_EQ(tourney.State().round, 4);
}

TEST_F(NextGame, TheAfterGameStepSavesBeforeItPairs) {
  MakeSwissOfEight();
  AddPlayedRound(1);
  tourney.ChangeSettings()->auto_save = 1;
  file.SetName("/t/saved.ini");
  AfterGame();
  Tourney saved;
  TourneyFile saved_file(machine.files);
  ASSERT_TRUE(saved_file.Load(saved, "/t/saved.ini"));
  EXPECT_EQ(saved.Games().size(), 4U);
  EXPECT_EQ(tourney.Games().size(), 8U);
}

TEST_F(NextGame, TheAfterGameStepSavesWithAutoSaveOnly) {
  file.SetName("/t/saved.ini");
  EXPECT_EQ(AfterGame(), "");
  EXPECT_FALSE(machine.files.Has("/t/saved.ini"));
  tourney.ChangeSettings()->auto_save = 1;
  EXPECT_EQ(AfterGame(), "");
  EXPECT_TRUE(machine.files.Has("/t/saved.ini"));
}

TEST_F(NextGame, ASaveThatFailsIsReported) {
  tourney.ChangeSettings()->auto_save = 1;
  file.SetName("/nowhere/saved.ini");
  EXPECT_EQ(AfterGame(), "Saving tourney failed!\n");
}

TEST_F(NextGame, TheAfterGameStepCutsTheLogDown) {
  constexpr std::size_t kLimit = 2097152;
  machine.log.AddFile("/t/log");
  std::string lines;
  while (lines.size() < kLimit - 1024)
    lines += std::string(1023, 'x') + "\n";
  machine.log.Echo(lines);
  AfterGame();
  EXPECT_EQ(machine.files.Bytes("/t/log").size(), kLimit - 1024);
  machine.log.Echo(std::string(1023, 'x') + "\n");
  AfterGame();
  EXPECT_LT(machine.files.Bytes("/t/log").size(), kLimit / 2 + 2048);
}

TEST_F(NextGame, AnUnfinishedRoundOfASwissTourneyGoesOnSilently) {
  AddGames(1);
  MakeSwiss(5);
  EXPECT_EQ(AfterGame(), "");
  EXPECT_EQ(tourney.Settings().rounds, 5);
}

TEST_F(NextGame, ARoundRobinIsNeverDeclaredFinished) {
  AddGames(1);
  MakeAllReady(kDraw);
  tourney.ChangeParticipants().resize(2);
  tourney.ChangeSettings()->rounds = 1;
  tourney.ChangeSettings()->auto_run = 1;
  EXPECT_EQ(AfterGame(), "");
  EXPECT_EQ(tourney.Settings().auto_run, 1);
}

TEST_F(NextGame, APlayedRoundCutsRoundsToHalfOfThePlayersAndEndsTheTourney) {
  AddGames(1);
  MakeAllReady(kDraw);
  MakeSwiss(10);
  tourney.ChangeSettings()->auto_run = 1;
  EXPECT_EQ(AfterGame(),
            "Amount of rounds can't be more than half of players in the tourney.\n"
            "Setting Rounds to 1.\n"
            "Tourney finished.\n");
  EXPECT_EQ(tourney.Settings().rounds, 1);
  EXPECT_EQ(tourney.Settings().auto_run, 0);
}

TEST_F(NextGame, ARoundNeedsAsManyGamesAsThereAreSubRounds) {
  AddGames(1);
  MakeAllReady(kDraw);
  MakeSwiss(1);
  tourney.ChangeSettings()->sub_rounds = 2;
  EXPECT_EQ(AfterGame(), "");
}

}  // namespace
}  // namespace tarvendo
