#include "runner/collect.h"

#include <gtest/gtest.h>

#include "runner/mortal_file_system.h"
#include "runner/pgn_text.h"
#include "runner/referee.h"
#include "runner/small_tourney.h"
#include "runner/spool.h"

namespace tarvendo {
namespace {

constexpr const char* kStars = "\n******************************************************\n";

/// Three spooled games.
class Collect : public ::testing::Test, protected SmallTourney {
 protected:
  Collect() {
    AddGames(3);
    SpoolAll(tourney, machine.files);
    machine.TakeOutput();
  }

  std::string Output() { return machine.TakeOutput(); }
  std::string AllPgn() { return machine.files.Bytes("/t/all.pgn"); }

  /// The game has ended, and the runner's referee judges it. False when there is no record to be
  /// judged, and nothing is done.
  bool JudgeEnded(int number) {
    const Game* game = tourney.FindGame(number);
    if (game == nullptr) return false;
    GameOutcome outcome;
    outcome.order = {number,
                     game->white_player,
                     game->black_player,
                     game->bat_file,
                     game->pgn_file,
                     "/t/winboard.debug",
                     "/t/g" + std::to_string(number) + ".run",
                     ""};
    outcome.pgn = machine.files.ReadText(game->pgn_file);
    if (!outcome.pgn) return false;
    Referee(machine.host, RefereePace::kAtOnce).Judge(tourney, file, running, outcome);
    return true;
  }

