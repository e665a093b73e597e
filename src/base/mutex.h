#pragma once

#include <mutex>

#include "base/thread_annotations.h"

namespace tarvendo {

/// A std::mutex that clang's thread-safety analysis knows as a lock.
class TARVENDO_CAPABILITY("mutex") Mutex {
 public:
  Mutex() = default;
  Mutex(const Mutex&) = delete;
  Mutex& operator=(const Mutex&) = delete;

 private:
  friend class MutexLock;
  std::mutex mutex_;
};

/// Holds a Mutex for as long as it lives.
class TARVENDO_SCOPED_CAPABILITY MutexLock {
 public:
  explicit MutexLock(Mutex& mutex) TARVENDO_ACQUIRE(mutex) : lock_(mutex.mutex_) {}
  ~MutexLock() TARVENDO_RELEASE() {}
  MutexLock(const MutexLock&) = delete;
  MutexLock& operator=(const MutexLock&) = delete;

  /// For a wait on a condition variable: the lock is free meanwhile, and held again behind it.
  std::unique_lock<std::mutex>& ForWait() { return lock_; }

 private:
  std::unique_lock<std::mutex> lock_;
};

}  // namespace tarvendo
