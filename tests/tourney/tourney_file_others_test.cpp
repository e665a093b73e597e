// Where the tourney's file lies, and what becomes of it when another program writes to it.

#include "tourney/runner_switch_commands.h"
#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

class TourneyFileName : public TourneyTest {
 protected:
  TourneyFileName() { machine.files.MakeDirectory("/games"); }

  /// What the runner does for every game, and `cd`.
  void ChangeDirectory() { machine.files.ChangeDirectory("/games"); }

  void ExpectSavedAt(const std::string& path) {
    EXPECT_EQ(machine.files.FileNames(), std::vector<std::string>{path});
  }
};

TEST_F(TourneyFileName, OfASaveIsMeantFromTheDirectoryInWhichItWasGiven) {
  EXPECT_TRUE(file.Save(tourney, "mine.ini"));
  ChangeDirectory();
  EXPECT_TRUE(file.Save(tourney, ""));
  ExpectSavedAt("/home/mine.ini");
  EXPECT_EQ(file.Name(), "mine.ini") << "as it was typed";
  EXPECT_NE(machine.files.Bytes("/home/mine.ini").find("\nmine.ini\n"), std::string::npos);
}

TEST_F(TourneyFileName, GivenToAutoSaveIsMeantFromTheDirectoryInWhichItWasGiven) {
  tourney.ChangeSettings()->auto_save = 1;
  file.SetName("sub\\mine.ini");
  machine.files.MakeDirectory("/home/sub");
  ChangeDirectory();
  EXPECT_TRUE(file.AutoSave(tourney));
  ExpectSavedAt("/home/sub/mine.ini");
}

TEST_F(TourneyFileName, FoundInALoadedFileIsMeantFromTheDirectoryOfThatMoment) {
  EXPECT_TRUE(file.Save(tourney, "own.ini"));
  machine.files.Rename("/home/own.ini", "/games/copy.ini");
  Tourney next;
  TourneyFile next_file(machine.files);
  ASSERT_TRUE(next_file.Load(next, "/games/copy.ini"));
  machine.files.Remove("/games/copy.ini");
  ChangeDirectory();
  EXPECT_TRUE(next_file.Save(next, ""));
  ExpectSavedAt("/home/own.ini");
}

TEST_F(TourneyFileName, ChosenBecauseThereIsNoneStaysWhereItIsToo) {
  EXPECT_TRUE(file.Save(tourney, ""));
  ChangeDirectory();
  EXPECT_TRUE(file.Save(tourney, ""));
  ExpectSavedAt("/home/tourney.ini");
}

TEST_F(TourneyFileName, GivenAgainIsMeantAnew) {
  EXPECT_TRUE(file.Save(tourney, "mine.ini"));
  machine.files.Remove("/home/mine.ini");
  ChangeDirectory();
  EXPECT_TRUE(file.Save(tourney, "mine.ini"));
  ExpectSavedAt("/games/mine.ini");
}

constexpr const char* kChanged =
    "The tourney file 't.ini' was changed by another program, so it is not saved.\n"
    "Save by hand replaces it, Load takes what is in it.\n";

/// A tourney that is saved in t.ini, which another program then writes to.
class TourneyFileOfTwo : public TourneyTest {
 protected:
  TourneyFileOfTwo() {
    tourney.ChangeSettings()->auto_save = 1;
    EXPECT_TRUE(file.Save(tourney, "t.ini"));
  }

  /// The other program has the same tourney, with a name of its own.
  void LetAnotherSave() {
    Tourney other;
    TourneyFile other_file(machine.files);
    ASSERT_TRUE(other_file.Load(other, "t.ini"));
    other.ChangeSettings()->name = "Another one";
    ASSERT_TRUE(other_file.Save(other, ""));
  }

  bool IsTheOthers() {
    return machine.files.Bytes("t.ini").find("\nAnother one\n") != std::string::npos;
  }
};

TEST_F(TourneyFileOfTwo, IsNotReplacedByAutoSaveWhichSaysSo) {
  LetAnotherSave();
  EXPECT_FALSE(file.AutoSave(tourney));
  EXPECT_EQ(Output(), kChanged);
  EXPECT_TRUE(IsTheOthers());
}

TEST_F(TourneyFileOfTwo, StopsTheRunner) {
  tourney.ChangeSwitch()->SetRunning(true);
  LetAnotherSave();
  EXPECT_FALSE(file.AutoSave(tourney));
  EXPECT_TRUE(Output().starts_with(kChanged));
  EXPECT_FALSE(tourney.Switch().IsRunning());
  EXPECT_TRUE(tourney.Switch().HasStoppedItself());
}

