#include "runner/pgn_journal.h"

#include <gtest/gtest.h>

#include "runner/small_tourney.h"

namespace tarvendo {
namespace {

constexpr const char* kPgn = "/t/all.pgn";
constexpr const char* kJournal = "/t/all.pgn.journal";

/// Games 1 to 3 of a tourney with AutoSave, and older games in its PGN file.
class PgnJournal : public ::testing::Test, protected SmallTourney {
 protected:
  PgnJournal() {
    AddGames(3);
    tourney.ChangeSettings()->auto_save = 1;
    machine.files.Put(kPgn, "old\n");
    machine.TakeOutput();
  }

  void Append(int number, const std::string& text) {
    group_.Add(tourney, GameNumber(number), text, "/t/g1.PGN");
    group_.Rescue();
    MakeReady(number);
  }

  void MakeReady(int number) { tourney.Change(GameNumber(number))->status = kReady; }
  void Forget(int number) { tourney.Change(GameNumber(number))->status = kSpooled; }
  void Settle() { SettleJournal(tourney, machine.files, file); }
  std::string Pgn() { return machine.files.Bytes(kPgn); }

  PgnGroup group_{machine.files, PgnPace::kAtOnce};

  /// The program ends when so many bytes of what it wrote are in the PGN file.
  void LeaveOnly(std::size_t bytes) { ASSERT_TRUE(machine.files.CutTo(kPgn, bytes)); }
};

TEST_F(PgnJournal, StandsBesideThePgnFileUntilTheResultsAreSaved) {
  Append(1, "one\n");
  EXPECT_EQ(Pgn(), "old\none\n");
  EXPECT_EQ(machine.files.Bytes(kJournal),
            "PGN_JOURNAL\n/t\n4\n1\n1\nAlpha\nBeta\n4\none\n\nEND_JOURNAL\n");
  group_.DropJournals(tourney);
  EXPECT_FALSE(machine.files.Has(kJournal));
}

TEST_F(PgnJournal, GoesAlsoWhereThePgnFileIsAnotherOneMeanwhile) {
  machine.files.ChangeDirectory("/t");
  tourney.ChangeSettings()->pgn_file = "all.pgn";
  Append(1, "one\n");
  machine.files.PutDirectory("/u");
  machine.files.ChangeDirectory("/u");
  Append(2, "two\n");
  EXPECT_TRUE(machine.files.Has(kJournal));
  EXPECT_TRUE(machine.files.Has("/u/all.pgn.journal"));
  group_.DropJournals(tourney);
  EXPECT_FALSE(machine.files.Has(kJournal));
  EXPECT_FALSE(machine.files.Has("/u/all.pgn.journal"));
}

TEST_F(PgnJournal, HalfAGameIsCut) {
  for (const std::size_t left : {5U, 6U, 7U}) {
    machine.files.Put(kPgn, "old\n");
    Append(1, "one\n");
    Forget(1);
    LeaveOnly(left);
    Settle();
    EXPECT_EQ(Pgn(), "old\n") << left;
    EXPECT_FALSE(machine.files.Has(kJournal));
  }
}

// As some file systems leave it behind a power failure.
TEST_F(PgnJournal, AGameWithHolesOfNulBytesIsCut) {
  for (const std::string& left : {std::string("one\n\0\0\0\n", 8), std::string("\0\0\0\0", 4),
                                  std::string("\0ne\ntw", 6), std::string("o\0\0", 3)}) {
    machine.files.Put(kPgn, "old\n");
    Append(1, "one\n");
    Append(2, "two\n");
    Forget(1);
    Forget(2);
    machine.files.Put(kPgn, "old\n" + left);
    Settle();
    EXPECT_EQ(Pgn(), "old\n") << left.size();
    EXPECT_FALSE(machine.files.Has(kJournal));
  }
}

TEST_F(PgnJournal, AWholeGameThatTheTourneyDoesNotKnowIsCutToo) {
  Append(1, "one\n");
  Append(2, "two\n");
  EXPECT_EQ(Pgn(), "old\none\ntwo\n");
  Forget(2);
  Settle();
  EXPECT_EQ(Pgn(), "old\none\n");
  Append(2, "2nd\n");
  EXPECT_EQ(Pgn(), "old\none\n2nd\n");
}

TEST_F(PgnJournal, AGameThatTheTourneyKnowsStays) {
  Append(1, "one\n");
  ASSERT_TRUE(file.Save(tourney, "/t/tourney.ini"));
  Settle();
  EXPECT_EQ(Pgn(), "old\none\n");
  EXPECT_FALSE(machine.files.Has(kJournal));
}

TEST_F(PgnJournal, StaysAsLongAsTheTourneyIsNotAsItsFileIs) {
  Append(1, "one\n");
  Settle();
  EXPECT_TRUE(machine.files.Has(kJournal));
  Forget(1);
  Append(1, "one\n");
  EXPECT_EQ(Pgn(), "old\none\n") << "collected again, it stands there once";
}

TEST_F(PgnJournal, TheNextAppendCutsAsWell) {
  Append(1, "one\n");
  Forget(1);
  LeaveOnly(6);
  Append(2, "two\n");
  EXPECT_EQ(Pgn(), "old\ntwo\n");
}

TEST_F(PgnJournal, WhatSomebodyAddedOrChangedIsNeverCut) {
  for (const std::string& changed :
       {std::string("old\none\nmine\n"), std::string("old\nonx"), std::string("old\nONE\n"),
        std::string("ol"), std::string("old\none mine"), std::string("old\no\0x\n", 8),
        std::string("old\n\0\0\0\0\0\0", 10)}) {
    machine.files.Put(kPgn, "old\n");
    Append(1, "one\n");
    Forget(1);
    machine.files.Put(kPgn, changed);
    Settle();
    EXPECT_EQ(Pgn(), changed);
    Append(2, "two\n");
    EXPECT_EQ(Pgn(), changed + "two\n");
    Forget(2);
    machine.files.Remove(kJournal);
  }
}

TEST_F(PgnJournal, AnotherTourneysJournalIsLeftAlone) {
  Append(1, "one\n");
  const std::string before = machine.files.Bytes(kJournal);
  machine.files.PutDirectory("/u");
  tourney.ChangeSettings()->files_path = "/u\\";
  Forget(1);
  Append(1, "mine\n");
  EXPECT_EQ(Pgn(), "old\none\nmine\n");
  EXPECT_EQ(machine.files.Bytes(kJournal), before);
  EXPECT_TRUE(machine.files.Has("/t/all.pgn.journal2"));
  Forget(1);
  Settle();
  EXPECT_EQ(Pgn(), "old\none\n");
  EXPECT_FALSE(machine.files.Has("/t/all.pgn.journal2"));
  EXPECT_EQ(machine.files.Bytes(kJournal), before);
}

TEST_F(PgnJournal, OneThatIsNotWholeTellsNothing) {
  Append(1, "one\n");
  const std::string whole = machine.files.Bytes(kJournal);
  Forget(1);
  for (std::size_t size = 0; size < whole.size(); ++size) {
    machine.files.Put(kJournal, whole.substr(0, size));
    Settle();
    EXPECT_EQ(Pgn(), "old\none\n") << size;
    EXPECT_FALSE(machine.files.Has(kJournal)) << size;
  }
}

TEST_F(PgnJournal, WhereHalfAGameCannotBeCutNothingIsAddedBehindIt) {
  Append(1, "one\n");
  Forget(1);
  LeaveOnly(6);
  PutPgn(1, "1-0");
  machine.files.Deny(FileOperation::kCut, kPgn);
  Settle();
  EXPECT_EQ(Pgn(), "old\non");
  EXPECT_TRUE(machine.files.Has(kJournal)) << "the next one may be able to";
  Append(2, "two\n");
  EXPECT_EQ(Pgn(), "old\non");
  EXPECT_EQ(machine.TakeOutput(), "Error copying pgn-file!\n");
  EXPECT_TRUE(machine.files.Has("/t/g1.rescued.PGN"));
  machine.files.Allow(FileOperation::kCut, kPgn);
  Append(3, "three\n");
  EXPECT_EQ(Pgn(), "old\nthree\n");
}

TEST_F(PgnJournal, WhereThePgnFileCannotBeReadNothingIsCut) {
  Append(1, "one\n");
  machine.files.Deny(FileOperation::kRead, kPgn);
  Settle();
  Append(2, "two\n");
  EXPECT_EQ(Pgn(), "old\none\n");
  EXPECT_EQ(machine.TakeOutput(), "Error copying pgn-file!\n");
}

// Behind a game that the journal does not tell of, those before it could never be cut.
TEST_F(PgnJournal, WhereItCannotTellOfAnotherGameThatOneIsNotAdded) {
  Append(1, "one\n");
  machine.files.Deny(FileOperation::kRename, "/t/all.pgn.journal.tarvendo.new");
  Append(2, "two\n");
  EXPECT_EQ(Pgn(), "old\none\n");
  EXPECT_EQ(machine.TakeOutput(), "Error copying pgn-file!\n");
  Forget(1);
  Settle();
  EXPECT_EQ(Pgn(), "old\n");
}

TEST_F(PgnJournal, ADiskThatIsFullInTheMiddleOfAGameLeavesNothingOfIt) {
  PutPgn(1, "1-0");
  machine.files.Deny(FileOperation::kWrite, kPgn);
  Append(1, "one\n");
  EXPECT_EQ(Pgn(), "old\n");
  EXPECT_EQ(machine.TakeOutput(), "Error copying pgn-file!\n");
  EXPECT_TRUE(machine.files.Has("/t/g1.rescued.PGN"));
}

TEST_F(PgnJournal, AGroupOfGamesIsSyncedOnce) {
  PgnGroup group(machine.files, PgnPace::kTogether);
  for (int number = 1; number <= 3; ++number)
    group.Add(tourney, GameNumber(number), "text\n", "/t/g1.PGN");
  EXPECT_EQ(Pgn(), "old\n");
  group.Write(tourney);
  EXPECT_EQ(Pgn(), "old\ntext\ntext\ntext\n");
  EXPECT_EQ(machine.files.Count(FileOperation::kSync), 3) << "the journal, its name, the games";
}

TEST_F(PgnJournal, WithoutAutoSaveItGoesBehindTheAppend) {
  tourney.ChangeSettings()->auto_save = 0;
  Append(1, "one\n");
  EXPECT_EQ(Pgn(), "old\none\n");
  EXPECT_FALSE(machine.files.Has(kJournal));
}

}  // namespace
}  // namespace tarvendo