  /// Game 2's record as the tourney's PGN file gets it.
  std::string Merged(const std::string& pgn) { return MergedPgn(tourney, GameNumber(2), pgn); }
};

TEST(ResultInPgn, IsThatOfTheResultTag) {
  EXPECT_EQ(ResultInPgn("[Result \"1-0\"]\n"), kWhiteWins);
  EXPECT_EQ(ResultInPgn("[Result \"0-1\"]\n"), kBlackWins);
  EXPECT_EQ(ResultInPgn("[Result \"1/2-1/2\"]\n"), kDraw);
  EXPECT_EQ(ResultInPgn("[Result \"*\"]\n"), kUnfinished);
}

TEST(ResultInPgn, TheTagMayBeWrittenInCapitalsTheValueMayNotDiffer) {
  EXPECT_EQ(ResultInPgn("[RESULT \"0-1\"]\n"), kBlackWins);
  EXPECT_EQ(ResultInPgn("[Result \"O-1\"]\n"), kUnfinished);
}

TEST(ResultInPgn, TheValueStandsAtAFixedPlace) {
  EXPECT_EQ(ResultInPgn("[Result  \"1-0\"]\n"), kUnfinished);
  EXPECT_EQ(ResultInPgn("[Result\n"), kUnfinished);
  EXPECT_EQ(ResultInPgn("[Result_!1-0\n"), kWhiteWins);
}

TEST(ResultInPgn, ATagBeginsWithABracket) {
  EXPECT_EQ(ResultInPgn("(Result_!1-0\n[Result \"0-1\"]\n"), kBlackWins);
  EXPECT_EQ(ResultInPgn("xresult: 1-0\n"), kUnknown);
}

TEST(ResultInPgn, AnEngineCannotWriteItIntoALongNameOfItsOwn) {
  // The name fills the first 255 bytes of its line, so that what follows begins a piece.
  const std::string line = "[White \"" + std::string(247, 'x');
  ASSERT_EQ(line.size(), 255U);
  EXPECT_EQ(ResultInPgn(line + "[Result \"1-0\"]\n[Result \"0-1\"]\n"), kBlackWins);
}

TEST(ResultInPgn, WithoutATagThereIsNone) {
  EXPECT_EQ(ResultInPgn(""), kUnknown);
  EXPECT_EQ(ResultInPgn("x"), kUnknown);
  EXPECT_EQ(ResultInPgn("[Event \"x\"]\n\n1. e4 1-0\n"), kUnknown);
  EXPECT_EQ(ResultInPgn(" [Result \"1-0\"]\n"), kUnknown);
}

TEST(ResultInPgn, TheFirstTagCounts) {
  EXPECT_EQ(ResultInPgn("x\n[Result \"*\"]\n[Result \"1-0\"]\n"), kUnfinished);
  EXPECT_EQ(ResultInPgn("[Result \"1-0\"]"), kWhiteWins);
}

TEST_F(Collect, TheTagsTellTheTourneysOwnData) {
  tourney.ChangeSettings()->name = "My Cup";
  GameNumber(2).round = 3;
  EXPECT_EQ(Merged("[Event \"x\"]\n[Site \"s\"]\n[Round \"-\"]\n[White \"w\"]\n[Black \"b\"]\n"
                   "[Result \"1-0\"]\n\n1. e4\n"),
            "[Event \"My Cup\"]\n[Site \"s\"]\n[Round \"3\"]\n[Number \"2\"]\n[White \"Beta\"]\n"
            "[Black \"Gamma\"]\n[Result \"1-0\"]\n\n1. e4\n");
}

TEST_F(Collect, TagNamesIgnoreTheCase) {
  EXPECT_EQ(Merged("[EVENT x\n[round\n[wHite \"\n[BLACK \"\n"),
            "[Event \"My Own Winboard Tourney\"]\n[Round \"2\"]\n[Number \"2\"]\n"
            "[White \"Beta\"]\n[Black \"Gamma\"]\n");
}

TEST_F(Collect, TagsThatOnlyLookSimilarAreCopied) {
  const std::string pgn = "[WhiteElo \"1\"]\n[White  \"w\"]\n[BlackElo \"2\"]\n[Black\n";
  EXPECT_EQ(Merged(pgn), pgn);
}

TEST_F(Collect, ATagBehindBlanksIsCopied) {
  EXPECT_EQ(Merged(" [White \"w\"]\n\t[Event \"e\"]\n"), " [White \"w\"]\n\t[Event \"e\"]\n");
}

TEST_F(Collect, AGameWithoutAWhiteTagGetsNoNumber) {
  EXPECT_EQ(Merged("[Black \"b\"]\n"), "[Black \"Gamma\"]\n");
}

TEST_F(Collect, TheSubRoundStandsBehindTheRoundOnlyWhenThereAreSeveral) {
  GameNumber(2).round = 3;
  GameNumber(2).sub_round = 2;
  EXPECT_EQ(Merged("[Round \"1\"]\n"), "[Round \"3\"]\n");
  tourney.ChangeSettings()->sub_rounds = 2;
  EXPECT_EQ(Merged("[Round \"1\"]\n"), "[Round \"3.2\"]\n");
}

TEST_F(Collect, ALastLineWithoutLineFeedIsLost) {
  EXPECT_EQ(Merged("1. e4\n2. d4"), "1. e4\n");
  EXPECT_EQ(Merged("2. d4"), "");
  EXPECT_EQ(Merged(""), "");
}

TEST_F(Collect, LongLinesAreCopiedWhole) {
  const std::string line = std::string(1000, 'x') + "\n";
  EXPECT_EQ(Merged(line), line);
}

TEST_F(Collect, PercentSignsAndQuotesAreNothingSpecial) {
  tourney.ChangeSettings()->name = "%s \"100%n\"";
  EXPECT_EQ(Merged("[Event \"x\"]\n{ 50%d }\n"), "[Event \"%s \"100%n\"\"]\n{ 50%d }\n");
}

TEST_F(Collect, ACollectedGameIsReadyAndAnnounced) {
  PutPgn(2, "0-1");
  EXPECT_TRUE(JudgeEnded(2));
  EXPECT_EQ(GameNumber(2).status, kReady);
  EXPECT_EQ(GameNumber(2).result, kBlackWins);
  EXPECT_EQ(Output(), std::string(kStars) + "Game 2: Beta - Gamma : 0 - 1" + kStars + "> ");
}

TEST_F(Collect, AGameWithoutResultIsAnnouncedWithAnAsterisk) {
  PutPgn(1, "*");
  EXPECT_TRUE(JudgeEnded(1));
  EXPECT_EQ(GameNumber(1).result, kUnfinished);
  EXPECT_NE(Output().find("Game 1: Alpha - Beta : *\n"), std::string::npos);
}

TEST_F(Collect, TheGamesFilesAreGoneAndTheirNamesForgotten) {
  PutPgn(2, "1-0");
  JudgeEnded(2);
  EXPECT_FALSE(machine.files.Has("/t/g2.PGN"));
  EXPECT_FALSE(machine.files.Has("/t/g2.BAT"));
  EXPECT_EQ(GameNumber(2).bat_file, "");
  EXPECT_EQ(GameNumber(2).pgn_file, "");
}

TEST_F(Collect, AnErrorFileGoesWithAResultAndStaysWithoutOne) {
  for (int number = 1; number <= 3; ++number)
    machine.files.Put("/t/g" + std::to_string(number) + ".err", "no engine");
  PutPgn(1, "1-0");
  PutPgn(2, "*");
  machine.files.Put("/t/g3.PGN", "");
  for (int number = 1; number <= 3; ++number)
    JudgeEnded(number);
  EXPECT_FALSE(machine.files.Has("/t/g1.err"));
  EXPECT_TRUE(machine.files.Has("/t/g2.err"));
  EXPECT_TRUE(machine.files.Has("/t/g3.err"));
}

TEST_F(Collect, GamesFollowOneAnotherInTheTourneysPgnFile) {
  machine.files.Put("/t/all.pgn", "before\n");
  PutPgn(1, "1-0");
  PutPgn(2, "1/2-1/2");
  JudgeEnded(2);
  JudgeEnded(1);
  EXPECT_EQ(AllPgn(), "before\n" + Merged(PgnText("1/2-1/2")) +
                          MergedPgn(tourney, GameNumber(1), PgnText("1-0")));
}

TEST_F(Collect, TheHtmlTableIsWrittenAfterAResult) {
  PutPgn(1, "1-0");
  JudgeEnded(1);
  EXPECT_NE(machine.files.Bytes("/t/table.htm").find("Alpha"), std::string::npos);
}

TEST_F(Collect, WithoutAGameOrItsFileNothingHappens) {
  EXPECT_FALSE(JudgeEnded(1));
  EXPECT_FALSE(JudgeEnded(99));
  EXPECT_EQ(Output(), "");
  EXPECT_EQ(GameNumber(1).status, kSpooled);
  EXPECT_FALSE(machine.files.Has("/t/table.htm"));
}

TEST_F(Collect, AnEmptyPgnFileGivesAReadyGameOfUnknownResult) {
  machine.files.Put("/t/g1.PGN", "");
  EXPECT_TRUE(JudgeEnded(1));
  EXPECT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(GameNumber(1).result, kUnknown);
  EXPECT_EQ(AllPgn(), "");
}

TEST_F(Collect, ATourneyPgnFileThatCannotBeOpenedIsReportedAndTheResultKept) {
  machine.files.Deny(FileOperation::kOpen, "/t/all.pgn");
  PutPgn(1, "1-0");
  EXPECT_TRUE(JudgeEnded(1));
  EXPECT_EQ(Output(), std::string("Error copying pgn-file!\n") + kStars +
                          "Game 1: Alpha - Beta : 1 - 0" + kStars + "> ");
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  EXPECT_FALSE(machine.files.Has("/t/g1.PGN"));
  EXPECT_EQ(machine.files.Bytes("/t/g1.rescued.PGN"), PgnText("1-0"));
}

TEST_F(Collect, AFullDiskIsReportedToo) {
  for (const FileOperation operation : {FileOperation::kWrite, FileOperation::kClose}) {
    PutPgn(1, "1-0");
    GameNumber(1).pgn_file = "/t\\g1.PGN";
    GameNumber(1).status = kSpooled;
    machine.files.Deny(operation, "/t/all.pgn");
    EXPECT_TRUE(JudgeEnded(1));
    EXPECT_EQ(Output().substr(0, 24), "Error copying pgn-file!\n");
    machine.files.Allow(operation, "/t/all.pgn");
  }
}

TEST_F(Collect, CollectAllTakesEverySpooledGameThatHasARecord) {
  PutPgn(1, "1-0");
  PutPgn(3, "0-1");
  CollectAll(tourney, machine.files, file, running);
  EXPECT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(GameNumber(2).status, kSpooled);
  EXPECT_EQ(GameNumber(3).status, kReady);
  EXPECT_EQ(tourney.State().games_state, 1);
  PutPgn(2, "*");
  CollectAll(tourney, machine.files, file, running);
  EXPECT_EQ(tourney.State().games_state, 2);
  GameNumber(2).result = kDraw;
  CollectAll(tourney, machine.files, file, running);
  EXPECT_EQ(tourney.State().games_state, 3);
}

TEST_F(Collect, CollectAllLeavesGamesAloneThatAreNotSpooled) {
  GameNumber(1).status = kNothingDone;
  GameNumber(2).status = kReady;
  PutPgn(1, "1-0");
  PutPgn(2, "1-0");
  CollectAll(tourney, machine.files, file, running);
  EXPECT_EQ(GameNumber(1).status, kNothingDone);
  EXPECT_EQ(GameNumber(2).result, kUnknown);
  EXPECT_TRUE(machine.files.Has("/t/g1.PGN"));
  EXPECT_EQ(Output(), "");
}

TEST_F(Collect, CollectAllPassesByTheGameThatIsBeingPlayed) {
  machine.files.Put("/t/g1.PGN", "");
  machine.files.Put("/t/g2.PGN", "");
  GameOrder order;
  order.number = 2;
  running.Add(order);
  CollectAll(tourney, machine.files, file, running);
  EXPECT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(GameNumber(2).status, kSpooled);
}

/// Eight players, with games 1 to 4 in round 1 and games 5 to 8 in round 2, all spooled.
class CollectAllOfASwissTourney : public ::testing::Test, protected SmallTourney {
 protected:
  CollectAllOfASwissTourney() {
    tourney.ChangeSettings()->type = kSwiss;
    tourney.ChangeSettings()->rounds = 4;
    for (const char* name : {"Epsilon", "Zeta", "Eta", "Theta"})
      AddParticipant(name);
    for (int round = 1; round <= 2; ++round) {
      for (int white = 1; white <= 7; white += 2)
        tourney.AddGame(white, white + 1, round, 1);
    }
    SpoolAll(tourney, machine.files);
  }

