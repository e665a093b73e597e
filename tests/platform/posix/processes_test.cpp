#include "platform/processes.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cerrno>
#include <cstdlib>

#include "platform/paths.h"
#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

std::string OutputOf(const std::string& line) {
  const ScratchDirectory directory;
  EXPECT_EQ(MakeProcesses()->RunShell(line, directory.File("out")), ShellOutcome::kRan);
  return directory.Bytes("out");
}

TEST(PosixProcesses, TheLineReachesTheShellUntouched) {
  EXPECT_EQ(OutputOf("printf '%s|' \"a  b\" 'c\\d' $((1+2)); echo e"), "a  b|c\\d|3|e\n");
  EXPECT_EQ(OutputOf("-x 2>/dev/null || echo no option of the shell"), "no option of the shell\n");
}

TEST(PosixProcesses, OnlyStandardOutputIsCaptured) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(OutputOf("echo error >&2; echo out"), "out\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "error\n");
}

TEST(PosixProcesses, NoChildIsLeftBehindACommand) {
  OutputOf("true");
  EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
  EXPECT_EQ(errno, ECHILD);
}

TEST(PosixProcesses, ALineThatTheHostCannotTakeIsNotStarted) {
  const std::string line(10 << 20, 'x');
  EXPECT_EQ(MakeProcesses()->RunShell(line, ""), ShellOutcome::kNotStarted);
}

TEST(PosixProcesses, QuotedWordsArriveAsTheyWere) {
  const auto processes = MakeProcesses();
  EXPECT_EQ(processes->ShellWords({"a b", "it's", ""}), "'a b' 'it'\\''s' ''");
  EXPECT_EQ(processes->ShellWords({"\\tmp\\x", "/y"}), "'/tmp/x' '/y'");
  EXPECT_EQ(processes->ShellWords({}), "");
  const std::string nasty = "$(id) `id` ;|&<>\"*?~#! '' %PATH% -n";
  EXPECT_EQ(OutputOf("printf %s " + processes->ShellWords({nasty})), nasty);
}

TEST(PosixProcessesDeathTest, TheExecutablesDirectoryIsSearchedLast) {
  EXPECT_EXIT(
      {
        setenv("PATH", "/usr/bin:/bin", 1);
        PrepareChildEnvironment();
        std::string directory = ExecutableDirectory();
        directory.back() = '\n';
        std::_Exit(OutputOf("echo $PATH") == "/usr/bin:/bin:" + directory ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace tarvendo
