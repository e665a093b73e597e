#include "runner/openings_in_use.h"

#include <gtest/gtest.h>

#include "runner/play_fixture.h"

namespace tarvendo {
namespace {

constexpr const char* kNote = "/t/runner.openings";
constexpr const char* kBook = "/o/book.pgn";
constexpr const char* kCopy = "/t/g1.opening.BAT";
constexpr const char* kNoteText = "OPENINGS\n/o/book.pgn\n";

/// Two spooled games, of two pairings, that are to start from the lines of /o/book.pgn.
class PlayOpenings : public PlayGames {
 protected:
  PlayOpenings() {
    machine.files.Put(kBook, "[Event \"A\"]\n1. e4 *\n[Event \"B\"]\n1. d4 *\n");
    machine.files.Put("/o/other.pgn", "[Event \"A\"]\n1. c4 *\n");
    Use(kBook);
  }

  /// Another process of the program goes on with these openings, or with none.
  void Use(const char* path, int places = 1) {
    std::string error;
    openings_.reset();
    if (path != nullptr) openings_ = Openings::Read(machine.files, path, error);
    EXPECT_EQ(error, "");
    Restart(places);
    machine.TakeOutput();
  }

  /// Plays the first game to its end.
  void BeginTourney() {
    Pass();
    EndGame(1, "1-0");
    PassTime(seconds(3));
    machine.files.Remove("/t/winboard.debug");
    ASSERT_EQ(GameNumber(1).status, kReady);
  }

