#include "play/local_game.h"

#include <algorithm>
#include <utility>

#include "base/read_file.h"
#include "play/claim.h"
#include "play/place.h"

namespace tarvendo {
namespace {

/// WinBoard's five header lines, and the line that ends every game: so a file of our own ends one
/// too.
constexpr const char* kPanicText = "Panic stop by Tarvendo\n \n \n \n \ngameends \n \n";

bool WriteFile(FileSystem& files, const std::string& path, const std::string& text) {
  const auto file = files.Create(path);
  if (!file) return false;
  const bool written = file->Write(text);
  return file->Close() && written;
}

}  // namespace

LocalGame::LocalGame(const Host& host, const Pace& pace, GameOrder order,
                     std::function<void()> on_news)
    : host_(host), pace_(pace), order_(std::move(order)), on_news_(std::move(on_news)) {}

void LocalGame::Start(TimePoint now, std::unique_ptr<LockedFile> claim) {
  Begin(now);
  const std::string batch_file = PreparePlace(host_.files, order_);
  batch_ = host_.processes.StartBatch(batch_file, claim.get());
  // A game that cannot be started has left no debug file. That is told when the file is missed, so
  // that the user is told the same whatever the reason.
  was_started_ = batch_.has_value();
}

void LocalGame::Adopt(TimePoint now) {
  is_adopted_ = true;
  Begin(now);
}

void LocalGame::Begin(TimePoint now) {
  started_ = grown_ = looked_ = now;
  watch_.Begin(order_.debug_file);
  notices_ = host_.watches.Watch(order_.debug_file, [this] {
    has_news_ = true;
    on_news_();
  });
  PlanNextStep(now);
}

bool LocalGame::IsProcessRunning() const {
  return batch_ ? host_.processes.IsRunning(*batch_) : host_.files.IsLocked(order_.claim_file);
}

std::optional<BatchId> LocalGame::RunningBatch() const {
  return batch_ && host_.processes.IsRunning(*batch_) ? batch_ : std::nullopt;
}

bool LocalGame::Step(TimePoint now) {
  const bool has_just_ended = HasJustEnded();
  if (has_just_ended) ended_at_ = now;
  if (phase_ == Phase::kOver || (!has_just_ended && now < NextStep()))
    return phase_ == Phase::kOver;
  has_news_ = false;
  looked_ = now;
  KeepClaim();
  switch (phase_) {
    case Phase::kNoSignYet:
    case Phase::kWatched:
      StepWatching(now);
      break;
    case Phase::kRecordAwaited:
      StepAtEnd(now);
      break;
    case Phase::kBeingEnded:
      if (!IsProcessRunning() || now >= deadline_) Finish(GameEnd::kOutOfPatience);
      break;
    case Phase::kOver:
      break;
  }
  PlanNextStep(now);
  return phase_ == Phase::kOver;
}

/// Somebody may have deleted the claim. Then this process holds it for the game, as long as it can.
void LocalGame::KeepClaim() {
  if (batch_ && !spare_claim_ && !host_.files.Exists(order_.claim_file)) {
    spare_claim_ = MakeClaim(host_.files, order_);
  }
}

void LocalGame::StepWatching(TimePoint now) {
  const std::uint64_t seen_before = watch_.Seen();
  const DebugNews news = watch_.Look(host_.files);
  if (watch_.Seen() != seen_before) {
    grown_ = now;
    is_silence_told_ = false;
  }
  switch (news) {
    case DebugNews::kNoFile:
      if (phase_ == Phase::kWatched || now >= started_ + pace_.first_sign) GiveUp();
      break;
    case DebugNews::kStillOpen:
      phase_ = Phase::kWatched;
      if (HasSaidItsLastWord(now)) {
        Finish(GameEnd::kDiedSilently);
      } else if (pace_.patience.count() > 0 && now >= grown_ + pace_.patience) {
        EndProcesses(now);
      }
      break;
    case DebugNews::kGameOver:
      BeginToAwaitRecord(now);
      StepAtEnd(now);
      break;
  }
}

bool LocalGame::HasSaidItsLastWord(TimePoint now) const {
  return ended_at_ && now >= std::max(grown_, *ended_at_) + pace_.last_word;
}

void LocalGame::EndProcesses(TimePoint now) {
  if (batch_) {
    host_.processes.EndBatch(*batch_);
  } else {
    host_.processes.EndHolders(order_.claim_file);
  }
  phase_ = Phase::kBeingEnded;
  deadline_ = now + pace_.killing;
}

void LocalGame::BeginToAwaitRecord(TimePoint now) {
  phase_ = Phase::kRecordAwaited;
  deadline_ = now + pace_.record;
  record_.clear();
}

/// WinBoard writes the end into its debug file before it writes the record.
void LocalGame::StepAtEnd(TimePoint now) {
  std::string record = Record().value_or(record_);
  const bool has_grown = record.size() != record_.size();
  record_ = std::move(record);
  if (pace_.awaits_processes) {
    if (has_grown) deadline_ = now + pace_.record;
    if (!IsProcessRunning() || now >= deadline_) Finish(GameEnd::kEnded);
  } else if (!record_.empty() || now >= deadline_) {
    Finish(GameEnd::kEnded);
  }
}

void LocalGame::GiveUp() {
  const bool written = WriteFile(host_.files, order_.debug_file, kPanicText);
  if (!written || !host_.files.IsReadable(order_.debug_file)) {
    Finish(GameEnd::kCannotBeWatched);
  } else {
    Finish(was_started_ ? GameEnd::kNoSignOfLife : GameEnd::kNotStarted);
  }
}

void LocalGame::Finish(GameEnd end) {
  end_ = end;
  phase_ = Phase::kOver;
  notices_.reset();
}

TimePoint LocalGame::NextStep() const {
  return has_news_ ? std::min(next_step_, looked_ + pace_.look) : next_step_;
}

void LocalGame::PlanNextStep(TimePoint now) {
  next_step_ = now + (notices_ ? pace_.fallback : pace_.look);
  const auto no_later_than = [&](TimePoint moment) {
    if (moment > now) next_step_ = std::min(next_step_, moment);
  };
  if (phase_ == Phase::kNoSignYet) no_later_than(started_ + pace_.first_sign);
  if (phase_ == Phase::kRecordAwaited || phase_ == Phase::kBeingEnded) no_later_than(deadline_);
  if (phase_ != Phase::kWatched) return;
  if (ended_at_) no_later_than(std::max(grown_, *ended_at_) + pace_.last_word);
  if (pace_.patience.count() > 0) no_later_than(grown_ + pace_.patience);
  if (!is_silence_told_) no_later_than(grown_ + pace_.silence);
}

bool LocalGame::TakeSilence(TimePoint now) {
  const bool is_news =
      phase_ == Phase::kWatched && !is_silence_told_ && now >= grown_ + pace_.silence;
  if (is_news) is_silence_told_ = true;
  return is_news;
}

std::optional<std::string> LocalGame::Record() const {
  return ReadFile(host_.files, order_.pgn_file, kGameFileLimit);
}

GameOutcome LocalGame::TakeOutcome() {
  std::optional<std::string> record = Record();
  // What was read a moment ago is not lost when it cannot be read again.
  if (!record && !record_.empty()) record = record_;
  return {order_, end_, std::move(record), {}};
}

}  // namespace tarvendo
