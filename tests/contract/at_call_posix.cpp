// Runs a program and meddles with one of its system calls: kills the program at it, as nobody else
// can so exactly, or has it fail. Only the program's own threads are looked at, not what it starts.
//
//     at_call CALLS N kill|killafter|ERROR|ERROR+|count PROGRAM WORDS...
//
// CALLS is a kind of calls (below), and N tells which of them, counted over all threads from 1.
// There the program is killed, before the call is made or behind it; or the call, and with "+"
// every later one of its kind, fails with the error (ENOSPC, EIO, EACCES, EMFILE, EAGAIN); "count"
// lets all be made and writes into the file calls.txt how many there were. The exit code is that of
// the program; 9 when it was killed here, 99 when this machine does not let itself be used so.

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string>

namespace {

constexpr int kKilled = 9;
constexpr int kImpossible = 99;

using Calls = std::set<long>;

const std::map<std::string, Calls>& Kinds() {
  static const std::map<std::string, Calls> kinds = {
      {"write", {SYS_write, SYS_writev}},
      {"fsync", {SYS_fsync, SYS_fdatasync}},
      {"open", {SYS_openat}},
      {"truncate", {SYS_ftruncate}},
      {"lock", {SYS_flock}},
      {"fork", {SYS_clone, SYS_clone3}},
#ifdef SYS_rename
      {"rename", {SYS_rename, SYS_renameat, SYS_renameat2}},
      {"unlink", {SYS_unlink, SYS_unlinkat, SYS_rmdir}},
      {"mkdir", {SYS_mkdir, SYS_mkdirat}},
#else
      {"rename", {SYS_renameat, SYS_renameat2}},
      {"unlink", {SYS_unlinkat}},
      {"mkdir", {SYS_mkdirat}},
#endif
  };
  return kinds;
}

/// The calls of that kind; "any" is all of them, and with them what else a file goes through.
Calls CallsOf(const std::string& kind) {
  const auto found = Kinds().find(kind);
  if (found != Kinds().end()) return found->second;
  Calls all = {SYS_close, SYS_fchmod, SYS_fchown, SYS_lseek, SYS_fstat, SYS_read};
  for (const auto& [name, calls] : Kinds())
    all.insert(calls.begin(), calls.end());
  return kind == "any" ? all : Calls();
}

int ErrorOf(const std::string& name) {
  static const std::map<std::string, int> errors = {
      {"ENOSPC", ENOSPC}, {"EIO", EIO}, {"EACCES", EACCES}, {"EMFILE", EMFILE}, {"EAGAIN", EAGAIN}};
  const auto found = errors.find(name);
  return found == errors.end() ? 0 : found->second;
}

struct Deed {
  Calls calls;
  long number = 0;
  bool kills = false;
  bool is_behind = false;  ///< the kill comes when the call has been made
  int error = 0;
  bool is_for_good = false;
  bool only_counts = false;
};

Deed ReadDeed(char** words) {
  Deed deed;
  deed.calls = CallsOf(words[1]);
  deed.number = std::atol(words[2]);
  std::string what = words[3];
  deed.is_behind = what == "killafter";
  deed.kills = deed.is_behind || what == "kill";
  deed.only_counts = what == "count";
  deed.is_for_good = what.back() == '+';
  if (deed.is_for_good) what.pop_back();
  deed.error = ErrorOf(what);
  return deed;
}

/// Puts another call in the place of the one that is about to be made: one that there is not.
bool DropCall([[maybe_unused]] pid_t thread) {
#ifdef __x86_64__
  user_regs_struct registers{};
  if (ptrace(PTRACE_GETREGS, thread, nullptr, &registers) != 0) return false;
  registers.orig_rax = ~0ULL;
  return ptrace(PTRACE_SETREGS, thread, nullptr, &registers) == 0;
#else
  return false;
#endif
}

/// Makes the call that was dropped return an error.
void ReturnError([[maybe_unused]] pid_t thread, [[maybe_unused]] int error) {
#ifdef __x86_64__
  user_regs_struct registers{};
  ptrace(PTRACE_GETREGS, thread, nullptr, &registers);
  registers.rax = static_cast<unsigned long long>(-static_cast<long long>(error));
  ptrace(PTRACE_SETREGS, thread, nullptr, &registers);
#endif
}

class Tracer {
 public:
  Tracer(pid_t program, Deed deed) : program_(program), deed_(std::move(deed)) {}

