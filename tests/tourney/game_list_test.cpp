#include "tourney/game_list.h"

#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

class GameListTest : public TourneyTest {
 protected:
  GameListTest() { Enter({"Alphas", "Betas", "Gammas"}); }

  void AddThree() {
    Add(1, 2, 1, 1);
    Add(3, 1, 2, 1);
    Add(2, 3, 2, 2);
  }

  /// Gives the last game its two files.
  void GiveFiles(const std::string& base) {
    Game& game = tourney.ChangeGames().back();
    game.bat_file = base + ".BAT";
    game.pgn_file = base + ".PGN";
    machine.files.Put(game.bat_file, "");
    machine.files.Put(game.pgn_file, "");
  }

  std::string Listed(const GameFilter& filter) {
    std::string numbers;
    for (const Game& game : tourney.Games()) {
      if (Matches(game, filter)) numbers += " " + std::to_string(game.number);
    }
    return numbers;
  }

  /// The line of a game; it is then the only one.
  std::string LineOf(Game game) {
    tourney.ChangeGames().clear();
    tourney.ChangeGames().push_back(std::move(game));
    Output();
    ListGames(tourney, {});
    return Output();
  }

  std::string LineWith(int status, int result) {
    Game game;
    game.status = status;
    game.result = result;
    const std::string line = LineOf(game);
    return line.substr(line.find("   -") + 4);
  }

  std::string DataWith(int status, int result) {
    Game game;
    game.status = status;
    game.result = result;
    const std::string data = GameData(game);
    return data.substr(data.find("    Status"));
  }
};

TEST_F(GameListTest, TheLineOfAGameHasTheNamesAsWideAsTheLongest) {
  AddThree();
  const Game third = tourney.Games()[2];
  EXPECT_EQ(LineOf(tourney.Games()[0]), "  1. Round 1-1   1.Alphas -  2.Betas    -NOTHING DONE\n");
  tourney.name_width = 12;
  EXPECT_EQ(LineOf(third), "  3. Round 2-2   2.Betas        -  3.Gammas         -NOTHING DONE\n");
}

TEST_F(GameListTest, AWidthBelowSixIsComputedAnew) {
  AddThree();
  tourney.name_width = 5;
  LineOf(tourney.Games()[0]);
  EXPECT_EQ(tourney.name_width, 6);
  tourney.name_width = 9;
  LineOf(tourney.Games()[0]);
  EXPECT_EQ(tourney.name_width, 9);
  tourney.ChangeParticipants().clear();
  tourney.name_width = -20;
  EXPECT_EQ(LineOf(Game()), "  0. Round 0-0   0.WhitePlayer -  0.BlackPlayer   -NOTHING DONE\n");
  EXPECT_EQ(tourney.name_width, 4);
}

TEST_F(GameListTest, EveryStatusAndResultHasItsColumn) {
  EXPECT_EQ(LineWith(kNothingDone, kUnknown), "NOTHING DONE\n");
  EXPECT_EQ(LineWith(kSpooled, kWhiteWins), "SPOOLED     \n");
  EXPECT_EQ(LineWith(kReady, kWhiteWins), "READY          1 - 0    \n");
  EXPECT_EQ(LineWith(kReady, kBlackWins), "READY          0 - 1    \n");
  EXPECT_EQ(LineWith(kReady, kDraw), "READY          1 / 2\n");
  EXPECT_EQ(LineWith(kReady, kBothLose), "READY          0 - 0    \n");
  EXPECT_EQ(LineWith(kReady, kUnknown), "READY            *\n");
  EXPECT_EQ(LineWith(kReady, kUnfinished), "READY            *\n");
  EXPECT_EQ(LineWith(kReady, -7), "READY            *\n");
  EXPECT_EQ(LineWith(99, kDraw), "\n");
}

TEST_F(GameListTest, PercentSignsInNamesAreNoFormats) {
  Game game;
  game.white_player = "100%s";
  game.black_player = "%n%d";
  tourney.name_width = 6;
  EXPECT_EQ(LineOf(game), "  0. Round 0-0   0.100%s  -  0.%n%d     -NOTHING DONE\n");
}

