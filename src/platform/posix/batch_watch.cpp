#include "platform/posix/batch_watch.h"

#include <poll.h>
#include <signal.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/posix/child_end.h"

namespace tarvendo {
namespace {

using std::chrono::milliseconds;

/// What starts others while it is killed is killed again.
constexpr milliseconds kBetweenKills{100};
constexpr int kMostKills = 20;
/// How often children are looked at whose end the kernel does not tell.
constexpr int kLookMilliseconds = 50;

/// The C library of older systems has no function for it. Linux 5.3 and later.
Descriptor OpenProcess(pid_t process) {
  return Descriptor(static_cast<int>(syscall(SYS_pidfd_open, process, 0)));
}

bool HasProcess(pid_t number) {
  return kill(number, 0) == 0 || errno != ESRCH;
}

/// Signals a process only if it is (still) the one that holds the lock.
bool SignalHolder(pid_t process, const FileIdentity& lock, int signal) {
  const Descriptor held = OpenProcess(process);
  if (!HoldsLock(process, lock)) return false;
  if (!held.IsOpen()) return kill(process, signal) == 0;
  return syscall(SYS_pidfd_send_signal, held.Get(), signal, nullptr, 0) == 0;
}

}  // namespace

BatchWatch::~BatchWatch() {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    is_over_ = true;
  }
  wake_up_.Wake();
  if (thread_.joinable()) thread_.join();
}

bool BatchWatch::Start() {
  if (thread_.joinable()) return true;
  if (!wake_up_.IsOpen()) return false;
  try {
    thread_ = std::thread([this] { Watch(); });
  } catch (const std::system_error&) {
    return false;
  }
  return true;
}

BatchId BatchWatch::Add(pid_t child, std::optional<FileIdentity> lock) {
  const std::lock_guard<std::mutex> guard(mutex_);
  ForgetThoseOver();
  const BatchId id = ++last_id_;
  origins_.emplace(id, Origin{child, lock, true});
  running_.push_back(Running{id, child, OpenProcess(child)});
  wake_up_.Wake();
  return id;
}

bool BatchWatch::IsRunning(BatchId batch) {
  const std::lock_guard<std::mutex> guard(mutex_);
  const auto found = origins_.find(batch);
  return found != origins_.end() && found->second.is_running;
}

void BatchWatch::End(BatchId batch) {
  const std::lock_guard<std::mutex> guard(mutex_);
  const auto found = origins_.find(batch);
  if (found == origins_.end()) return;
  found->second.is_ending = true;
  asked_.push_back(batch);
  wake_up_.Wake();
}

void BatchWatch::EndHolders(const FileIdentity& lock) {
  const std::lock_guard<std::mutex> guard(mutex_);
  const BatchId id = ++last_id_;
  origins_.emplace(id, Origin{0, lock, false, true});
  asked_.push_back(id);
  wake_up_.Wake();
}

void BatchWatch::SetListener(std::function<void()> on_end) {
  const std::lock_guard<std::mutex> guard(telling_);
  listener_ = std::move(on_end);
}

void BatchWatch::Watch() {
  while (Await()) {
    Reap();
    AskThoseToEnd();
    KillThoseDue(false);
  }
  AskThoseToEnd();
  KillThoseDue(true);
}

bool BatchWatch::Await() {
  std::vector<pollfd> awaited{{wake_up_.Get(), POLLIN, 0}};
  int milliseconds_left = WaitingTime();
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    if (is_over_) return false;
    for (const Running& batch : running_) {
      if (batch.end.IsOpen()) {
        awaited.push_back({batch.end.Get(), POLLIN, 0});
      } else {
        milliseconds_left = milliseconds_left < 0 ? kLookMilliseconds
                                                  : std::min(milliseconds_left, kLookMilliseconds);
      }
    }
  }
  poll(awaited.data(), awaited.size(), milliseconds_left);
  wake_up_.Drain();
  const std::lock_guard<std::mutex> guard(mutex_);
  return !is_over_;
}

/// In milliseconds; negative: as long as nobody wakes the thread.
int BatchWatch::WaitingTime() const {
  int time = -1;
  const Time now = std::chrono::steady_clock::now();
  for (const Ending& ending : endings_) {
    const auto left = std::chrono::ceil<milliseconds>(ending.due - now).count();
    const int wait = static_cast<int>(std::max<std::int64_t>(left, 0));
    time = time < 0 ? wait : std::min(time, wait);
  }
  return time;
}

void BatchWatch::Reap() {
  bool any_has_ended = false;
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    running_.remove_if([&](const Running& batch) {
      if (!HasEnded(batch.child)) return false;
      origins_.at(batch.id).is_running = false;
      any_has_ended = true;
      return true;
    });
  }
  const std::lock_guard<std::mutex> guard(telling_);
  if (any_has_ended && listener_) listener_();
}

void BatchWatch::AskThoseToEnd() {
  std::vector<BatchId> asked;
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    asked.swap(asked_);
  }
  for (const BatchId id : asked) {
    if (!Signal(OriginOf(id), SIGTERM)) {
      NoteEndingDone(id);
      continue;
    }
    endings_.push_back({id, 0, std::chrono::steady_clock::now() + grace_});
  }
}

void BatchWatch::KillThoseDue(bool at_once) {
  const Time now = std::chrono::steady_clock::now();
  const auto is_done = [&](Ending& ending) {
    if (ending.due > now && !at_once) return false;
    ending.due = now + kBetweenKills;
    if (Signal(OriginOf(ending.id), SIGKILL) && ++ending.kills < kMostKills) return false;
    NoteEndingDone(ending.id);
    return true;
  };
  endings_.erase(std::remove_if(endings_.begin(), endings_.end(), is_done), endings_.end());
}

BatchWatch::Origin BatchWatch::OriginOf(BatchId batch) {
  const std::lock_guard<std::mutex> guard(mutex_);
  return origins_.at(batch);
}

void BatchWatch::ForgetThoseOver() {
  std::erase_if(origins_, [](const auto& entry) {
    const Origin& origin = entry.second;
    const bool has_group = origin.group != 0 && kill(-origin.group, 0) == 0;
    return !origin.is_running && !origin.is_ending && !has_group;
  });
}

void BatchWatch::NoteEndingDone(BatchId batch) {
  const std::lock_guard<std::mutex> guard(mutex_);
  origins_.at(batch).is_ending = false;
}

/// Returns whether anything was there to be signalled. Only this thread reaps, so the group of a
/// child that was not reaped is its own; later it is so as long as no process has its number, since
/// a number is not given away while a group bears it.
bool BatchWatch::Signal(const Origin& origin, int signal) {
  bool any = false;
  const bool is_its_own = origin.is_running || !HasProcess(origin.group);
  if (origin.group != 0 && is_its_own) any = kill(-origin.group, signal) == 0;
  if (!origin.lock) return any;
  const std::lock_guard<std::mutex> guard(starting_);
  for (const pid_t holder : LockHolders(*origin.lock)) {
    const bool is_signalled = getpgid(holder) == origin.group;
    any = (!is_signalled && SignalHolder(holder, *origin.lock, signal)) || any;
  }
  return any;
}

}  // namespace tarvendo
