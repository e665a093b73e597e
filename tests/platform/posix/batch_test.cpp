// Batch files run by the batch reader, from the outside: what their programs see and leave behind.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstdlib>
#include <mutex>
#include <set>
#include <vector>

#include "platform/faults.h"
#include "platform/paths.h"
#include "platform/posix/open_descriptors.h"
#include "platform/processes.h"
#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

/// Hears of the ends of this program's children, which somebody else reaps.
class ChildEnds {
 public:
  ChildEnds() {
    EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    struct sigaction action {};
    action.sa_sigaction = Note;
    action.sa_flags = SA_SIGINFO | SA_RESTART | SA_NOCLDSTOP;
    sigaction(SIGCHLD, &action, &before_);
  }
  ~ChildEnds() {
    sigaction(SIGCHLD, &before_, nullptr);
    close(ends[0]);
    close(ends[1]);
  }
  ChildEnds(const ChildEnds&) = delete;
  ChildEnds& operator=(const ChildEnds&) = delete;

  /// Waits for the next end. Returns the exit code, or 1000 and the signal.
  int Await() {
    int code = -1;
    while (read(ends[0], &code, sizeof(code)) < 0 && errno == EINTR) {
    }
    return code;
  }

 private:
  static void Note(int /*number*/, siginfo_t* end, void* /*context*/) {
    const int error_before = errno;
    const int code = end->si_code == CLD_EXITED ? end->si_status : 1000 + end->si_status;
    // In the child, which hears of its own children, the pipe is closed.
    [[maybe_unused]] const ssize_t written = write(ends[1], &code, sizeof(code));
    errno = error_before;
  }

  static inline std::array<int, 2> ends{};
  struct sigaction before_ {};
};

bool HasNoChildLeft() {
  return waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD;
}

class Batch : public testing::Test {
 protected:
  Batch() {
    unsetenv("COMSPEC");
    processes_->SetEndListener([this] {
      const std::lock_guard<std::mutex> guard(mutex_);
      ++ends_told_;
      told_.notify_all();
    });
  }

  /// Runs a batch file to its end and returns its exit code.
  int Run(const std::string& text) {
    directory_.Put("g1.BAT", text);
    const auto batch = processes_->StartBatch(directory_.File("g1.BAT"), nullptr);
    EXPECT_TRUE(batch.has_value());
    AwaitEnd(*batch);
    EXPECT_TRUE(HasNoChildLeft());
    return ends_.Await();
  }

  /// Until the end has been told.
  void AwaitEnd(BatchId batch) {
    std::unique_lock<std::mutex> held(mutex_);
    told_.wait(held, [&] { return !processes_->IsRunning(batch); });
  }

  /// A program that writes its words into the file "words", each on a line of its own.
  std::string MakeWordWriter(const std::string& name) {
    return MakeProgram(name, "printf '<%s>\\n' \"$@\" >> " + Host("words") + "\n");
  }

  std::string MakeProgram(const std::string& name, const std::string& script) {
    directory_.Put(name, "#!/bin/sh\n" + script);
    std::filesystem::permissions(Host(name), std::filesystem::perms::owner_all);
    return Host(name);
  }

  std::string Host(const std::string& name) const { return HostPath(directory_.File(name)); }

  ScratchDirectory directory_;
  ChildEnds ends_;
  std::mutex mutex_;
  std::condition_variable told_;
  int ends_told_ = 0;  ///< guarded by mutex_
  std::unique_ptr<Processes> processes_ = MakeProcesses();
};

TEST_F(Batch, TheProgramGetsItsWordsAsTheyStand) {
  MakeWordWriter("win board");
  EXPECT_EQ(Run("@rem Round 1\n@if NOT EXIST g1.PGN \"" + directory_.File("win board") +
                "\"  /sgf=c:\\t\\g1.PGN /scp='\"b e.exe\" xboard' $HOME `id` ; | & > ' "),
            0);
  EXPECT_EQ(directory_.Bytes("words"),
            "</sgf=c:\\t\\g1.PGN>\n</scp=\"b e.exe\" xboard>\n<$HOME>\n<`id`>\n<;>\n<|>\n<&>\n<>>\n"
            "< >\n");
}

TEST_F(Batch, StepsAreDoneOneAfterTheOther) {
  const std::string program = MakeWordWriter("p");
  directory_.Put("there", "");
  EXPECT_EQ(Run(program + " 1\nif exist " + Host("there") + " " + program + " 2\ndel " +
                directory_.File("there") + "\nif exist " + directory_.File("there") + " " +
                program + " 3\nif not exist " + Host("there") + " " + program + " 4\n"),
            0);
  EXPECT_EQ(directory_.Bytes("words"), "<1>\n<2>\n<4>\n");
  EXPECT_EQ(directory_.Bytes("there"), "(missing)");
}

TEST_F(Batch, ANameCannotBeRunAsACommand) {
  directory_.Put("a;touch b", "");
  EXPECT_EQ(Run("del '" + directory_.File("a;touch b") + "'\n"), 0);
  EXPECT_EQ(directory_.Bytes("a;touch b"), "(missing)");
  EXPECT_EQ(directory_.Bytes("b"), "(missing)");
}

TEST_F(Batch, ADirectoryIsNotDeleted) {
  std::filesystem::create_directory(Host("d"));
  EXPECT_EQ(Run("del " + directory_.File("d")), 1);
  EXPECT_TRUE(std::filesystem::exists(Host("d")));
}

TEST_F(Batch, ThePathStopsAtNoNulByte) {
  directory_.Put("kept", "text");
  const std::string nul(1, '\0');
  Run("del " + directory_.File("kept") + nul + "x\n" + MakeWordWriter("p") + nul + "x y\n");
  EXPECT_EQ(directory_.Bytes("kept"), "text");
  EXPECT_EQ(directory_.Bytes("words"), "(missing)");
}

