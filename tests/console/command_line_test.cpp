#include "console/command_line.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

#include "console/long_options.h"
#include "platform/processes.h"

namespace tarvendo {
namespace {

TEST(CommandLine, WithoutWordsTheKeyboardIsRead) {
  const StartUp start = ReadCommandLine({});
  EXPECT_EQ(start.script, "");
  EXPECT_FALSE(start.continues);
  EXPECT_FALSE(start.waits);
}

TEST(CommandLine, ASingleWordIsAScriptWhateverItLooksLike) {
  EXPECT_EQ(ReadCommandLine({"setup.txt"}).script, "setup.txt");
  EXPECT_EQ(ReadCommandLine({"-c"}).script, "-c");
  EXPECT_FALSE(ReadCommandLine({"-c"}).continues);
}

TEST(CommandLine, AnOptionWhoseSecondCharacterIsCContinues) {
  for (const char* option : {"-c", "-continue", "-cx"}) {
    EXPECT_TRUE(ReadCommandLine({"script", option}).continues) << option;
    EXPECT_TRUE(ReadCommandLine({option, "script"}).continues) << option;
    EXPECT_EQ(ReadCommandLine({option, "script"}).script, "script") << option;
  }
}

TEST(CommandLine, EveryOtherOptionOfOneDashIsIgnored) {
  for (const char* option : {"-C", "-x", "-"})
    EXPECT_FALSE(ReadCommandLine({"script", option}).continues) << option;
}

TEST(CommandLine, OfSeveralScriptsTheFirstIsRead) {
  EXPECT_EQ(ReadCommandLine({"one", "two"}).script, "one");
  EXPECT_EQ(ReadCommandLine({"-c", "one", "two", "three"}).script, "one");
}

TEST(CommandLine, OnlyOptionsLeaveTheKeyboard) {
  EXPECT_EQ(ReadCommandLine({"-c", "-d"}).script, "");
}

TEST(CommandLine, WaitCountsAsNoWord) {
  EXPECT_TRUE(ReadCommandLine({"--wait"}).waits);
  EXPECT_EQ(ReadCommandLine({"--wait"}).script, "");
  EXPECT_EQ(ReadCommandLine({"-c", "--wait"}).script, "-c");
  EXPECT_TRUE(ReadCommandLine({"script", "--wait", "-c"}).continues);
}

TEST(CommandLine, GamesAndPatienceTakeANumberBehindThemInEitherForm) {
  const StartUp start = ReadCommandLine({"--games", "8", "script", "--patience=30"});
  EXPECT_EQ(start.games, 8);
  EXPECT_EQ(start.patience, 30);
  EXPECT_EQ(start.script, "script") << "a value behind an option is no script";
  EXPECT_EQ(start.error, "");
  EXPECT_EQ(ReadCommandLine({"script"}).games, 0);
}

TEST(CommandLine, NonsenseBehindANumberOptionIsTold) {
  for (const char* value : {"0", "-1", "513", "x", "", "2x", "99999999999"}) {
    EXPECT_EQ(ReadCommandLine({"--games", value}).error,
              std::string("--games takes a number from 1 to 512, not '") + value + "'.");
  }
  EXPECT_EQ(ReadCommandLine({"--games"}).error, "--games takes a number from 1 to 512.");
  EXPECT_EQ(ReadCommandLine({"--patience=0"}).error,
            "--patience takes a number from 1 to 100000, not '0'.");
}

TEST(CommandLine, AClusterTakesManyGamesAtATime) {
  const StartUp start =
      ReadCommandLine({"--cluster", "slurm", "--games=10000", "--cluster-options", "-p x --y"});
  if (!KnowsSchedulers()) {
    EXPECT_EQ(start.error, "--cluster is not known on this system.");
    return;
  }
  EXPECT_EQ(start.error, "");
  EXPECT_EQ(start.cluster, "slurm");
  EXPECT_EQ(start.cluster_options, "-p x --y");
  EXPECT_EQ(start.games, 10000);
  EXPECT_EQ(ReadCommandLine({"--games", "10001", "--cluster=slurm"}).error,
            "--games takes a number from 1 to 10000, not '10001'.");
  EXPECT_EQ(ReadCommandLine({"--games", "10000"}).error,
            "--games takes a number from 1 to 512, not '10000'.");
}

TEST(CommandLine, AClusterWithoutGamesOrWithAnotherWordIsRefused) {
  const auto error = [](const std::vector<std::string>& words) {
    return ReadCommandLine(words).error;
  };
  EXPECT_EQ(error({"--games", "4", "--cluster", "pbs"}),
            "--cluster knows 'slurm' alone, not 'pbs'.");
  EXPECT_EQ(error({"--cluster"}), "--cluster takes a value: SCHEDULER.");
  EXPECT_EQ(error({"--games", "4", "--cluster-options", "-p x"}),
            "--cluster-options goes with --cluster.");
  if (!KnowsSchedulers()) return;
  EXPECT_EQ(error({"--cluster", "slurm"}),
            "--cluster goes with --games: how many games are queued or played at a time.");
}

TEST(CommandLine, AWordOfTwoDashesThatIsNoOptionIsAnErrorThatNamesTheNearest) {
  const StartUp start = ReadCommandLine({"script", "--gmaes", "4"});
  EXPECT_EQ(
      start.error,
      "'--gmaes' is no option of tarvendo; the nearest one is --games. --help tells them all.");
  EXPECT_NE(ReadCommandLine({"--"}).error, "");
  EXPECT_NE(ReadCommandLine({"--waiting"}).error, "") << "alone it is no script either";
  EXPECT_NE(ReadCommandLine({"--Wait"}).error, "");
}

TEST(CommandLine, NearestIsWhatBeginsAlikeOrNeedsTheFewestLetters) {
  EXPECT_STREQ(NearestLongOption("--pat").word, "--patience");
  EXPECT_STREQ(NearestLongOption("--waiting").word, "--wait");
  EXPECT_STREQ(NearestLongOption("--hlep").word, "--help");
  EXPECT_STREQ(NearestLongOption("--Version=2").word, "--version");
  EXPECT_STREQ(NearestLongOption("--" + std::string(100000, 'p')).word, "--progress");
}

TEST(CommandLine, AFlagTakesNoValue) {
  EXPECT_EQ(ReadCommandLine({"--wait=yes"}).error, "--wait takes no value, not 'yes'.");
  EXPECT_EQ(ReadCommandLine({"--help="}).error, "--help takes no value, not ''.");
}

TEST(CommandLine, OfSeveralErrorsTheFirstIsTold) {
  EXPECT_EQ(ReadCommandLine({"--games", "x", "--foo", "--wait=1"}).error,
            "--games takes a number from 1 to 512, not 'x'.");
}

TEST(CommandLine, HelpTellsEveryOptionInLinesThatFitATerminal) {
  const std::string help = CommandLineHelp();
  for (const LongOption& option : LongOptions())
    EXPECT_NE(help.find(std::string("\n  ") + option.word), std::string::npos) << option.word;
  std::size_t begin = 0;
  for (std::size_t end = help.find('\n'); end != std::string::npos; end = help.find('\n', begin)) {
    EXPECT_LE(end - begin, 80U) << help.substr(begin, end - begin);
    begin = end + 1;
  }
  EXPECT_EQ(begin, help.size()) << "the last line ends with a line feed";
}

TEST(CommandLine, ATourneyToGoOnWithTakesNoScriptAndNoKeyboard) {
  EXPECT_EQ(ReadCommandLine({"--resume", "cup.ini"}).resume, "cup.ini");
  EXPECT_EQ(ReadCommandLine({"--games=2", "--resume=cup.ini", "--wait", "--exit-code"}).error, "");
  for (const char* word : {"go.txt", "-c", "-x"}) {
    EXPECT_EQ(ReadCommandLine({"--resume", "cup.ini", word}).error,
              std::string("--resume takes no script and no keyboard, so '") + word +
                  "' has no meaning beside it.");
  }
  EXPECT_EQ(ReadCommandLine({"--resume"}).error, "--resume takes a value: FILE.");
}

TEST(CommandLine, ProgressIsToldToWhoWaits) {
  EXPECT_EQ(ReadCommandLine({"go.txt", "--progress"}).error,
            "--progress goes with --wait or --resume.");
  EXPECT_EQ(ReadCommandLine({"go.txt", "--progress", "--wait"}).error, "");
  EXPECT_EQ(ReadCommandLine({"--resume=cup.ini", "--progress", "--log=all.log"}).error, "");
  EXPECT_EQ(ReadCommandLine({"--log"}).error, "--log takes a value: FILE.");
}

TEST(CommandLine, AnExitCodeIsToldToWhoWaits) {
  EXPECT_EQ(ReadCommandLine({"go.txt", "--exit-code"}).error, "--exit-code goes with --wait.");
  EXPECT_EQ(ReadCommandLine({"go.txt", "--exit-code", "--help"}).error, "");
  const StartUp waiting = ReadCommandLine({"go.txt", "--exit-code", "--wait"});
  EXPECT_EQ(waiting.error, "");
  EXPECT_TRUE(waiting.TellsEnd());
  EXPECT_FALSE(ReadCommandLine({"go.txt", "--wait"}).TellsEnd());
  EXPECT_TRUE(ReadCommandLine({"--resume", "cup.ini"}).TellsEnd());
}

}  // namespace
}  // namespace tarvendo
