#include "platform/windows/batch_watch.h"

#include <windows.h>

#include <utility>
#include <vector>

namespace tarvendo {
namespace {

bool IsEmpty(const Handle& job) {
  JOBOBJECT_BASIC_ACCOUNTING_INFORMATION account{};
  return !job.IsOpen() ||
         QueryInformationJobObject(job.Get(), JobObjectBasicAccountingInformation, &account,
                                   sizeof(account), nullptr) == 0 ||
         account.ActiveProcesses == 0;
}

}  // namespace

/// The destructor ends the wait, when a call of OnEnd that is under way has returned.
struct BatchWatch::Batch {
  Batch(BatchWatch& the_owner, Handle the_process, Handle the_job)
      : owner(the_owner), process(std::move(the_process)), job(std::move(the_job)) {
    RegisterWaitForSingleObject(&wait, process.Get(), OnEnd, this, INFINITE, WT_EXECUTEONLYONCE);
  }
  ~Batch() {
    if (wait != nullptr) UnregisterWaitEx(wait, INVALID_HANDLE_VALUE);
  }
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;

  bool IsRunning() const { return WaitForSingleObject(process.Get(), 0) == WAIT_TIMEOUT; }

  /// Without a job the process alone is known.
  void Kill() const {
    if (IsEmpty(job)) {
      TerminateProcess(process.Get(), 1);
    } else {
      TerminateJobObject(job.Get(), 1);
    }
  }

  static void CALLBACK OnEnd(void* batch, BOOLEAN /*is_timeout*/) {
    Batch& ended = *static_cast<Batch*>(batch);
    ended.owner.NoteEnd(ended);
  }

  BatchWatch& owner;
  Handle process;
  Handle job;
  HANDLE wait = nullptr;
  bool is_end_noted = false;  ///< guarded by the owner's mutex
};

BatchWatch::BatchWatch() = default;

BatchWatch::~BatchWatch() {
  batches_.clear();
}

BatchId BatchWatch::Add(Handle process, Handle job) {
  ForgetThoseOver();
  auto batch = std::make_unique<Batch>(*this, std::move(process), std::move(job));
  const std::lock_guard<std::mutex> guard(mutex_);
  batches_.emplace(++last_id_, std::move(batch));
  return last_id_;
}

bool BatchWatch::IsRunning(BatchId batch) {
  const std::lock_guard<std::mutex> guard(mutex_);
  const auto found = batches_.find(batch);
  return found != batches_.end() && found->second->IsRunning();
}

void BatchWatch::End(BatchId batch) {
  const std::lock_guard<std::mutex> guard(mutex_);
  const auto found = batches_.find(batch);
  if (found != batches_.end()) found->second->Kill();
}

void BatchWatch::SetListener(std::function<void()> on_end) {
  const std::lock_guard<std::mutex> guard(telling_);
  listener_ = std::move(on_end);
}

void BatchWatch::NoteEnd(Batch& batch) {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    batch.is_end_noted = true;
  }
  const std::lock_guard<std::mutex> guard(telling_);
  if (listener_) listener_();
}

void BatchWatch::ForgetThoseOver() {
  std::vector<std::unique_ptr<Batch>> over;  // Their destructors wait for what takes the lock.
  const std::lock_guard<std::mutex> guard(mutex_);
  for (auto entry = batches_.begin(); entry != batches_.end();) {
    Batch& batch = *entry->second;
    if (batch.is_end_noted && IsEmpty(batch.job)) {
      over.push_back(std::move(entry->second));
      entry = batches_.erase(entry);
    } else {
      ++entry;
    }
  }
}

}  // namespace tarvendo