  /// The current round after these games have been collected at one go.
  int RoundAfter(int first, int last) {
    for (int number = first; number <= last; ++number)
      PutPgn(number, "1-0");
    machine.TakeOutput();
    CollectAll(tourney, machine.files, file, running);
    return tourney.State().round;
  }
};

TEST_F(CollectAllOfASwissTourney, MovesItOnWithTheLastGameOfTheRound) {
  EXPECT_EQ(RoundAfter(1, 3), 1);
  EXPECT_EQ(RoundAfter(4, 4), 2);
  EXPECT_EQ(RoundAfter(5, 7), 2);
  EXPECT_EQ(RoundAfter(8, 8), 3);
}

TEST_F(CollectAllOfASwissTourney, MovesItOnOverSeveralRoundsAtOnce) {
  EXPECT_EQ(RoundAfter(1, 8), 3);
}

TEST_F(CollectAllOfASwissTourney, MovesItOnOnceForEachResult) {
  for (Game& game : tourney.ChangeGames()) {
    if (game.number != 4) game.status = kReady;
  }
  EXPECT_EQ(RoundAfter(4, 4), 2) << "although round 2 is complete as well";
}

TEST_F(CollectAllOfASwissTourney, CollectsInTheOrderOfTheListWhateverTheRound) {
  for (Game& game : tourney.ChangeGames())
    game.round = 3 - game.round;
  EXPECT_EQ(RoundAfter(1, 8), 2) << "round 1 was complete with the very last result only";
}

TEST_F(CollectAllOfASwissTourney, AdjustsRoundsBehindTheFirstResult) {
  tourney.ChangeSettings()->rounds = 10;
  tourney.ChangeState()->round = 4;
  for (Game& game : tourney.ChangeGames())
    game.round += 3;
  EXPECT_EQ(RoundAfter(1, 8), 4) << "there is no fifth round for eight players";
  EXPECT_EQ(tourney.Settings().rounds, 4);
  const std::string output = machine.TakeOutput();
  const std::size_t adjusted = output.find("Number of rounds adjusted to 4 (maximum).\n");
  EXPECT_GT(adjusted, output.find("Game 1: "));
  EXPECT_LT(adjusted, output.find("Game 2: "));
}

TEST_F(CollectAllOfASwissTourney, MovesNothingOnWithoutAResult) {
  for (Game& game : tourney.ChangeGames()) {
    if (game.round == 1) game.status = kReady;
  }
  EXPECT_EQ(RoundAfter(2, 1), 1);
}

TEST_F(Collect, WithAutoSaveTheResultIsOnTheDiskBeforeTheRecordIsGone) {
  tourney.ChangeSettings()->auto_save = 1;
  file.SetName("/t/tourney.ini");
  PutPgn(1, "1-0");
  machine.files.Deny(FileOperation::kRemove, "/t/g1.PGN");
  JudgeEnded(1);
  Tourney loaded;
  TourneyFile loaded_file(machine.files);
  ASSERT_TRUE(loaded_file.Load(loaded, "/t/tourney.ini"));
  EXPECT_EQ(loaded.FindGame(1)->status, kReady);
  EXPECT_EQ(loaded.FindGame(1)->result, kWhiteWins);
  EXPECT_EQ(loaded.FindGame(1)->pgn_file, "");
}

TEST_F(Collect, WithoutAutoSaveNothingIsSaved) {
  PutPgn(1, "1-0");
  JudgeEnded(1);
  EXPECT_FALSE(machine.files.Has("/t/tourney.ini"));
}

TEST_F(Collect, WithAutoSaveAResultThatCannotBeSavedKeepsItsRecord) {
  tourney.ChangeSettings()->auto_save = 1;
  ASSERT_TRUE(file.Save(tourney, "/t/tourney.ini"));
  PutPgn(1, "1-0");
  machine.files.Deny(FileOperation::kRename, "/t/tourney.ini.tarvendo.new");
  JudgeEnded(1);
  EXPECT_EQ(GameNumber(1).result, kWhiteWins);
  machine.files.Allow(FileOperation::kRename, "/t/tourney.ini.tarvendo.new");
  Tourney next_start;
  TourneyFile next_start_file(machine.files);
  ASSERT_TRUE(next_start_file.Load(next_start, "/t/tourney.ini"));
  CollectAll(next_start, machine.files, next_start_file, running);
  EXPECT_EQ(next_start.FindGame(1)->status, kReady);
  EXPECT_EQ(next_start.FindGame(1)->result, kWhiteWins);
}

TEST_F(Collect, AResultIsOnTheDiskBeforeTheRecordThatItCameFromGoes) {
  tourney.ChangeSettings()->auto_save = 1;
  file.SetName("/t/tourney.ini");
  PutPgn(1, "1-0");
  JudgeEnded(1);
  const std::vector<std::string> wanted = {"write /t/all.pgn.journal",
                                           "sync /t/all.pgn.journal",
                                           "sync names of /t",
                                           "write /t/all.pgn",
                                           "sync /t/all.pgn",
                                           "sync names of /t",
                                           "sync /t/tourney.ini.tarvendo.new",
                                           "rename /t/tourney.ini.tarvendo.new /t/tourney.ini",
                                           "sync names of /t",
                                           "remove /t/g1.BAT",
                                           "remove /t/g1.PGN",
                                           "remove /t/all.pgn.journal"};
  std::size_t next = 0;
  for (const std::string& change : machine.files.Changes()) {
    if (next < wanted.size() && change == wanted[next]) ++next;
  }
  EXPECT_EQ(next, wanted.size()) << "not found: " << wanted[std::min(next, wanted.size() - 1)];
}

TEST_F(Collect, AFullDiskUnderTheSyncOfTheTourneysPgnIsReported) {
  PutPgn(1, "1-0");
  machine.files.FailFrom(FileOperation::kSync, 1);
  JudgeEnded(1);
  EXPECT_TRUE(Output().starts_with("Error copying pgn-file!\n"));
  EXPECT_TRUE(machine.files.Has("/t/g1.rescued.PGN"));
}

/// How often game N stands in a PGN text.
int CountGame(const std::string& pgn, int number) {
  const std::string tag = "[Number \"" + std::to_string(number) + "\"]";
  int count = 0;
  for (std::size_t at = pgn.find(tag); at != std::string::npos; at = pgn.find(tag, at + 1))
    ++count;
  return count;
}

/// Collects three finished games on a machine whose power goes at the n-th change of a file, then
/// starts the program again from what lies on the disk and collects once more.
class PowerCutWhileCollecting : public ::testing::TestWithParam<bool> {
 protected:
  void Arrange() {
    SmallTourney& was = *before_;
    was.AddGames(3);
    SpoolAll(was.tourney, was.machine.files);
    was.machine.files.Put("/t/all.pgn", kOlderGames);
    for (int number = 1; number <= 3; ++number)
      was.PutPgn(number, "1-0");
    was.tourney.ChangeSettings()->auto_save = GetParam() ? 1 : 0;
    ASSERT_TRUE(was.file.Save(was.tourney, "/t/tourney.ini"));
  }

