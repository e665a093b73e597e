#include "console/command_args.h"

#include "base/text.h"
#include "base/word_skip.h"

namespace tarvendo {

void CommandArgs::Fill(const std::string& line) {
  line_ = line;
  TrimRight(line_);
  words_.clear();
  starts_.clear();
  if (line_.empty()) return;
  for (std::optional<std::size_t> start = 0; start; start = SkipWord(line_, *start)) {
    words_.push_back(Scanner(std::string_view(line_).substr(*start)).ReadWord());
    starts_.push_back(*start);
  }
}

std::string CommandArgs::Word(int i) const {
  return i >= 0 && i < Count() ? words_[static_cast<std::size_t>(i)] : std::string();
}

std::string CommandArgs::RestFrom(int i) const {
  return i >= 0 && i < Count() ? line_.substr(starts_[static_cast<std::size_t>(i)]) : std::string();
}

int CommandArgs::Find(const std::string& prefix, int position, int length) const {
  const std::string wanted =
      length < 1 ? prefix : prefix.substr(0, static_cast<std::size_t>(length));
  if (position >= 0) return BeginsWithNoCase(Word(position), wanted) ? position : 0;
  for (int i = 0; i < Count(); ++i) {
    if (BeginsWithNoCase(Word(i), wanted)) return i;
  }
  return 0;
}

}  // namespace tarvendo
