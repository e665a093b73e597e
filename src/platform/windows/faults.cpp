// How a machine fault becomes something that can be caught: each guarded call leaves a landing
// point (the compiler's own setjmp) in its thread. The host asks our handler what to do about a
// fault, and it answers: go on in LandAfterFault, on the stack of the innermost guarded call. So
// nothing is unwound, and an overflowed stack is left at once.
#include "platform/faults.h"

#include <malloc.h>
#include <signal.h>
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdint>

#include "platform/ending_thread.h"
#include "platform/windows/termination.h"
#include "platform/windows/watchdog.h"

namespace tarvendo {
namespace {

constexpr std::array<DWORD, 9> kFaults = {
    EXCEPTION_ACCESS_VIOLATION,   EXCEPTION_IN_PAGE_ERROR,      EXCEPTION_DATATYPE_MISALIGNMENT,
    EXCEPTION_INT_DIVIDE_BY_ZERO, EXCEPTION_INT_OVERFLOW,       EXCEPTION_ILLEGAL_INSTRUCTION,
    EXCEPTION_PRIV_INSTRUCTION,   EXCEPTION_FLT_DIVIDE_BY_ZERO, EXCEPTION_STACK_OVERFLOW};

struct Landing {
  std::array<void*, 5> point;  ///< as the compiler's setjmp asks for
  char* free_stack;            ///< the stack is not in use from here down
  void* exception_list;        ///< as it was when the guarded call began
  bool stack_overflowed;
  Landing* outer;
};

// A slot of the host's own, since the compiler's thread_local takes memory when it is first read,
// and the handler of a fault must not.
const DWORD landing_slot = TlsAlloc();

// In the 32-bit program the system keeps the list of its own exception handlers on the stack, and
// the thread must find it as it was in the frame where it lands. The 64-bit program has no such
// list.
#ifdef _WIN64
void* ExceptionList() {
  return nullptr;
}
void SetExceptionList(void* /*list*/) {}
#else
void* ExceptionList() {
  void* list = nullptr;
  __asm__ volatile("movl %%fs:0, %0" : "=r"(list));
  return list;
}
void SetExceptionList(void* list) {
  __asm__ volatile("movl %0, %%fs:0" : : "r"(list) : "memory");
}
#endif

Landing* InnermostLanding() {
  return static_cast<Landing*>(TlsGetValue(landing_slot));
}

[[noreturn]] void LandAfterFault() {
  Landing* const landing = InnermostLanding();
  SetExceptionList(landing->exception_list);
  __builtin_longjmp(landing->point.data(), 1);
}

/// Lets the thread go on in LandAfterFault, as if it had just been called.
void Redirect(CONTEXT& context, const Landing& landing) {
  const auto aligned = reinterpret_cast<std::uintptr_t>(landing.free_stack) & ~std::uintptr_t{63};
  const std::uintptr_t after_call = aligned - sizeof(void*);
#ifdef _WIN64
  context.Rsp = after_call;
  context.Rip = reinterpret_cast<std::uintptr_t>(&LandAfterFault);
#else
  context.Esp = after_call;
  context.Eip = reinterpret_cast<std::uintptr_t>(&LandAfterFault);
#endif
}

LONG CALLBACK OnFault(EXCEPTION_POINTERS* exception) {
  const DWORD code = exception->ExceptionRecord->ExceptionCode;
  Landing* const landing = InnermostLanding();
  if (landing == nullptr || std::find(kFaults.begin(), kFaults.end(), code) == kFaults.end()) {
    return EXCEPTION_CONTINUE_SEARCH;
  }
  landing->stack_overflowed = code == EXCEPTION_STACK_OVERFLOW;
  Redirect(*exception->ContextRecord, *landing);
  return EXCEPTION_CONTINUE_EXECUTION;
}

/// abort is no exception of the host's. Outside every guarded call it goes on and ends the process.
void OnAbort(int /*number*/) {
  if (InnermostLanding() == nullptr) return;
  signal(SIGABRT, OnAbort);
  LandAfterFault();
}

/// The frame in which the landing point lies must not hold anything that changes afterwards.
[[gnu::noinline]] bool CallWithLanding(Landing& landing, const std::function<void()>& body) {
  if (__builtin_setjmp(landing.point.data()) != 0) return false;
  try {
    body();
    return true;
  } catch (...) {
    return false;
  }
}

// The host keeps it for us; there is one guard at a time.
void* fault_handler = nullptr;

}  // namespace

FaultGuard::FaultGuard() {
  fault_handler = AddVectoredExceptionHandler(1, OnFault);
  signal(SIGABRT, OnAbort);
  PrepareWatchdog();
  EndOnThisThread();
  TerminationEvent();
  HearConsoleEvents(true);
}

FaultGuard::~FaultGuard() {
  EndOnAnyThread();
  HearConsoleEvents(false);
  signal(SIGABRT, SIG_DFL);
  RemoveVectoredExceptionHandler(fault_handler);
}

bool CallGuarded(const std::function<void()>& body) {
  ULONG kept_for_the_handler = 65536;
  SetThreadStackGuarantee(&kept_for_the_handler);
  // Two kilobytes are more than the frame of CallWithLanding, and less than a page of the stack.
  char* const free_stack = static_cast<char*>(__builtin_frame_address(0)) - 2048;
  Landing landing{{}, free_stack, ExceptionList(), false, InnermostLanding()};
  TlsSetValue(landing_slot, &landing);
  const bool returned = CallWithLanding(landing, body);
  TlsSetValue(landing_slot, landing.outer);
  if (landing.stack_overflowed) _resetstkoflw();
  return returned;
}

}  // namespace tarvendo
