#include "console/command_interpreter.h"

#include <gtest/gtest.h>

#include "console/typed_commands.h"
#include "console/unknown_word_text.h"
#include "runner/runner.h"
#include "runner/spool.h"

namespace tarvendo {
namespace {

class Interpreter : public TypedCommands {
 protected:
  Interpreter() { machine.log.AddFile("/home/log"); }

  std::string LogText() { return machine.files.Bytes("/home/log"); }

  /// The lines that reached the shell.
  std::vector<std::string> ShellLines() {
    std::vector<std::string> lines;
    for (const auto& call : machine.processes.ShellCalls())
      lines.push_back(call.line);
    return lines;
  }
};

TEST_F(Interpreter, AnEmptyLineOrOneOfBlanksIsPassedOver) {
  EXPECT_EQ(TypeAll("\n   \n\t\n"), "");
  EXPECT_TRUE(ShellLines().empty());
}

TEST_F(Interpreter, LeadingBlanksAreDropped) {
  EXPECT_EQ(Type("   get sub"), "SubRounds = 1\n");
}

TEST_F(Interpreter, ALeadingTabHidesTheFirstWord) {
  EXPECT_EQ(Type("\tget sub"), "");
  EXPECT_EQ(ShellLines(), std::vector<std::string>{"sub\n"});
}

TEST_F(Interpreter, ALastLineWithoutLineFeedIsEchoedButNotRun) {
  EXPECT_EQ(TypeAll("get sub\nget sub"), "SubRounds = 1\n");
  EXPECT_EQ(LogText(), "get sub\nSubRounds = 1\nget sub");
}

TEST_F(Interpreter, AtTheEndNothingIsEchoedWhenNothingWasRead) {
  TypeAll("get sub\n");
  EXPECT_EQ(LogText(), "get sub\nSubRounds = 1\n");
}

TEST_F(Interpreter, TheKeyboardGetsAPromptBeforeEachLineAScriptNone) {
  TextInput bytes("get sub\n\n");
  LineInput keyboard(bytes, true);
  interpreter.RunCommandLoop(keyboard, false);
  EXPECT_EQ(machine.TakeOutput(), "\n> SubRounds = 1\n\n> \n> ");
}

TEST_F(Interpreter, TheBannerComesFirstWhenAskedFor) {
  TextInput bytes("get sub\n");
  LineInput script(bytes, false);
  interpreter.RunCommandLoop(script, true);
  EXPECT_EQ(machine.TakeOutput(), Banner() + "SubRounds = 1\n");
}

TEST_F(Interpreter, AQuitWordEndsThePass) {
  for (const char* word : {"q", "Q", "quit", "qxyz", "  quit now"})
    EXPECT_EQ(TypeAll(std::string(word) + "\nget sub\n"), "") << word;
}

TEST_F(Interpreter, ALineOfMoreThan254CharactersIsSeveralLines) {
  const std::string blanks(246, ' ');
  EXPECT_EQ(Type("get sub " + blanks + "get type"), "SubRounds = 1\nType = ROUND ROBIN.\n");
}

TEST_F(Interpreter, ALineWithANulByteEndsThere) {
  TypeAll(std::string("get sub\0 x\n", 11));
  EXPECT_EQ(machine.TakeOutput(), "");
  EXPECT_EQ(LogText(), "get subSubRounds = 1\n");
}

TEST_F(Interpreter, AnUnknownWordIsRunByTheShellAndItsOutputShown) {
  machine.processes.on_shell = [](const std::string&) { return "a\nb\n"; };
  EXPECT_EQ(Type("dir  /w"), "a\nb\nb\n");
  EXPECT_EQ(ShellLines(), std::vector<std::string>{"dir  /w\n"});
  EXPECT_EQ(LogText(), "dir  /w\na\nb\nb\n");
}

TEST_F(Interpreter, AShellCommandDoesNotHoldTheTourney) {
  machine.processes.on_shell = [this](const std::string&) {
    const Hold hold = shared.Take();
    return "free\n";
  };
  EXPECT_EQ(Type("dir"), "free\nfree\n");
}

TEST_F(Interpreter, PercentSignsAndQuotesReachTheMessagesUnharmed) {
  EXPECT_EQ(Type("get %s%n\"'"), Unknown("%s%n\"'"));
}

TEST_F(Interpreter, TheEndOfTheInputSavesNothing) {
  UseAutoSave();
  TypeAll("get sub\n");
  EXPECT_FALSE(HasSaved());
}

TEST_F(Interpreter, QuittingSavesWithAutoSaveOnly) {
  Type("q");
  EXPECT_FALSE(HasSaved());
  UseAutoSave();
  EXPECT_EQ(Type("q"), "");
  EXPECT_TRUE(HasSaved());
}

TEST_F(Interpreter, ASaveThatFailsIsReported) {
  UseAutoSave();
  file.SetName("/nowhere/saved.ini");
  EXPECT_EQ(Type("q"), "Saving tourney failed!\n");
  EXPECT_EQ(Type("set ponder on"), "Ponder is now ON.\nSaving tourney failed!\n");
}

TEST_F(Interpreter, AnAutomaticSaveNeverReplacesAForeignFile) {
  UseAutoSave();
  machine.files.Put("/t/saved.ini", "my diary\n");
  EXPECT_EQ(Type("q"), "Saving tourney failed!\n");
  EXPECT_EQ(machine.files.Bytes("/t/saved.ini"), "my diary\n");
}

TEST_F(Interpreter, CommandsThatChangeNothingSaveNothing) {
  AddGames(2);
  UseAutoSave();
  for (const char* line :
       {"get all", "showp", "showg", "avail", "game 1", "player 1", "set", "set nonsense",
        "set rounds 3", "set subrounds", "housekeep", "table /t/x.htm -foo", "geta", "dir"}) {
    Type(line);
    EXPECT_FALSE(HasSaved()) << line;
  }
}

TEST_F(Interpreter, EveryAcceptedSetSavesEvenWhenItChangesNothing) {
  UseAutoSave();
  Type("set ponder off");
  EXPECT_TRUE(HasSaved());
}

TEST_F(Interpreter, EveryCommandThatChangesTheTourneySaves) {
  for (const char* line :
       {"addp Alpha", "adda", "addg strong", "remp 1", "forf 1", "run", "run 10:00",
        "game 1 res 1-0", "game 1 sta 2", "spool", "createrr", "remg -all", "table"}) {
    tourney.Reset();
    tourney.ChangeSettings()->files_path = "/t\\";
    tourney.ChangeSettings()->type = kRoundRobin;
    for (const char* name : {"Gamma", "Delta"})
      AddParticipant(name);
    tourney.AddGame(1, 2, 1, 1);
    UseAutoSave();
    machine.files.Remove("/t/saved.ini");
    Type(line);
    EXPECT_TRUE(HasSaved()) << line;
  }
}

TEST_F(Interpreter, SwitchingAutoSaveOnSaves) {
  EXPECT_EQ(Type("set autosave on /t/saved.ini"), "AutoSave is now ON, save file: /t/saved.ini\n");
  EXPECT_TRUE(HasSaved());
}

TEST_F(Interpreter, AfterSwitchingAutoSaveOffNothingIsSaved) {
  UseAutoSave();
  Type("set autosave off");
  EXPECT_FALSE(HasSaved());
  Type("q");
  EXPECT_FALSE(HasSaved());
}

TEST_F(Interpreter, ALoadedTourneyWithAutoSaveIsSavedUnderItsOwnName) {
  UseAutoSave();
  file.SetName("/t/own.ini");
  ASSERT_TRUE(file.Save(tourney, ""));
  const std::string text = machine.files.Bytes("/t/own.ini");
  machine.files.Remove("/t/own.ini");
  machine.files.Put("/t/copy.ini", text);
  EXPECT_EQ(Type("load /t/copy.ini"), "Tourney loaded.\n");
  EXPECT_EQ(machine.files.Bytes("/t/own.ini"), text);
}

// What this shows is shown by the build that watches the threads.
TEST_F(Interpreter, CommandsAndTheRunnerWorkOnOneTourney) {
  AddGames(8);
  machine.processes.on_batch = [this](const std::string& batch) {
    machine.files.Put("/t/winboard.debug", "1\n2\n3\n4\n5\nGameEnds(27, Black mates, 6)\n");
    PutPgn(batch[batch.find('g') + 1] - '0', "1-0");
    return true;
  };
  Runner runner(room, RunnerOptions());
  ASSERT_TRUE(runner.StartThread());
  Type("set autorun on");
  Type("run");
  for (int i = 0; i < 10; ++i) {
    for (const char* line : {"showg", "get all", "set name My Cup", "run 10:00", "run c", "geta",
                             "tex", "save /t/s.ini", "hou", "cd /t", "dir"})
      Type(line);
  }
  runner.AwaitIdle();
  Type("geta");
  const Hold hold = shared.Take();
  EXPECT_EQ(tourney.State().games_state, 3);
}

}  // namespace
}  // namespace tarvendo
