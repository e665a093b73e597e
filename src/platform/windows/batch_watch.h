#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>

#include "platform/processes.h"
#include "platform/windows/handle.h"

namespace tarvendo {

/// The started batch files. A thread of the host's tells of their ends. Any thread.
class BatchWatch {
 public:
  BatchWatch();
  /// The batch files go on.
  ~BatchWatch();
  BatchWatch(const BatchWatch&) = delete;
  BatchWatch& operator=(const BatchWatch&) = delete;

  /// `process` has just been started; whatever it starts belongs to `job`, if there is one.
  BatchId Add(Handle process, Handle job);

  bool IsRunning(BatchId batch);

  /// Processes::EndBatch: ends the job. Nobody is asked first: a console program that can speak to
  /// windows (user32.dll) is no longer told when Windows goes down, and would lose the tourney.
  void End(BatchId batch);

  void SetListener(std::function<void()> on_end);

 private:
  struct Batch;

  /// What the host's thread calls.
  void NoteEnd(Batch& batch);

  /// Forgets the batch files of which nothing runs any more.
  void ForgetThoseOver();

  std::mutex mutex_;
  BatchId last_id_ = 0;  ///< guarded by mutex_, like batches_
  std::map<BatchId, std::unique_ptr<Batch>> batches_;

  std::mutex telling_;
  std::function<void()> listener_;  ///< guarded by telling_
};

}  // namespace tarvendo
