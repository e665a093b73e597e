#include "platform/folding_input.h"

namespace tarvendo {

int FoldingInput::Peek() {
  if (next_ == filled_ && !at_end_) {
    next_ = filled_ = 0;  // Also when Fill throws.
    filled_ = Fill(buffer_.data(), buffer_.size());
    at_end_ = filled_ == 0;
  }
  return next_ == filled_ ? -1 : static_cast<unsigned char>(buffer_.at(next_));
}

int FoldingInput::Get() {
  const int byte = Peek();
  if (byte == -1) return -1;
  ++next_;
  if (byte != '\r' || Peek() != '\n') return byte;
  ++next_;
  return '\n';
}

}  // namespace tarvendo
