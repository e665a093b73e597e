#pragma once

#include <array>
#include <cstddef>

#include "platform/input.h"

namespace tarvendo {

/// The bytes of some source with CR LF folded to LF. Once the end has been met it stays.
class FoldingInput : public InputStream {
 public:
  int Get() override;

 protected:
  /// Waits for bytes and puts at most `room` of them at `to`; returns how many, 0 at the end.
  virtual std::size_t Fill(char* to, std::size_t room) = 0;

 private:
  /// The next byte as it stands, not taken; -1 at the end.
  int Peek();

  std::array<char, 4096> buffer_{};
  std::size_t next_ = 0;
  std::size_t filled_ = 0;
  bool at_end_ = false;
};

}  // namespace tarvendo
