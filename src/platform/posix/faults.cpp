// How a machine fault becomes something that can be caught: each guarded call leaves a landing
// point (sigsetjmp) in its thread, and the signal handler of a fault jumps to the innermost one.
// The handler runs on a stack of its own, or an overflow of the thread's stack could not be handled
// at all.
#include "platform/faults.h"

#include <pthread.h>
#include <setjmp.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "platform/ending_thread.h"
#include "platform/posix/ctrl_c.h"
#include "platform/posix/termination.h"

namespace tarvendo {
namespace {

constexpr std::array kFaults = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr std::array kRequests = {SIGTERM, SIGHUP, SIGINT};

struct Landing {
  sigjmp_buf point;
  Landing* outer;
};

thread_local Landing* innermost_landing = nullptr;

// A signal handler reaches nothing but globals.
std::array<struct sigaction, kFaults.size()> actions_before{};
pthread_t console_thread{};

void PassFaultOn(int fault) {
  const auto position = std::find(kFaults.begin(), kFaults.end(), fault) - kFaults.begin();
  sigaction(fault, &actions_before[static_cast<std::size_t>(position)], nullptr);
  raise(fault);
}

/// Whether the signal tells of no fault of this thread but was sent to the process as a whole.
bool WasSentToProcess(const siginfo_t& info) {
  return info.si_code == SI_USER || info.si_code == SI_QUEUE;
}

/// What somebody sends to the process reaches any of its threads, also one that has just been made
/// and guards nothing yet. It is meant for the console thread, which saves the tourney; the others
/// are sound and go on.
void OnFault(int fault, siginfo_t* info, void* /*context*/) {
  if (WasSentToProcess(*info)) {
    pthread_kill(console_thread, fault);
  } else if (innermost_landing == nullptr) {
    PassFaultOn(fault);
  } else {
    siglongjmp(innermost_landing->point, 1);
  }
}

void OnRequest(int /*request*/) {
  NoteTermination();
}

/// The key may mean something else; what another program sends never does.
void OnInterrupt(int request, siginfo_t* info, void* /*context*/) {
  if (info->si_code == SI_KERNEL && TakeCtrlC(PressTime())) return;
  signal(request, SIG_DFL);
  NoteTermination();
}

void OnDeadline(int /*alarm*/) {
  _exit(1);
}

void CatchFaults() {
  struct sigaction action {};
  action.sa_sigaction = OnFault;
  action.sa_flags = SA_ONSTACK | SA_SIGINFO;
  sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < kFaults.size(); ++i) {
    sigaction(kFaults[i], &action, &actions_before[i]);
  }
}

/// Whoever sends SIGTERM or SIGINT twice means it: the second one ends the process at once. A
/// closed terminal sends SIGHUP twice by itself (the kernel and the shell), so that one stays
/// caught.
void CatchRequest(int request) {
  struct sigaction action {};
  sigaction(request, nullptr, &action);
  if (action.sa_handler == SIG_IGN) return;  // nohup, or a shell's background job
  action = {};
  if (request == SIGINT) {
    action.sa_sigaction = OnInterrupt;
    action.sa_flags = SA_RESTART | SA_SIGINFO;
  } else {
    action.sa_handler = OnRequest;
    action.sa_flags = SA_RESTART | (request == SIGHUP ? 0 : static_cast<int>(SA_RESETHAND));
  }
  sigemptyset(&action.sa_mask);
  sigaction(request, &action, nullptr);
}

void ReleaseRequest(int request) {
  struct sigaction action {};
  sigaction(request, nullptr, &action);
  const bool is_ours = (action.sa_flags & SA_SIGINFO) != 0 ? action.sa_sigaction == OnInterrupt
                                                           : action.sa_handler == OnRequest;
  if (is_ours) signal(request, SIG_DFL);
}

/// Gives the thread a stack for its signal handlers as long as it lives, unless it has one already.
class HandlerStack {
 public:
  HandlerStack() {
    if (sigaltstack(nullptr, &before_) != 0) return;
    if ((before_.ss_flags & SS_DISABLE) == 0 && before_.ss_size >= kSize / 2) return;
    memory_.resize(kSize);
    stack_t own{};
    own.ss_sp = memory_.data();
    own.ss_size = memory_.size();
    sigaltstack(&own, nullptr);
  }
  ~HandlerStack() {
    if (!memory_.empty()) sigaltstack(&before_, nullptr);
  }
  HandlerStack(const HandlerStack&) = delete;
  HandlerStack& operator=(const HandlerStack&) = delete;

 private:
  static constexpr std::size_t kSize = 65536;
  std::vector<char> memory_;
  stack_t before_{};
};

/// The frame in which sigsetjmp is called must not hold anything that changes afterwards.
[[gnu::noinline]] bool CallWithLanding(Landing& landing, const std::function<void()>& body) {
  if (sigsetjmp(landing.point, 1) != 0) return false;
  try {
    body();
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace

FaultGuard::FaultGuard() {
  console_thread = pthread_self();
  EndOnThisThread();
  TerminationDescriptor();  // Made here, for a signal handler cannot make it.
  CatchFaults();
  for (const int request : kRequests) {
    CatchRequest(request);
  }
  // Writing to a console that was closed must not end a tourney that is being played.
  signal(SIGPIPE, SIG_IGN);
}

FaultGuard::~FaultGuard() {
  EndOnAnyThread();
  for (std::size_t i = 0; i < kFaults.size(); ++i) {
    sigaction(kFaults[i], &actions_before[i], nullptr);
  }
  for (const int request : kRequests) {
    ReleaseRequest(request);
  }
}

bool CallGuarded(const std::function<void()>& body) {
  const HandlerStack handler_stack;
  Landing landing{{}, innermost_landing};
  innermost_landing = &landing;
  const bool returned = CallWithLanding(landing, body);
  innermost_landing = landing.outer;
  return returned;
}

void EndProcessAfter(unsigned seconds) {
  struct sigaction action {};
  action.sa_handler = OnDeadline;
  sigemptyset(&action.sa_mask);
  sigaction(SIGALRM, &action, nullptr);
  sigset_t deadline;
  sigemptyset(&deadline);
  sigaddset(&deadline, SIGALRM);
  pthread_sigmask(SIG_UNBLOCK, &deadline, nullptr);
  alarm(std::max(seconds, 1U));
}

}  // namespace tarvendo
