#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <functional>
#include <thread>
#include <utility>

#include "base/mutex.h"
#include "base/thread_annotations.h"
#include "tourney/tourney.h"

namespace tarvendo {

class SharedTourney;

/// The right to use the tourney, for as long as it lives: there is no other way to it. One thread
/// has it at a time, and gives it back before it waits for anything.
class Hold {
 public:
  Hold(Hold&& other) noexcept
      : shared_(std::exchange(other.shared_, nullptr)), mark_(other.mark_) {}
  Hold& operator=(Hold&&) = delete;
  ~Hold();

  Tourney& operator*() const;
  Tourney* operator->() const { return &**this; }

 private:
  friend class SharedTourney;

  /// What is remembered of the moment when it was taken.
  struct Mark {
    std::uint64_t turn;  ///< the number of this hold
    std::uint64_t version;
    std::uint64_t switch_changes;
  };

  Hold(SharedTourney& shared, const Mark& mark) : shared_(&shared), mark_(mark) {}

  SharedTourney* shared_;  ///< null when the right has been handed on
  Mark mark_;
};

/// The one tourney, between the threads. Unlike a thing behind a plain mutex it can be broken: when
/// a thread has died in a fault while it held the tourney, whoever waits for it is not lost but
/// learns of it and saves what there is. Any thread may call it.
class SharedTourney {
 public:
  /// Called behind a change; must not take the tourney or wait.
  using ChangeListener = std::function<void()>;

  SharedTourney() = default;
  SharedTourney(const SharedTourney&) = delete;
  SharedTourney& operator=(const SharedTourney&) = delete;

  /// Waits until nobody holds the tourney and takes it. Throws Terminated (platform/faults.h) when
  /// it is broken, and std::logic_error when this thread holds it already.
  Hold Take() TARVENDO_EXCLUDES(mutex_);

  /// Makes every present and later Take() throw. A hold of the calling thread ends: called by a
  /// thread that has died in a fault, of whose stack nothing is left.
  void Break() TARVENDO_EXCLUDES(mutex_);

  /// Breaks the tourney and gives it all the same: at once when nobody holds it, or this thread
  /// does (a fault has left its hold behind); otherwise when the holder gives it back, but `span`
  /// later at the latest, for a dead one never does.
  Hold TakeForEmergency(std::chrono::milliseconds span) TARVENDO_EXCLUDES(mutex_);

  /// From now on `listener` is called whenever a hold has ended during which the tourney's version
  /// rose or its switch was moved; not for the holds of `own_thread`, the one that listens. An
  /// empty listener ends that; when this returns, no call to the former one is under way.
  void SetChangeListener(ChangeListener listener, std::thread::id own_thread = {})
      TARVENDO_EXCLUDES(listener_mutex_);

 private:
  friend class Hold;

  Hold Begin() TARVENDO_REQUIRES(mutex_);
  void End(const Hold::Mark& mark) TARVENDO_EXCLUDES(mutex_, listener_mutex_);
  void TellListener() TARVENDO_EXCLUDES(listener_mutex_);

  Mutex mutex_;
  std::condition_variable given_back_;
  bool held_ TARVENDO_GUARDED_BY(mutex_) = false;
  std::thread::id holder_ TARVENDO_GUARDED_BY(mutex_);
  std::uint64_t turn_ TARVENDO_GUARDED_BY(mutex_) = 0;  ///< the number of the latest hold
  bool broken_ TARVENDO_GUARDED_BY(mutex_) = false;

  Mutex listener_mutex_;
  ChangeListener listener_ TARVENDO_GUARDED_BY(listener_mutex_);
  std::thread::id own_thread_ TARVENDO_GUARDED_BY(listener_mutex_);

  Tourney tourney_;  ///< the holder's
};

/// Something else that only the tourney's holder may use, such as its file.
template <typename Thing>
class HeldWithTourney {
 public:
  template <typename... Arguments>
  explicit HeldWithTourney(Arguments&&... arguments)
      : thing_(std::forward<Arguments>(arguments)...) {}

  /// For as long as the hold lives.
  Thing& With(const Hold& /*hold*/) { return thing_; }

 private:
  Thing thing_;
};

}  // namespace tarvendo