TEST_F(GameListTest, TheDetailedFormHasALineForEachPart) {
  AddThree();
  EXPECT_EQ(GameData(tourney.Games()[2]),
            "Game number 3:\n"
            "    Round :  2 - 2\n"
            "    White :  2 Betas\n"
            "    Black :  3 Gammas\n"
            "    Status: NOTHING DONE\n");
}

TEST_F(GameListTest, TheDetailedFormLeavesOutNoSubRound) {
  Game game;
  game.number = 12;
  game.round = 14;
  game.status = kSpooled;
  game.bat_file = "t\\g12.BAT";
  game.pgn_file = "t\\g12.PGN";
  EXPECT_EQ(GameData(game),
            "Game number 12:\n"
            "    Round : 14\n"
            "    White :  0 WhitePlayer\n"
            "    Black :  0 BlackPlayer\n"
            "    Status: SPOOLED\n"
            "    BatFile: 't\\g12.BAT'    PgnFile: 't\\g12.PGN'\n");
}

TEST_F(GameListTest, TheDetailedFormOfAReadyGameHasItsResult) {
  EXPECT_EQ(DataWith(kReady, kUnknown), "    Status: READY\n    Result: UNKNOWN\n");
  EXPECT_EQ(DataWith(kReady, kWhiteWins), "    Status: READY\n    Result: 1 - 0\n");
  EXPECT_EQ(DataWith(kReady, kBlackWins), "    Status: READY\n    Result: 0 - 1\n");
  EXPECT_EQ(DataWith(kReady, kDraw), "    Status: READY\n    Result: 1/2 - 1/2\n");
  EXPECT_EQ(DataWith(kReady, kUnfinished), "    Status: READY\n    Result: UNFINISHED\n");
}

TEST_F(GameListTest, TheDetailedFormOfAGameThatBothLoseHasNoResultLine) {
  EXPECT_EQ(DataWith(kReady, kBothLose), "    Status: READY\n");
}

TEST_F(GameListTest, EveryCriterionNarrowsTheSelection) {
  AddThree();
  tourney.ChangeGames()[1].status = kReady;
  tourney.ChangeGames()[1].result = kDraw;
  GameFilter filter;
  EXPECT_EQ(Listed(filter), " 1 2 3");
  EXPECT_EQ(Listed({.number = 2}), " 2");
  EXPECT_EQ(Listed({.player = 1}), " 1 2");
  EXPECT_EQ(Listed({.white = 3}), " 2");
  EXPECT_EQ(Listed({.black = 3}), " 3");
  EXPECT_EQ(Listed({.round = 2}), " 2 3");
  EXPECT_EQ(Listed({.sub_round = 2}), " 3");
  EXPECT_EQ(Listed({.status = kReady}), " 2");
  EXPECT_EQ(Listed({.result = kUnknown}), " 1 3");
  EXPECT_EQ(Listed({.player = 3, .round = 2, .result = kUnknown}), " 3");
  EXPECT_EQ(Listed({.player = 99}), "");
  EXPECT_EQ(Listed({.round = -1}), "");
}

TEST_F(GameListTest, AllBeatsEveryOtherCriterion) {
  AddThree();
  EXPECT_EQ(Listed({.all = true, .number = 99, .player = 99}), " 1 2 3");
}

TEST_F(GameListTest, UnfinishedIsNotUnknown) {
  AddReady(1, 2, kUnfinished);
  EXPECT_EQ(Listed({.result = kUnknown}), "");
  EXPECT_EQ(Listed({.result = kUnfinished}), " 1");
}

TEST_F(GameListTest, AListHasALineForEveryMatch) {
  AddThree();
  ListGames(tourney, {.round = 2});
  EXPECT_EQ(Output(),
            "  2. Round 2-1   3.Gammas -  1.Alphas   -NOTHING DONE\n"
            "  3. Round 2-2   2.Betas  -  3.Gammas   -NOTHING DONE\n");
}

TEST_F(GameListTest, AListWithoutMatchLeavesTheWidthAlone) {
  AddThree();
  tourney.name_width = 5;
  ListGames(tourney, {.round = 9});
  EXPECT_EQ(tourney.name_width, 5);
  ListGames(tourney, {.round = 1});
  EXPECT_EQ(tourney.name_width, 6);
}