TEST_F(TourneyFileOfTwo, IsNotReplacedInSilenceEither) {
  LetAnotherSave();
  EXPECT_FALSE(file.TryAutoSave(tourney));
  EXPECT_EQ(Output(), "");
  EXPECT_TRUE(IsTheOthers());
}

TEST_F(TourneyFileOfTwo, IsReplacedByHandAndThenAgainByAutoSave) {
  LetAnotherSave();
  EXPECT_TRUE(file.Save(tourney, ""));
  EXPECT_FALSE(IsTheOthers());
  tourney.ChangeSettings()->name = "Mine";
  EXPECT_TRUE(file.AutoSave(tourney));
  EXPECT_EQ(Output(), "");
}

TEST_F(TourneyFileOfTwo, IsTakenOverByALoad) {
  LetAnotherSave();
  EXPECT_TRUE(file.Load(tourney, ""));
  EXPECT_TRUE(file.AutoSave(tourney));
  EXPECT_EQ(tourney.Settings().name, "Another one");
}

TEST_F(TourneyFileOfTwo, IsSavedWhenTheOtherOneDeletedIt) {
  machine.files.Remove("t.ini");
  EXPECT_TRUE(file.AutoSave(tourney));
  EXPECT_EQ(Output(), "");
}

TEST_F(TourneyFileOfTwo, MayBeWrittenAnewWithTheSameText) {
  machine.files.Put("t.ini", std::string(machine.files.Bytes("t.ini")));
  EXPECT_TRUE(file.AutoSave(tourney));
}

TEST_F(TourneyFileOfTwo, MatterOnlyUnderTheNameThatIsSavedTo) {
  LetAnotherSave();
  file.SetName("u.ini");
  EXPECT_TRUE(file.AutoSave(tourney));
  EXPECT_TRUE(IsTheOthers());
}

TEST_F(TourneyFileOfTwo, WithAutoSaveOffNobodyCares) {
  tourney.ChangeSettings()->auto_save = 0;
  LetAnotherSave();
  EXPECT_TRUE(file.AutoSave(tourney));
  EXPECT_EQ(Output(), "");
}

TEST_F(TourneyFileOfTwo, HalfASaveOfItsOwnIsNobodyElses) {
  // Where no file can be made beside it, it is written in place.
  machine.files.Deny(FileOperation::kOpen, "/home/t.ini.tarvendo.new");
  machine.files.FailAt(FileOperation::kWrite, 1);
  EXPECT_FALSE(file.AutoSave(tourney));
  EXPECT_EQ(Output(), "Saving tourney failed!\n");
  EXPECT_TRUE(file.AutoSave(tourney));
  EXPECT_EQ(Output(),
            "No file can be made beside 't.ini', so it is written in place:\n"
            "should the machine stop meanwhile, it is lost.\n");
  EXPECT_TRUE(file.AutoSave(tourney));
  EXPECT_EQ(Output(), "") << "it is said once";
}

TEST_F(TourneyFileOfTwo, AFileThatLooksAsItWasLeftIsNotReadAgain) {
  ASSERT_TRUE(file.AutoSave(tourney));
  machine.files.Deny(FileOperation::kRead, "/home/t.ini");
  const int before = machine.files.Count(FileOperation::kRead);
  tourney.ChangeSettings()->name = "Another";
  EXPECT_TRUE(file.AutoSave(tourney));
  EXPECT_EQ(machine.files.Count(FileOperation::kRead) - before, 1) << "its first line";
  EXPECT_EQ(Output(), "");
}

TEST_F(TourneyFileOfTwo, AFileThatWasOnlyWrittenAgainIsNoChange) {
  ASSERT_TRUE(file.AutoSave(tourney));
  machine.files.Put("/home/t.ini", std::string(machine.files.Bytes("/home/t.ini")));
  EXPECT_TRUE(file.AutoSave(tourney));
  EXPECT_EQ(Output(), "");
}

TEST_F(TourneyFileOfTwo, ATextThatEndsInACarriageReturnIsNoChange) {
  tourney.ChangeSettings()->name = "Cup\r";
  EXPECT_TRUE(file.AutoSave(tourney));
  EXPECT_TRUE(file.AutoSave(tourney));
  EXPECT_EQ(Output(), "");
}

}  // namespace
}  // namespace tarvendo