  /// The exit code.
  int Follow() {
    while (true) {
      int status = 0;
      const pid_t thread = waitpid(-1, &status, __WALL);
      if (thread < 0) return kImpossible;
      if (WIFSTOPPED(status)) {
        Go(thread, status);
      } else if (thread == program_) {
        if (has_killed_) return kKilled;
        if (deed_.only_counts) WriteCount();
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
      }
    }
  }

 private:
  void Go(pid_t thread, int status) {
    const int signal = WSTOPSIG(status);
    int handed_on = 0;
    if (signal == (SIGTRAP | 0x80)) {
      StopAtCall(thread);
    } else if (signal == SIGSTOP && known_.insert(thread).second) {
      // A new thread begins so.
    } else if (signal != SIGTRAP) {
      handed_on = signal;
    }
    ptrace(PTRACE_SYSCALL, thread, nullptr, handed_on);
  }

  void StopAtCall(pid_t thread) {
    known_.insert(thread);
    __ptrace_syscall_info info{};
    if (ptrace(PTRACE_GET_SYSCALL_INFO, thread, sizeof info, &info) <= 0) return;
    if (info.op == PTRACE_SYSCALL_INFO_ENTRY) Enter(thread, static_cast<long>(info.entry.nr));
    if (info.op == PTRACE_SYSCALL_INFO_EXIT && meddled_.erase(thread) > 0) Leave(thread);
  }

  void Enter(pid_t thread, long call) {
    if (!deed_.calls.contains(call)) return;
    ++count_;
    const bool is_meant = count_ == deed_.number || (deed_.is_for_good && count_ > deed_.number);
    if (!is_meant || deed_.only_counts) return;
    if (deed_.kills && !deed_.is_behind) return Kill();
    if (deed_.kills || DropCall(thread)) meddled_.insert(thread);
  }

  void Leave(pid_t thread) {
    if (deed_.kills) return Kill();
    ReturnError(thread, deed_.error);
  }

  void WriteCount() const {
    std::FILE* const file = std::fopen("calls.txt", "w");
    if (file == nullptr) return;
    std::fprintf(file, "%ld\n", count_);
    std::fclose(file);
  }

  void Kill() {
    has_killed_ = true;
    kill(program_, SIGKILL);
  }

  pid_t program_;
  Deed deed_;
  long count_ = 0;
  bool has_killed_ = false;
  std::set<pid_t> known_;
  std::set<pid_t> meddled_;  ///< threads in the call that is meant
};

pid_t Start(char** words) {
  const pid_t program = fork();
  if (program != 0) return program;
  ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
  raise(SIGSTOP);
  execv(words[0], words);
  _exit(kImpossible);
}

}  // namespace

int main(int count, char** words) {
  if (count < 5) {
    std::fprintf(stderr, "usage: at_call CALLS N kill|killafter|ERROR|ERROR+ PROGRAM WORDS...\n");
    return kImpossible;
  }
  const Deed deed = ReadDeed(words);
  const bool has_sense = deed.kills || deed.only_counts || deed.error != 0;
  if (deed.calls.empty() || !has_sense) return kImpossible;
  const pid_t program = Start(words + 4);
  int status = 0;
  const bool is_there =
      program > 0 && waitpid(program, &status, 0) == program && WIFSTOPPED(status);
  constexpr long kOptions = PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACECLONE | PTRACE_O_EXITKILL;
  if (!is_there || ptrace(PTRACE_SETOPTIONS, program, nullptr, kOptions) != 0) return kImpossible;
  ptrace(PTRACE_SYSCALL, program, nullptr, nullptr);
  return Tracer(program, deed).Follow();
}