  /// False when the power went.
  bool CollectUntil(int operations) {
    MortalFileSystem files(before_->machine.files, operations);
    Tourney tourney;
    TourneyFile file(files);
    EXPECT_TRUE(file.Load(tourney, "/t/tourney.ini"));
    try {
      CollectAll(tourney, files, file, RunningGames());
    } catch (const PowerCut&) {
      return false;
    }
    return true;
  }

  /// The tourney's PGN file as it has to be in the end.
  std::string WholePgn() {
    std::string pgn = kOlderGames;
    for (int number = 1; number <= 3; ++number)
      pgn += MergedPgn(before_->tourney, before_->GameNumber(number), before_->PgnText("1-0"));
    return pgn;
  }

  static constexpr const char* kOlderGames = "[Event \"older\"]\n\n1. a4 *\n\n";

  void StartAgain() {
    MemoryFileSystem& files = before_->machine.files;
    Tourney tourney;
    TourneyFile file(files);
    ASSERT_TRUE(file.Load(tourney, "/t/tourney.ini"));
    SettleJournal(tourney, files, file);
    CollectAll(tourney, files, file, RunningGames());
    const std::string pgn = files.Bytes("/t/all.pgn");
    // Without AutoSave a game may stand there twice, as everything is done anew.
    if (GetParam()) {
      EXPECT_EQ(pgn, WholePgn()) << "no half games, none glued, none twice";
      EXPECT_FALSE(files.Has("/t/all.pgn.journal"));
    }
    for (int number = 1; number <= 3; ++number) {
      EXPECT_GE(CountGame(pgn, number), 1) << "game " << number;
      const Game& game = *tourney.FindGame(number);
      const bool is_kept = game.IsReady() && game.result == kWhiteWins;
      EXPECT_TRUE(is_kept || !GetParam()) << "game " << number;
    }
  }

