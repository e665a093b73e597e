// The end of the program through an error: each of these tests is a process of its own, which
// writes its console text to a file.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <set>
#include <stdexcept>

#include "console/application.h"
#include "fakes/manual_clock.h"
#include "fakes/memory_file_system.h"
#include "fakes/scripted_processes.h"
#include "fakes/scripted_watches.h"
#include "platform/faults.h"
#include "platform/host.h"
#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

constexpr const char* kTwoLines =
    "An exception has occurred and tourney will be closed.\n"
    "Trying to save current tourney to file 'emergency.ini' in current directory.\n";

/// Files with a bug in them: who replaces one of these gets an exception.
class BuggyFiles : public MemoryFileSystem {
 public:
  NewFileAttempt CreateNew(const std::string& path, const std::string& model) override {
    if (cursed.contains(model)) throw std::runtime_error("a bug");
    return MemoryFileSystem::CreateNew(path, model);
  }

  std::set<std::string> cursed;
};

class Emergency : public testing::Test {
 protected:
  /// Runs a script, whose saves to "cursed.ini" throw, and ends the process: with 0 when the file
  /// is there afterwards and holds `content`, with 2 when not.
  [[noreturn]] void Run(const std::string& script, const std::string& file,
                        const std::string& content = "") {
    const int console = open((directory_.Path() + "/console").c_str(), O_WRONLY | O_CREAT, 0600);
    if (dup2(console, STDOUT_FILENO) != STDOUT_FILENO) std::_Exit(3);
    directory_.Put("script", script);
    files_.cursed.insert({"/home/cursed.ini", "/elsewhere/cursed.ini"});
    Host host{files_, processes_, clock_, watches_};
    const int code = RunProgram(host, {directory_.Path() + "/script"});
    if (code != 1) std::_Exit(4);
    const bool is_there = files_.Has(file) && files_.Bytes(file).find(content) != std::string::npos;
    std::_Exit(is_there ? 0 : 2);
  }

  /// A player to make a participant of.
  void PutPlayers() {
    files_.Put("players", "PLAYER_FILE\nPLAYER\nName:\nAlpha\nProgramExe:\na.exe\nEND_PLAYER\n\n");
  }

  /// What the console showed behind the banner.
  std::string Console() const {
    const std::string all = directory_.Bytes("console");
    constexpr const char* kBoxEnd = "_|\n\n";
    return all.substr(all.find(kBoxEnd) + 4);
  }

  ScratchDirectory directory_;
  BuggyFiles files_;
  ScriptedProcesses processes_{files_};
  ManualClock clock_;
  ScriptedWatches watches_;
};

using EmergencyDeathTest = Emergency;

constexpr const char* kFaultyShell = "dir\n";
constexpr const char* kCursed = "set autosave on cursed.ini\n";
const std::string kAfterCursed = "AutoSave is now ON, save file: cursed.ini\n";

TEST_F(EmergencyDeathTest, AnExceptionInACommandSavesTheTourney) {
  EXPECT_EXIT(Run(kCursed, "emergency.ini"), testing::ExitedWithCode(0), "^$");
  EXPECT_EQ(Console(), kAfterCursed + kTwoLines);
}

TEST_F(EmergencyDeathTest, NoCommandFollowsTheException) {
  EXPECT_EXIT(Run(kCursed + std::string("get name\nsave other.ini\n"), "other.ini"),
              testing::ExitedWithCode(2), "^$");
  EXPECT_EQ(Console(), kAfterCursed + kTwoLines);
}

constexpr const char* kBug = "save cursed.ini\n";

TEST_F(EmergencyDeathTest, AnEarlierEmergencySaveIsKept) {
  files_.Put("emergency.ini", "TOURNEY_FILE\nof yesterday\n");
  files_.Put("emergency.old.ini", "TOURNEY_FILE\nof last week\n");
  PutPlayers();
  EXPECT_EXIT(
      Run(std::string("readplayers players\naddall\n") + kBug, "emergency.old.ini", "of yesterday"),
      testing::ExitedWithCode(0), "^$");
}