TEST_F(GameListTest, RemovingSaysSoForEachGameAndKeepsTheNumbers) {
  AddThree();
  EXPECT_EQ(RemoveGames(tourney, machine.files, {.player = 1}), 2);
  EXPECT_EQ(Output(), "Removing game 1...removed.\nRemoving game 2...removed.\n");
  EXPECT_EQ(GameNumbers(), " 3");
  EXPECT_EQ(Add(1, 2).number, 4);
  EXPECT_EQ(History(1), std::vector<int>{1});
  EXPECT_EQ(History(2), (std::vector<int>{0, 1}));
}

TEST_F(GameListTest, RemovingNothingSaysNothing) {
  AddThree();
  EXPECT_EQ(RemoveGames(tourney, machine.files, {.number = 9}), 0);
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(tourney.State().games_state, 1);
}

TEST_F(GameListTest, RemovingDeletesTheBatchFileAndThenThePgnFile) {
  AddThree();
  GiveFiles("t\\g3");
  RemoveGames(tourney, machine.files, {.all = true});
  EXPECT_EQ(machine.files.Removed(), (std::vector<std::string>{"t\\g3.BAT", "t\\g3.PGN"}));
  EXPECT_TRUE(tourney.Games().empty());
  EXPECT_EQ(tourney.State().games_state, 0);
}

TEST_F(GameListTest, ANumberWithoutCriteriaRemovesTheFirstGame) {
  AddThree();
  EXPECT_EQ(RemoveFirstGame(tourney, machine.files, 3, {}), 1);
  EXPECT_EQ(Output(), "Removing game 1...removed.\n");
  EXPECT_EQ(GameNumbers(), " 2 3");
}

TEST_F(GameListTest, ANumberWithCriteriaThatEarlierGamesFailRemovesThatGame) {
  AddThree();
  EXPECT_EQ(RemoveFirstGame(tourney, machine.files, 3, {.round = 9}), 1);
  EXPECT_EQ(GameNumbers(), " 1 2");
  EXPECT_EQ(RemoveFirstGame(tourney, machine.files, 9, {.round = 2}), 1);
  EXPECT_EQ(GameNumbers(), " 1");
  EXPECT_EQ(RemoveFirstGame(tourney, machine.files, 9, {.round = 2}), 0);
  EXPECT_EQ(RemoveFirstGame(tourney, machine.files, 0, {.round = 2}), 0);
  EXPECT_EQ(RemoveFirstGame(tourney, machine.files, 0, {.all = true, .round = 2}), 1);
}

TEST_F(GameListTest, GamesOfNobodyGoFromTheLastToTheFirst) {
  AddThree();
  tourney.ChangeGames()[0].black = 0;
  tourney.ChangeGames()[2].white = 0;
  RemoveGamesOf(tourney, machine.files, 0);
  EXPECT_EQ(Output(), "Removing game 3...removed.\nRemoving game 1...removed.\n");
  EXPECT_EQ(GameNumbers(), " 2");
}

TEST_F(GameListTest, TheFilesOfAGameAreDeletedAndForgotten) {
  AddThree();
  GiveFiles("g3");
  DeleteGameFiles(tourney, machine.files, tourney.Games()[2]);
  EXPECT_TRUE(machine.files.FileNames().empty());
  EXPECT_EQ(tourney.Games()[2].bat_file, "");
  EXPECT_EQ(tourney.Games()[2].pgn_file, "");
}

TEST_F(GameListTest, TheErrorFileOfAGameLiesBesideItsPgnFile) {
  AddThree();
  tourney.ChangeSettings()->files_path = "t\\";
  EXPECT_EQ(ReasonFilesOf(tourney, tourney.Games()[1])[0], "t\\g2.err");
  tourney.ChangeGames()[1].pgn_file = "old\\g2.PGN";
  EXPECT_EQ(ReasonFilesOf(tourney, tourney.Games()[1])[0], "old\\g2.err");
  tourney.ChangeGames()[1].pgn_file = "x";
  EXPECT_EQ(ReasonFilesOf(tourney, tourney.Games()[1])[0], "x.err");
}

