#pragma once

#include <cstdint>

namespace tarvendo {

/// Write access to a part of the tourney, mostly for one statement:
///
///     tourney.ChangeSettings()->rounds = 9;
///
/// When it ends and the part is another one than before, the tourney's version rises. Nothing may
/// be added to the tourney or taken out of it meanwhile.
template <typename Part>
class Edit {
 public:
  Edit(Part& part, std::uint64_t& version) : part_(part), before_(part), version_(version) {}
  ~Edit() {
    if (!(part_ == before_)) ++version_;
  }
  Edit(const Edit&) = delete;
  Edit& operator=(const Edit&) = delete;

  Part* operator->() const { return &part_; }

  /// Only for one that has a name: a reference taken from a temporary one would outlive it.
  Part& operator*() const& { return part_; }
  Part& operator*() const&& = delete;

 private:
  Part& part_;
  const Part before_;
  std::uint64_t& version_;
};

}  // namespace tarvendo