  std::unique_ptr<SmallTourney> before_;
};

TEST_P(PowerCutWhileCollecting, LosesNoFinishedGame) {
  int steps = 0;
  for (bool whole = false; !whole && !HasFailure(); ++steps) {
    SCOPED_TRACE("power cut at step " + std::to_string(steps));
    before_.reset();
    before_ = std::make_unique<SmallTourney>();
    Arrange();
    whole = CollectUntil(steps);
    StartAgain();
  }
  EXPECT_GT(steps, 12);
}

INSTANTIATE_TEST_SUITE_P(AutoSave, PowerCutWhileCollecting, ::testing::Bool());

TEST(FailuresWhileCollecting, EachIsSurvivedAndALostRecordReported) {
  for (const FileOperation operation :
       {FileOperation::kRead, FileOperation::kOpen, FileOperation::kWrite, FileOperation::kClose,
        FileOperation::kRename, FileOperation::kRemove}) {
    for (int n = 1; n <= 12; ++n) {
      SCOPED_TRACE(std::to_string(static_cast<int>(operation)) + " fails at " + std::to_string(n));
      SmallTourney small;
      small.AddGames(2);
      SpoolAll(small.tourney, small.machine.files);
      small.tourney.ChangeSettings()->auto_save = 1;
      for (int number = 1; number <= 2; ++number)
        small.PutPgn(number, "1-0");
      small.machine.TakeOutput();
      small.machine.files.FailAt(operation, n);
      CollectAll(small.tourney, small.machine.files, small.file, small.running);
      CollectAll(small.tourney, small.machine.files, small.file, small.running);
      const bool told = small.machine.TakeOutput().find("Error copying") != std::string::npos;
      const std::string pgn = small.machine.files.Bytes("/t/all.pgn");
      for (int number = 1; number <= 2; ++number) {
        EXPECT_EQ(small.GameNumber(number).result, kWhiteWins);
        EXPECT_TRUE(told || CountGame(pgn, number) == 1);
      }
    }
  }
}

}  // namespace
}  // namespace tarvendo
