#include "runner/runner.h"

#include <system_error>

#include "pairing/bracket_list.h"
#include "platform/clock.h"
#include "platform/faults.h"
#include "tourney/tourney_file.h"

namespace tarvendo {

using std::chrono::milliseconds;

namespace {

constexpr milliseconds kSignalPoll{500};

}  // namespace

Runner::Runner(SharedTourney& shared, HeldWithTourney<TourneyFile>& file,
               HeldWithTourney<BracketList>& brackets, Host& host)
    : shared_(shared),
      host_(host),
      games_(shared, file, brackets, host),
      timer_(shared, host.clock) {}

Runner::~Runner() {
  {
    const std::lock_guard guard(mutex_);
    terminate_ = true;
  }
  changed_.notify_all();
  if (game_thread_.joinable()) game_thread_.join();
  if (timer_thread_.joinable()) timer_thread_.join();
}

bool Runner::StartThreads() {
  try {
    game_thread_ = std::thread([this] { RunPasses([this] { return PlayPass(); }); });
    timer_thread_ = std::thread([this] { RunPasses([this] { return timer_.Pass(); }); });
  } catch (const std::system_error&) {
    const std::lock_guard guard(mutex_);
    has_died_ = true;
    return false;
  }
  return true;
}

milliseconds Runner::PlayPass() {
  std::uint64_t pass = 0;
  {
    const std::lock_guard guard(mutex_);
    pass = ++passes_begun_;
  }
  const std::uint64_t changes = shared_.Take()->Switch().Changes();
  const milliseconds wait = games_.Pass();
  if (games_.IsIdle()) {
    const std::lock_guard guard(mutex_);
    idle_pass_ = pass;
    idle_changes_ = changes;
    changed_.notify_all();
  }
  return wait;
}

void Runner::RunPasses(const std::function<milliseconds()>& pass) {
  Clock& clock = host_.clock;
  const auto is_over = [this] { return terminate_; };
  const bool ended_well = CallGuarded([&] {
    milliseconds wait{0};
    do {
      wait = pass();
      std::unique_lock guard(mutex_);
      if (clock.Wait(changed_, guard, wait, is_over)) return;
    } while (true);
  });
  if (ended_well) return;
  shared_.Break();
  RequestTermination();
  const std::lock_guard guard(mutex_);
  has_died_ = true;
  changed_.notify_all();
}

void Runner::AwaitIdle() {
  std::unique_lock guard(mutex_);
  const std::uint64_t asked = passes_begun_;
  const auto is_done = [&] {
    // A pass that was idle before the timer or the user moved the switch says nothing of what comes
    // now.
    if (has_died_ || TerminationRequested()) return true;
    if (idle_pass_ <= asked) return false;
    const Hold hold = shared_.Take();
    return idle_changes_ == hold->Switch().Changes() && hold->Switch().Get().start_time == 0;
  };
  // A signal handler cannot notify anybody, so the request to end is looked for now and then.
  Clock& clock = host_.clock;
  while (!clock.Wait(changed_, guard, kSignalPoll, is_done)) {
  }
}

}  // namespace tarvendo
