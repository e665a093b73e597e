#include "publish/pgn_records.h"

#include <algorithm>
#include <utility>

namespace tarvendo {
namespace {

constexpr std::size_t kReadAtOnce = std::size_t{4} << 20U;  ///< bytes

/// So many bytes tell whether a file has been changed before the place where reading goes on.
constexpr std::size_t kMark = 64;

}  // namespace

void PgnRecords::Forget() {
  stamp_.reset();
  next_ = 0;
  before_next_.clear();
  records_.clear();
}

bool PgnRecords::IsAsItWas(const FileStamp& stamp) {
  if (!stamp_ || stamp.identity != stamp_->identity || stamp.size < stamp_->size) return false;
  const auto mark = files_.ReadPart(path_, next_ - before_next_.size(), before_next_.size());
  return mark == before_next_;
}

void PgnRecords::Look(const std::string& path) {
  if (path != path_) Forget();
  path_ = path;
  const std::optional<FileStamp> stamp = files_.Stamp(path);
  if (stamp && stamp == stamp_) return;
  if (!stamp || !IsAsItWas(*stamp)) Forget();
  stamp_ = stamp;
  if (stamp) ReadOn();
}

void PgnRecords::ReadOn() {
  std::string text;
  std::string last;
  while (true) {
    const auto part = files_.ReadPart(path_, next_ + text.size(), kReadAtOnce);
    if (!part || part->empty()) break;
    text += *part;
    std::string_view rest = text;
    for (std::size_t end = NextPgnGame(rest); end != std::string_view::npos;
         end = NextPgnGame(rest)) {
      Note(rest.substr(0, end), next_);
      next_ += end;
      last = rest.substr(end - std::min(end, kMark), std::min(end, kMark));
      rest.remove_prefix(end);
    }
    if (!last.empty()) before_next_ = last;
    text = std::string(rest);
  }
  if (!text.empty()) Note(text, next_);
}

void PgnRecords::Note(std::string_view game, std::uint64_t offset) {
  PgnFacts facts = ReadPgnGame(game);
  if (facts.number == 0) return;
  const PgnKey key{facts.number, std::move(facts.white), std::move(facts.black)};
  records_[key.Text()] = {std::move(facts), offset, game.size()};
}

const PgnRecords::Record* PgnRecords::Find(const PgnKey& key) const {
  const auto found = records_.find(key.Text());
  return found == records_.end() ? nullptr : &found->second;
}

}  // namespace tarvendo