TEST_F(GameListTest, TheErrorFileIsDeletedWithTheFilesOfAGame) {
  AddThree();
  GiveFiles("g3");
  machine.files.Put("g2.err", "");
  machine.files.Put("g3.err", "");
  DeleteGameFiles(tourney, machine.files, tourney.Games()[2]);
  EXPECT_TRUE(machine.files.Has("g2.err"));
  EXPECT_FALSE(machine.files.Has("g3.err"));
}

TEST_F(GameListTest, AGameThatHasNoOtherFileAnyMoreLeavesNoErrorFileWhenItIsRemoved) {
  AddThree();
  machine.files.Put("g1.err", "");
  tourney.ChangeGames()[0].status = kReady;
  RemoveGames(tourney, machine.files, {.all = true});
  EXPECT_TRUE(machine.files.FileNames().empty());
}

TEST_F(GameListTest, FilesThatAreGoneAreForgottenAllTheSame) {
  AddThree();
  GiveFiles("g3");
  machine.files.Remove("g3.BAT");
  machine.files.Deny(FileOperation::kRemove, "g3.PGN");
  DeleteGameFiles(tourney, machine.files, tourney.Games()[2]);
  EXPECT_EQ(tourney.Games()[2].bat_file, "");
  EXPECT_EQ(tourney.Games()[2].pgn_file, "");
  EXPECT_TRUE(machine.files.Has("g3.PGN"));
}

TEST_F(GameListTest, FileNamesAreNeverRunAsCommands) {
  AddThree();
  tourney.ChangeGames()[0].pgn_file = "x & rm -rf y";
  machine.files.Put("x & rm -rf y", "");
  RemoveGames(tourney, machine.files, {.all = true});
  EXPECT_TRUE(machine.files.FileNames().empty());
  EXPECT_TRUE(machine.processes.ShellCalls().empty());
}

TEST_F(GameListTest, AForfeitGivesTheOpponentsTheGamesNotYetReady) {
  AddThree();
  GiveFiles("g3");
  tourney.ChangeGames()[2].status = kSpooled;
  AddReady(3, 2, kWhiteWins);
  EXPECT_TRUE(Forfeit(tourney, machine.files, 3));
  EXPECT_EQ(Output(), "All games of player Gammas adjudicated as win for the opponent.\n");
  EXPECT_EQ(tourney.Games()[0].status, kNothingDone);
  EXPECT_EQ(tourney.Games()[1].status, kReady);
  EXPECT_EQ(tourney.Games()[1].result, kBlackWins);
  EXPECT_EQ(tourney.Games()[2].status, kReady);
  EXPECT_EQ(tourney.Games()[2].result, kWhiteWins);
  EXPECT_EQ(tourney.Games()[3].result, kWhiteWins);
  EXPECT_TRUE(machine.files.FileNames().empty());
  EXPECT_EQ(tourney.Games()[2].bat_file, "");
}

TEST_F(GameListTest, AForfeitKnowsNoByes) {
  Enter({"Nobody", "No One"});
  for (const std::size_t place : {3U, 4U})
    tourney.ChangeParticipants()[place].texts.program_exe = "bye";
  Add(1, 4);
  Add(4, 2);
  Add(4, 5);
  EXPECT_TRUE(Forfeit(tourney, machine.files, 1));
  EXPECT_EQ(tourney.Games()[0].result, kBlackWins) << "who forfeits has no point from a bye";
  EXPECT_TRUE(Forfeit(tourney, machine.files, 4));
  EXPECT_EQ(tourney.Games()[1].result, kBlackWins);
  EXPECT_EQ(tourney.Games()[2].result, kBlackWins) << "the other bye, as any opponent";
}

TEST_F(GameListTest, AForfeitOfNobodyIsRefused) {
  AddThree();
  EXPECT_FALSE(Forfeit(tourney, machine.files, 4));
  EXPECT_EQ(Output(), "Can't find a player by number 4!\n");
  EXPECT_FALSE(Forfeit(tourney, machine.files, -1));
  EXPECT_EQ(Output(), "Can't find a player by number -1!\n");
}

}  // namespace
}  // namespace tarvendo