TEST_F(EmergencyDeathTest, AnEarlierEmergencySaveIsKeptAlsoWhereItsOldNameIsTaken) {
  files_.Put("emergency.ini", "TOURNEY_FILE\nof yesterday\n");
  files_.PutDirectory("/home/emergency.old.ini");
  files_.Put("emergency.old2.ini", "TOURNEY_FILE\nof last week\n");
  PutPlayers();
  const std::string script = std::string("readplayers players\naddall\n") + kBug;
  EXPECT_EXIT(Run(script, "emergency.old3.ini", "of yesterday"), testing::ExitedWithCode(0), "^$");
  EXPECT_EXIT(Run(script, "emergency.old2.ini", "of last week"), testing::ExitedWithCode(0), "^$");
  files_.Deny(FileOperation::kRename, "/home/emergency.ini");
  EXPECT_EXIT(Run(script, "emergency.ini", "Alpha"), testing::ExitedWithCode(0),
              "^The 'emergency.ini' of an earlier time is replaced.\n$");
}

TEST_F(EmergencyDeathTest, ATourneyWithoutPlayersAndGamesLeavesAnEarlierOneAlone) {
  files_.Put("emergency.ini", "TOURNEY_FILE\nof yesterday\n");
  files_.Put("emergency.old.ini", "TOURNEY_FILE\nof last week\n");
  EXPECT_EXIT(Run(kBug, "emergency.ini", "of yesterday"), testing::ExitedWithCode(0), "^$");
  EXPECT_EXIT(Run(kBug, "emergency.old.ini", "of last week"), testing::ExitedWithCode(0), "^$");
  EXPECT_EQ(Console(), kTwoLines);
}

TEST_F(EmergencyDeathTest, TheSaveGoesWhereTheProgramWasStartedWhateverCdHasDone) {
  files_.PutDirectory("/elsewhere");
  const std::string script = std::string("cd /elsewhere\n") + kBug;
  EXPECT_EXIT(Run(script, "/home/emergency.ini"), testing::ExitedWithCode(0), "^$");
  EXPECT_EXIT(Run(script, "/elsewhere/emergency.ini"), testing::ExitedWithCode(2), "^$");
}

TEST_F(EmergencyDeathTest, TheFileKeepsTheTourneysOwnNameForSaving) {
  const std::string script = std::string("set autosave on cup.ini\n") + kFaultyShell;
  processes_.on_shell = [](const std::string&) -> std::string { throw Terminated("told"); };
  EXPECT_EXIT(Run(script, "emergency.ini", "TOURNEY_FILE\n\ncup.ini\n"), testing::ExitedWithCode(0),
              "^$");
  files_.PutDirectory("/elsewhere");
  EXPECT_EXIT(Run("cd /elsewhere\n" + script, "/home/emergency.ini",
                  "TOURNEY_FILE\n\n/elsewhere/cup.ini\n"),
              testing::ExitedWithCode(0), "^$")
      << "as seen from where the file lies";
  EXPECT_EXIT(Run(kFaultyShell, "emergency.ini", "TOURNEY_FILE\n\n\n"), testing::ExitedWithCode(0),
              "^$");
}

TEST_F(EmergencyDeathTest, ASaveThatThrowsIsReported) {
  files_.cursed.insert("/home/emergency.ini");
  EXPECT_EXIT(Run(kCursed, "emergency.ini"), testing::ExitedWithCode(2), "^$");
  EXPECT_EQ(Console(), kAfterCursed + kTwoLines + "Saving failed, exiting.\n");
}

TEST_F(EmergencyDeathTest, ASaveThatFailsIsReportedOnStandardErrorOnly) {
  files_.MakeDirectory("emergency.ini");
  EXPECT_EXIT(Run(kCursed, "emergency.ini"), testing::ExitedWithCode(2),
              "^Saving tourney failed!\n$");
  EXPECT_EQ(Console(), kAfterCursed + kTwoLines);
}

TEST_F(EmergencyDeathTest, ACommandThatIsBrokenOffLeavesNoTemporaryFile) {
  processes_.on_shell = [](const std::string&) -> std::string { throw Terminated("told"); };
  EXPECT_EXIT(Run("dir\n", "tmpfile.$$$"), testing::ExitedWithCode(2), "^$");
  EXPECT_EXIT(Run("dir\n", "emergency.ini"), testing::ExitedWithCode(0), "^$");
  EXPECT_EQ(Console(), kTwoLines);
}

TEST_F(EmergencyDeathTest, AFaultInACommandLeavesNoTemporaryFileEither) {
  processes_.on_shell = [](const std::string&) -> std::string { std::abort(); };
  EXPECT_EXIT(Run("dir\n", "tmpfile.$$$"), testing::ExitedWithCode(2), "^$");
}

}  // namespace
}  // namespace tarvendo
