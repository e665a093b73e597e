#include "runner/hindrances.h"

#include "base/log.h"

namespace tarvendo {
namespace {

constexpr int kTriesBetweenMessages = 10;

}  // namespace

void Hindrances::Forget(TimePoint moment) {
  tries_until_message_ = 0;
  blocked_.clear();
  next_try_ = moment;
}

void Hindrances::Hinder(const std::string& message, TimePoint now) {
  PrintRarely(message);
  next_try_ = now + retry_;
}

void Hindrances::Block(int number, const std::string& message, TimePoint now) {
  PrintRarely(message);
  blocked_.push_back(number);
  blocked_until_ = now + retry_;
}

bool Hindrances::MayTry(TimePoint now) {
  if (now < next_try_) return false;
  if (now >= blocked_until_) blocked_.clear();
  return true;
}

std::optional<TimePoint> Hindrances::NextTry(TimePoint now) const {
  if (next_try_ <= now) return std::nullopt;
  return next_try_;
}

std::optional<TimePoint> Hindrances::EndOfBlocks() const {
  if (blocked_.empty()) return std::nullopt;
  return blocked_until_;
}

void Hindrances::PrintRarely(const std::string& message) {
  if (--tries_until_message_ >= 0) return;
  PrintText(message);
  tries_until_message_ = kTriesBetweenMessages;
}

}  // namespace tarvendo