TEST_F(Batch, AMissingProgramIsSaidAndGives127) {
  testing::internal::CaptureStderr();
  EXPECT_EQ(Run("no-such-program /cp"), 127);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "Can't run the program 'no-such-program': it was not found.\n");
}

TEST_F(Batch, AfterAMissingProgramTheNextStepIsDone) {
  const std::string program = MakeWordWriter("p");
  testing::internal::CaptureStderr();
  EXPECT_EQ(Run("no-such-program\n" + program + " 1\n"), 0);
  EXPECT_NE(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(directory_.Bytes("words"), "<1>\n");
}

TEST_F(Batch, ABareProgramIsLookedForInTheCurrentDirectoryFirst) {
  MakeWordWriter("printf");
  const auto before = std::filesystem::current_path();
  std::filesystem::current_path(directory_.Path());
  EXPECT_EQ(Run("printf here"), 0);
  std::filesystem::current_path(before);
  EXPECT_EQ(directory_.Bytes("words"), "<here>\n");
}

TEST_F(Batch, ABareProgramIsLookedForBesideTheExecutable) {
  const std::string name = "beside-" + std::filesystem::path(directory_.Path()).filename().string();
  std::filesystem::create_symlink(MakeWordWriter("p"), ExecutableDirectory() + name);
  EXPECT_EQ(Run(name + " beside"), 0);
  std::filesystem::remove(ExecutableDirectory() + name);
  EXPECT_EQ(directory_.Bytes("words"), "<beside>\n");
}

TEST_F(Batch, ABareProgramIsLookedForInTheSearchPathLast) {
  EXPECT_EQ(Run("touch " + Host("touched")), 0);
  EXPECT_EQ(directory_.Bytes("touched"), "");
}

TEST_F(Batch, TheProgramReadsNothing) {
  const std::string program = MakeProgram("p", "readlink /proc/$$/fd/0 > " + Host("input") + "\n");
  EXPECT_EQ(Run(program), 0);
  EXPECT_EQ(directory_.Bytes("input"), "/dev/null\n");
}

TEST_F(Batch, ARunningGameIsSeenAndReapedWhenItEnds) {
  const std::string program = MakeProgram("p", "echo $$ > " + Host("out") + "; cat " + Host("in"));
  ASSERT_EQ(mkfifo(Host("in").c_str(), 0600), 0);
  ASSERT_EQ(mkfifo(Host("out").c_str(), 0600), 0);
  directory_.Put("g1.BAT", program);
  const auto batch = processes_->StartBatch(directory_.File("g1.BAT"), nullptr);
  ASSERT_TRUE(batch.has_value());
  const pid_t child = std::atoi(directory_.Bytes("out").c_str());
  EXPECT_TRUE(processes_->IsRunning(*batch));
  EXPECT_EQ(getpgid(child), child) << "Ctrl-C would end the game";
  close(open(Host("in").c_str(), O_WRONLY));
  AwaitEnd(*batch);
  EXPECT_EQ(ends_.Await(), 0);
  EXPECT_TRUE(HasNoChildLeft());
}

TEST_F(Batch, EveryGameIsReapedAndToldWithoutAnotherStart) {
  directory_.Put("g1.BAT", "true");
  Run("true");  // Now the thread that watches them is there.
  const auto open_before = OpenDescriptors();
  std::vector<BatchId> batches;
  for (int game = 0; game < 5; ++game) {
    const auto batch = processes_->StartBatch(directory_.File("g1.BAT"), nullptr);
    ASSERT_TRUE(batch.has_value());
    batches.push_back(*batch);
  }
  for (const BatchId batch : batches) {
    AwaitEnd(batch);
  }
  EXPECT_TRUE(HasNoChildLeft());
  EXPECT_EQ(std::set<BatchId>(batches.begin(), batches.end()).size(), 5U);
  EXPECT_EQ(OpenDescriptors(), open_before);
}

TEST_F(Batch, ABatchOfRemarksEndsAtOnce) {
  EXPECT_EQ(Run("@rem Round 1\n"), 0);
}

TEST_F(Batch, ThePlayersProgramsHaveTheirSignalsAtDefault) {
  const FaultGuard guard;
  const std::string program = MakeProgram("p", "kill -PIPE $$; echo > " + Host("alive") + "\n");
  EXPECT_EQ(Run(program + "\ntrue " + program), 0);
  EXPECT_EQ(Run(program), 1000 + SIGPIPE);
  EXPECT_EQ(directory_.Bytes("alive"), "(missing)");
  const std::string line = processes_->ShellWords({program});
  EXPECT_EQ(processes_->RunShell(line, ""), ShellOutcome::kRan);
  EXPECT_EQ(directory_.Bytes("alive"), "(missing)");
}

TEST_F(Batch, TheUsersOwnCommandProcessorIsUsed) {
  setenv("COMSPEC", MakeWordWriter("processor").c_str(), 1);
  EXPECT_EQ(Run("no-such-program"), 0);
  unsetenv("COMSPEC");
  EXPECT_EQ(directory_.Bytes("words"), "</c>\n<" + Host("g1.BAT") + ">\n");
}

TEST_F(Batch, ACommandProcessorThatIsMissingStartsNothing) {
  setenv("COMSPEC", "no-such-processor", 1);
  directory_.Put("g1.BAT", "true");
  EXPECT_FALSE(processes_->StartBatch(directory_.File("g1.BAT"), nullptr).has_value());
  unsetenv("COMSPEC");
  EXPECT_TRUE(HasNoChildLeft());
}

}  // namespace
}  // namespace tarvendo