  std::string RefusalWith(const char* path) {
    Use(path);
    const std::size_t started = machine.processes.Batches().size();
    PassTime(seconds(20));
    if (!loop_->Refusal().empty()) {
      EXPECT_EQ(machine.processes.Batches().size(), started);
    }
    return loop_->Refusal();
  }
};

TEST_F(PlayOpenings, AGameIsStartedFromACopyOfItsBatchFileWithTheLineBehindIt) {
  const std::string batch = machine.files.Bytes("/t/g1.BAT");
  Pass();
  EXPECT_EQ(machine.processes.Batches(), std::vector<std::string>{kCopy});
  EXPECT_EQ(machine.files.Bytes(kCopy), batch + "/lgf=\"/o/book.pgn\" /lgi=1 ");
  EXPECT_EQ(machine.files.Bytes("/t/g1.BAT"), batch);
}

TEST_F(PlayOpenings, TheCopyGoesWithTheGameAndTheNextPairingHasTheNextLine) {
  Pass();
  EndGame(1, "1-0");
  PassTime(seconds(9));
  EXPECT_FALSE(machine.files.Has(kCopy));
  EXPECT_EQ(machine.processes.Batches().back(), "/t/g2.opening.BAT");
  EXPECT_TRUE(machine.files.Bytes("/t/g2.opening.BAT").ends_with("/lgi=2 "));
}

TEST_F(PlayOpenings, GamesAboveTheFirstPlaceHaveTheirDebugFileNamedToo) {
  Use(kBook, 2);
  Pass();
  EXPECT_TRUE(machine.files.Bytes(kCopy).ends_with("/lgi=1 "));
  EXPECT_TRUE(machine.files.Bytes("/t/g2.place/g2.BAT")
                  .ends_with("/lgf=\"/o/book.pgn\" /lgi=2 /debugfile=/t/g2.place/winboard.debug "))
      << machine.files.Bytes("/t/g2.opening.BAT");
}

TEST_F(PlayOpenings, ACopyIsClearedAwayByANextProcessToo) {
  Pass();
  ASSERT_TRUE(machine.files.Has(kCopy));
  Use(kBook);
  Pass();
  EndGame(1, "1-0");
  PassTime(seconds(3));
  EXPECT_FALSE(machine.files.Has(kCopy));
}

TEST_F(PlayOpenings, ACopyThatCannotBeMadeIsAGameThatDoesNotStart) {
  machine.files.Deny(FileOperation::kOpen, kCopy);
  machine.processes.on_batch = [](const std::string&) { return false; };
  Pass();
  EXPECT_EQ(machine.processes.Batches(), std::vector<std::string>{""});
}

TEST_F(PlayOpenings, TheNoteTellsNameAndChecksum) {
  Pass();
  EXPECT_EQ(machine.files.Bytes(kNote), kNoteText + openings_->Checksum() + "\n");
}

TEST_F(PlayOpenings, GoingOnWithTheSameFileIsGood) {
  BeginTourney();
  EXPECT_EQ(RefusalWith(kBook), "");
  EXPECT_EQ(machine.processes.Batches().back(), "/t/g2.opening.BAT");
}

TEST_F(PlayOpenings, GoingOnWithTheSameFileUnderAnotherNameIsGoodAndNoted) {
  BeginTourney();
  machine.files.Put("/o/copy.pgn", machine.files.Bytes(kBook));
  EXPECT_EQ(RefusalWith("/o/copy.pgn"), "");
  EXPECT_EQ(machine.files.Bytes(kNote), "OPENINGS\n/o/copy.pgn\n" + openings_->Checksum() + "\n");
}

TEST_F(PlayOpenings, GoingOnWithoutThemIsRefused) {
  BeginTourney();
  EXPECT_EQ(RefusalWith(nullptr),
            "The games were begun with the openings file '/o/book.pgn': go on with --openings and "
            "that file, or delete '/t\\runner.openings'.");
}

TEST_F(PlayOpenings, GoingOnWithOthersIsRefused) {
  BeginTourney();
  EXPECT_EQ(RefusalWith("/o/other.pgn"),
            "The games were begun with the openings file '/o/book.pgn' and not with "
            "'/o/other.pgn': go on with that one, or delete '/t\\runner.openings'.");
}

TEST_F(PlayOpenings, GoingOnWithAChangedFileIsRefused) {
  BeginTourney();
  machine.files.Put(kBook, machine.files.Bytes("/o/other.pgn"));
  EXPECT_EQ(RefusalWith(kBook),
            "The openings file '/o/book.pgn' is not the one with which the games were begun: go on "
            "with what it was then, or delete '/t\\runner.openings'.");
}

TEST_F(PlayOpenings, AGameThatIsBeingPlayedIsABeginning) {
  Pass();
  EXPECT_NE(RefusalWith(nullptr), "");
}

TEST_F(PlayOpenings, ADamagedNoteIsRefused) {
  BeginTourney();
  for (const char* note :
       {"", "OPENINGS\n", "OPENINGS\n/o/book.pgn", "OPENINGS\n/o/book.pgn\n", "\n\n\n",
        "OPENINGS\n/o/book.pgn\n0123456789abcdef\nmore\n", "OPENINGS\n/o/book.pgn\n01"}) {
    machine.files.Put(kNote, note);
    EXPECT_EQ(RefusalWith(kBook),
              "'/t\\runner.openings' is damaged and does not tell with which openings the games "
              "were begun: delete it to go on.")
        << note;
  }
}

TEST_F(PlayOpenings, WithoutTheNoteAnythingIsGood) {
  BeginTourney();
  machine.files.Remove(kNote);
  EXPECT_EQ(RefusalWith(nullptr), "");
  EXPECT_EQ(machine.processes.Batches().back(), "/t/g2.BAT");
}

TEST_F(PlayOpenings, ATourneyThatHasNotBegunReplacesTheNote) {
  machine.files.Put(kNote, "OPENINGS\n/o/older.pgn\n0123456789abcdef\n");
  EXPECT_EQ(RefusalWith(kBook), "");
  EXPECT_EQ(machine.files.Bytes(kNote), kNoteText + openings_->Checksum() + "\n");
}

TEST_F(PlayOpenings, ATourneyThatHasNotBegunForgetsTheNoteWhenItHasNone) {
  machine.files.Put(kNote, "OPENINGS\n/o/older.pgn\n0123456789abcdef\n");
  EXPECT_EQ(RefusalWith(nullptr), "");
  EXPECT_FALSE(machine.files.Has(kNote));
}

TEST_F(PlayOpenings, AByeIsNoBeginning) {
  tourney.ChangeParticipants()[1].texts.program_exe = "bye";
  PassTime(seconds(1));
  ASSERT_EQ(GameNumber(1).status, kReady);
  EXPECT_EQ(RefusalWith(nullptr), "");
}

TEST_F(PlayOpenings, ANoteThatCannotBeWrittenHindersEveryGameUntilItCan) {
  machine.files.Deny(FileOperation::kOpen, std::string(kNote) + ".tarvendo.new");
  machine.files.Deny(FileOperation::kOpen, kNote);
  EXPECT_EQ(Pass(), play_pace_.retry.count());
  EXPECT_EQ(Output(), "Error opening file for writing:  /t\\runner.openings\n");
  EXPECT_TRUE(machine.processes.Batches().empty());
  machine.files.Allow(FileOperation::kOpen, std::string(kNote) + ".tarvendo.new");
  machine.files.Allow(FileOperation::kOpen, kNote);
  PassTime(seconds(3));
  EXPECT_EQ(machine.processes.Batches(), std::vector<std::string>{kCopy});
}

TEST_F(PlayOpenings, AFileThatIsChangedMeanwhileEndsIt) {
  BeginTourney();
  machine.files.Put(kBook, "[Event \"A\"]\n1. h4 *\n");
  PassTime(seconds(20));
  EXPECT_EQ(machine.processes.Batches().size(), 1U);
  EXPECT_EQ(loop_->Refusal(),
            "The openings file '/o/book.pgn' was changed or taken away while games were played "
            "with it.");
}

}  // namespace
}  // namespace tarvendo
