#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <list>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "platform/posix/descriptor.h"
#include "platform/posix/file_lock.h"
#include "platform/posix/wake_up.h"
#include "platform/processes.h"

namespace tarvendo {

/// The started batch files. A thread of its own waits for their ends without using the processor,
/// reaps them, tells the listener, and ends those that are to be ended. Any thread, but for Start.
class BatchWatch {
 public:
  /// What is asked to end gets `grace` for it.
  explicit BatchWatch(std::chrono::milliseconds grace) : grace_(grace) {}
  /// The batch files go on; but what is to be ended is killed at once.
  ~BatchWatch();
  BatchWatch(const BatchWatch&) = delete;
  BatchWatch& operator=(const BatchWatch&) = delete;

  /// Starts the thread unless it runs already: before the first Add, by one thread at a time. False
  /// when the host has none left to give.
  bool Start();

  /// `child` has just been started, leads a process group, and got the lock of that file, if any.
  BatchId Add(pid_t child, std::optional<FileIdentity> lock);

  bool IsRunning(BatchId batch);

  /// Processes::EndBatch: whatever is in the group or holds the lock.
  void End(BatchId batch);

  /// Processes::EndHolders; the thread must have been started.
  void EndHolders(const FileIdentity& lock);

  void SetListener(std::function<void()> on_end);

  /// To be held while a child process is started: until it has closed what is not for it, it holds
  /// every lock of this program, and would be ended with the one that it was not given.
  std::mutex& Starting() { return starting_; }

 private:
  using Time = std::chrono::steady_clock::time_point;

  /// What a batch file was started with; kept as long as something of its group goes on.
  struct Origin {
    pid_t group;  ///< 0 for none
    std::optional<FileIdentity> lock;
    bool is_running;
    bool is_ending = false;  ///< it was asked to end, and the thread sees to that
  };
  struct Running {
    BatchId id;
    pid_t child;
    Descriptor end;  ///< readable when it has ended; not open where the kernel knows no such thing
  };
  /// A batch file that was asked to end.
  struct Ending {
    BatchId id;
    int kills;  ///< how often it has been killed
    Time due;   ///< when it is to be killed (again)
  };

  void Watch();
  /// Waits for something to do. False when the thread is to end.
  bool Await();
  int WaitingTime() const;
  void Reap();
  void AskThoseToEnd();
  void KillThoseDue(bool at_once);
  Origin OriginOf(BatchId batch);
  /// Forgets the batch files of which nothing is left: there may be very many in the end.
  void ForgetThoseOver();
  void NoteEndingDone(BatchId batch);
  bool Signal(const Origin& origin, int signal);

  const std::chrono::milliseconds grace_;
  std::mutex starting_;

  std::mutex mutex_;
  bool is_over_ = false;  ///< guarded by mutex_, like those up to asked_
  BatchId last_id_ = 0;
  std::map<BatchId, Origin> origins_;
  std::list<Running> running_;  ///< only the thread takes one out
  std::vector<BatchId> asked_;  ///< to be ended, not yet seen by the thread

  std::mutex telling_;
  std::function<void()> listener_;  ///< guarded by telling_

  std::vector<Ending> endings_;  ///< the thread's own

  WakeUp wake_up_;
  std::thread thread_;
};

}  // namespace tarvendo
