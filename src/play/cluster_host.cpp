#include "play/cluster_host.h"

#include <algorithm>
#include <utility>

#include "base/log.h"
#include "base/read_file.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "platform/paths.h"
#include "play/claim.h"
#include "play/game_files.h"
#include "play/job_tries.h"
#include "play/place.h"

namespace tarvendo {
namespace {

using std::chrono::milliseconds;
using Phase = ClusterJob::Phase;

/// So many answers in a row that do not tell of a job mean that Slurm has forgotten it.
constexpr int kForgotten = 2;

/// So many failures in a row of which Slurm knows nothing mean that sbatch refuses the job: one may
/// come from a scheduler that did not answer at that moment.
constexpr int kRefusals = 2;

void Tell(const std::string& message) {
  const std::string stars(52, '*');
  PrintText("\n" + stars + "\n" + message + stars + "\n> ");
}

std::string RefusalText(const ClusterJob& job) {
  return Format("sbatch refuses game no. %d:\n", job.order.number) +
         (job.refusal.empty() ? "it says nothing.\n" : job.refusal + "\n");
}

/// A job that had nothing to say leaves no file that says so.
void RemoveEmptyOutput(FileSystem& files, const GameOrder& order) {
  const auto output = files.Stamp(SlurmOutputFile(order));
  if (output && output->size == 0) files.Remove(SlurmOutputFile(order));
}

/// What an earlier process that was killed has asked.
void RemoveOldAnswers(FileSystem& files, const std::string& directory) {
  for (const std::string& path : files.PathsWithPrefix(directory + "\\squeue-"))
    files.Remove(path);
}

}  // namespace

ClusterHost::ClusterHost(const Host& host, const Pace& pace, const ClusterPace& cluster_pace,
                         const SlurmOptions& options, int places, std::function<void()> on_news)
    : host_(host),
      pace_(pace),
      cluster_pace_(cluster_pace),
      options_(options),
      places_(static_cast<std::size_t>(std::max(places, 1))),
      local_(host, pace, places, std::move(on_news)) {}

ClusterHost::~ClusterHost() {
  if (!question_) return;
  question_->End();
  question_->TakeOutput();
}

int ClusterHost::FreeSlots() const {
  const std::size_t taken = jobs_.size() + local_games_;
  return taken < places_ ? static_cast<int>(places_ - taken) : 0;
}

std::optional<Obstacle> ClusterHost::FindObstacle(const std::string& files_path, TimePoint now) {
  // Games are handed on in small groups, so that what has ended is judged in between.
  const bool is_busy = to_submit_.size() >= cluster_pace_.waiting;
  if (FreeSlots() > 0 && !is_busy && is_answering_ && now >= submit_at_) return std::nullopt;
  return Obstacle{FirstDebugFile(files_path), std::nullopt};
}

std::string ClusterHost::DebugFileFor(const std::string& files_path, int number) const {
  return host_.files.FullPath(OwnDebugFile(files_path, number));
}

/// Unlike every one of an earlier start.
std::string ClusterHost::NextStamp() {
  return Format("%llx.%d", static_cast<long long>(host_.clock.Now()), ++stamps_);
}

void ClusterHost::Start(const GameOrder& order, std::unique_ptr<LockedFile> claim) {
  directory_ = DirectoryOf(order.claim_file);
  ClusterJob& job = jobs_[order.number];
  job = ClusterJob();
  job.order = order;
  job.order.job = SlurmJobName(directory_, order.number, NextStamp());
  // What an earlier job of the game may have left would be taken for this one's.
  RemovePlace(host_.files, job.order);
  RemoveIfThere(host_.files, SlurmOutputFile(order));
  if (!claim || !SyncClaim(host_.files, job.order, *claim) ||
      PreparePlace(host_.files, job.order).empty()) {
    return Finish(job, GameEnd::kRefused,
                  Format("Game no. %d cannot be handed to Slurm: its files beside '%s' cannot be "
                         "read or written.\n",
                         order.number, order.claim_file.c_str()));
  }
  to_submit_.push_back(order.number);
  // The lock goes with `claim`: ten thousand of them would be more than a process may hold.
  claim.reset();
  Submit(host_.clock.Steady());
}

void ClusterHost::Adopt(const std::vector<GameOrder>& orders) {
  std::vector<GameOrder> local;
  for (const GameOrder& order : orders) {
    if (order.job.empty()) {
      local.push_back(order);
      continue;
    }
    directory_ = DirectoryOf(order.claim_file);
    ClusterJob& job = jobs_[order.number];
    job = ClusterJob();
    job.order = order;
    job.phase = Phase::kWithSlurm;
    job.is_adopted = true;
    job.first_question = questions_ + 1;
  }
  if (!directory_.empty() && !question_) RemoveOldAnswers(host_.files, directory_);
  local_games_ += local.size();
  local_.Adopt(local);
}

std::vector<GameOutcome> ClusterHost::TakeEnded(TimePoint now) {
  TakeLocal(now);
  TakeSubmissions(now);
  TakeAnswer(now);
  Ask(now);
  Submit(now);
  LookForRecords(now);
  ForgetFinished();
  return std::exchange(outcomes_, {});
}

void ClusterHost::TakeLocal(TimePoint now) {
  for (GameOutcome& outcome : local_.TakeEnded(now)) {
    outcomes_.push_back(std::move(outcome));
    --local_games_;
  }
}

std::vector<GameOrder> ClusterHost::TakeSilent(TimePoint now) {
  std::vector<GameOrder> silent = local_.TakeSilent(now);
  for (auto& [number, job] : jobs_) {
    const auto debug_file = TakeSilenceOf(host_.files, job, pace_.silence, now);
    if (!debug_file) continue;
    silent.push_back(job.order);
    silent.back().debug_file = *debug_file;
  }
  return silent;
}

std::optional<TimePoint> ClusterHost::NextLook() const {
  std::optional<TimePoint> next = local_.NextLook();
  const auto no_later_than = [&](TimePoint moment) {
    if (!next || moment < *next) next = moment;
  };
  const auto await = [&](const AsideCommand& command) {
    const bool is_late = command.Started() + cluster_pace_.no_answer <= host_.clock.Steady();
    no_later_than(command.HasEnded() ? TimePoint()
                                     : command.Started() + (is_late ? cluster_pace_.giving_up
                                                                    : cluster_pace_.no_answer));
  };
  if (!outcomes_.empty()) no_later_than(TimePoint());
  for (const int number : submitting_)
    await(*jobs_.at(number).submission);
  if (question_) {
    await(*question_);
  } else if (HasQuestion()) {
    no_later_than(ask_at_);
  }
  if (!to_submit_.empty() && is_answering_ && submitting_.empty()) no_later_than(submit_at_);
  if (!ended_.empty()) no_later_than(records_looked_ + cluster_pace_.record_look);
  return next;
}

// --- Submitting
// -----------------------------------------------------------------------------------

/// As long as it is not known whether Slurm takes jobs at all, one is enough.
std::size_t ClusterHost::SubmissionsAllowed(TimePoint now) const {
  if (!is_answering_ || now < submit_at_) return 0;
  return has_accepted_ ? cluster_pace_.submissions : 1;
}

void ClusterHost::Submit(TimePoint now) {
  while (!to_submit_.empty() && submitting_.size() < SubmissionsAllowed(now)) {
    const int number = to_submit_.front();
    to_submit_.pop_front();
    SubmitOne(jobs_.at(number));
  }
}

/// The claim's lock is held as long as sbatch runs: so another start of the program, after this one
/// was killed, does not take the job for one that was never submitted.
void ClusterHost::SubmitOne(ClusterJob& job) {
  LockAttempt claim = host_.files.Lock(job.order.claim_file);
  // Somebody may have deleted it.
  if (claim.file) SyncClaim(host_.files, job.order, *claim.file);
  job.phase = Phase::kSubmitting;
  job.submission = std::make_unique<AsideCommand>(host_, SlurmSubmitLine(job.order, options_),
                                                  SubmissionFile(job.order), std::move(claim.file));
  submitting_.push_back(job.order.number);
}

void ClusterHost::TakeSubmissions(TimePoint now) {
  std::erase_if(submitting_, [&](int number) {
    ClusterJob& job = jobs_.at(number);
    if (job.submission->HasEnded()) {
      TakeSubmission(job, now);
      return true;
    }
    const TimePoint started = job.submission->Started();
    if (now >= started + cluster_pace_.no_answer) {
      TellThatNobodyAnswers("sbatch has told nothing for a minute.");
    }
    if (now >= started + cluster_pace_.giving_up) job.submission->End();
    return false;
  });
}

void ClusterHost::TakeSubmission(ClusterJob& job, TimePoint now) {
  const auto answer = ReadSlurmAnswer(job.submission->TakeOutput());
  job.submission.reset();
  if (answer && answer->exit_code == 0) return Accept(job, SlurmJobNumber(answer->text));
  job.refusal = answer ? answer->text : "";
  job.phase = Phase::kDoubtful;
  job.first_question = questions_ + 1;
  if (!answer || !answer->IsMissing()) return;
  job.refusals = kRefusals;
  Refuse(job, now);
}

void ClusterHost::Accept(ClusterJob& job, const std::string& number) {
  if (!number.empty()) job.told.number = number;
  job.phase = Phase::kWithSlurm;
  job.first_question = questions_ + 1;
  job.missed = 0;
  job.refusals = 0;
  has_accepted_ = true;
  is_refusal_told_ = false;
}

void ClusterHost::SubmitAgain(ClusterJob& job) {
  job.phase = Phase::kToSubmit;
  to_submit_.push_front(job.order.number);
}

/// Whether a job may free a place for another one by its end.
bool ClusterHost::HasJobElsewhere() const {
  return std::any_of(jobs_.begin(), jobs_.end(), [&](const auto& entry) {
    const Phase phase = entry.second.phase;
    return phase == Phase::kWithSlurm || phase == Phase::kEnded;
  });
}

/// Slurm does not have the job. While others run it may be that it takes no more at the moment;
/// otherwise something is wrong with every job.
void ClusterHost::Refuse(ClusterJob& job, TimePoint now) {
  if (++job.refusals < kRefusals) return SubmitAgain(job);
  has_accepted_ = false;
  const bool is_news = !std::exchange(is_refusal_told_, true);
  if (HasJobElsewhere()) {
    if (is_news) Tell(RefusalText(job) + "It is tried again when a game has ended.\n");
    submit_at_ = now + cluster_pace_.retry;
    return SubmitAgain(job);
  }
  Finish(job, is_news ? GameEnd::kRefused : GameEnd::kNeverBegun, is_news ? RefusalText(job) : "");
  for (const int number : std::exchange(to_submit_, {}))
    Finish(jobs_.at(number), GameEnd::kNeverBegun, "");
}

// --- Asking
// ---------------------------------------------------------------------------------------

bool ClusterHost::HasQuestion() const {
  if (!is_answering_) return true;
  return std::any_of(jobs_.begin(), jobs_.end(), [](const auto& entry) {
    const Phase phase = entry.second.phase;
    return phase == Phase::kDoubtful || phase == Phase::kWithSlurm;
  });
}

void ClusterHost::Ask(TimePoint now) {
  if (question_ || now < ask_at_ || !HasQuestion()) return;
  ++questions_;
  const std::string file = directory_ + "\\squeue-" + NextStamp() + ".txt";
  question_ = std::make_unique<AsideCommand>(host_, SlurmQueueLine(), file, nullptr);
  ask_at_ = now + cluster_pace_.ask;
}

void ClusterHost::TakeAnswer(TimePoint now) {
  if (!question_) return;
  const milliseconds taken = now - question_->Started();
  if (!question_->HasEnded()) {
    if (taken >= cluster_pace_.no_answer) {
      TellThatNobodyAnswers("squeue has told nothing for a minute.");
    }
    if (taken >= cluster_pace_.giving_up) question_->End();
    return;
  }
  ask_at_ = question_->Started() + std::max(cluster_pace_.ask, cluster_pace_.ask_share * taken);
  const auto answer = ReadSlurmAnswer(std::exchange(question_, nullptr)->TakeOutput());
  if (!answer) return TellThatNobodyAnswers("squeue has told nothing that is whole.");
  if (answer->exit_code != 0) return TellThatNobodyAnswers(answer->text);
  std::string bad_line;
  const auto queue = ReadSlurmQueue(answer->text, bad_line);
  if (!queue) return TellThatNobodyAnswers("squeue tells '" + bad_line + "'.");
  if (!std::exchange(is_answering_, true)) Tell("Slurm answers again.\n");
  Judge(*queue, questions_, now);
}

void ClusterHost::TellThatNobodyAnswers(const std::string& what) {
  if (!std::exchange(is_answering_, false)) return;
  Tell("Slurm does not answer:\n" + what + "\nWhat it plays goes on, and it is asked again.\n");
}

void ClusterHost::Judge(const SlurmQueue& queue, int question, TimePoint now) {
  for (auto& [number, job] : jobs_) {
    const bool is_asked_for = job.phase == Phase::kDoubtful || job.phase == Phase::kWithSlurm;
    if (!is_asked_for || question < job.first_question) continue;
    const auto told = queue.find(job.order.job);
    if (told == queue.end()) {
      NoteMissing(job, now);
      continue;
    }
    if (job.phase == Phase::kDoubtful) Accept(job, told->second.number);
    job.missed = 0;
    NoteState(job, told->second, now);
    const SlurmState state = told->second.State();
    const bool has_left = IsRecordLikely(job, now) && host_.files.IsReadable(job.order.pgn_file);
    if (state == SlurmState::kEnded || has_left) End(job, now);
  }
}

/// A record gets its name when the game has ended, and Slurm may hear of that late or never: one
/// that lost its controller meanwhile queues the job again, and perhaps holds it back for ever.
bool ClusterHost::IsRecordLikely(ClusterJob& job, TimePoint now) const {
  const SlurmState state = job.told.State();
  if (state == SlurmState::kLeaves) return true;
  if (state != SlurmState::kWaits || now < job.record_looked + cluster_pace_.waiting_look) {
    return false;
  }
  job.record_looked = now;
  return true;
}

void ClusterHost::NoteMissing(ClusterJob& job, TimePoint now) {
  if (job.phase == Phase::kDoubtful) return Refuse(job, now);
  // An sbatch that an earlier process has started still tries to submit it.
  const bool is_being_submitted = job.is_adopted && host_.files.IsLocked(job.order.claim_file);
  job.missed = is_being_submitted ? 0 : job.missed + 1;
  if (job.missed < kForgotten) return;
  const bool was_seen = !job.is_adopted || !job.told.word.empty();
  if (was_seen || HasTrace(host_.files, job.order)) return End(job, now);
  Finish(job, GameEnd::kNeverBegun, "");
}

// --- Ending
// ---------------------------------------------------------------------------------------

void ClusterHost::End(ClusterJob& job, TimePoint now) {
  job.phase = Phase::kEnded;
  job.is_running = false;
  job.deadline = now + RecordPatience(job, cluster_pace_);
  ended_.push_back(job.order.number);
  records_looked_ = TimePoint();
}

void ClusterHost::LookForRecords(TimePoint now) {
  if (ended_.empty() || now < records_looked_ + cluster_pace_.record_look) return;
  records_looked_ = now;
  std::erase_if(ended_, [&](int number) {
    ClusterJob& job = jobs_.at(number);
    const bool is_there = host_.files.IsReadable(job.order.pgn_file);
    if (!is_there && now < job.deadline) return false;
    if (!is_there && HasNeverBegun(host_.files, job)) {
      Finish(job, GameEnd::kNeverBegun, "");
      return true;
    }
    KeepFilesOfLastTry(host_.files, job.order);
    Finish(job, GameEnd::kEnded, is_there ? "" : ReasonWithoutRecord(host_.files, job));
    RemoveEmptyOutput(host_.files, job.order);
    return true;
  });
}

void ClusterHost::Finish(ClusterJob& job, GameEnd end, std::string reason) {
  job.phase = Phase::kOver;
  GameOutcome outcome{job.order, end, std::nullopt, std::move(reason)};
  if (!outcome.IsGivenBack()) {
    outcome.pgn = ReadFile(host_.files, job.order.pgn_file, kGameFileLimit);
    submit_at_ = TimePoint();
  }
  outcomes_.push_back(std::move(outcome));
  finished_.push_back(job.order.number);
}

void ClusterHost::ForgetFinished() {
  for (const int number : std::exchange(finished_, {}))
    jobs_.erase(number);
  if (jobs_.empty()) is_refusal_told_ = false;
}

}  // namespace tarvendo
