#include "play/cluster_job.h"

#include "base/text.h"
#include "platform/files.h"
#include "play/game_files.h"
#include "play/job_tries.h"

namespace tarvendo {
namespace {

/// So many times in the time of a silence the debug file is looked at.
constexpr int kLooks = 6;

std::string JobText(const ClusterJob& job) {
  return job.told.number.empty() ? "'" + job.order.job + "'" : job.told.number;
}

}  // namespace

bool HasTrace(FileSystem& files, const GameOrder& order) {
  return files.IsReadable(order.pgn_file) || files.IsReadable(SlurmOutputFile(order)) ||
         !FindTries(files, order).empty();
}

bool HasNeverBegun(FileSystem& files, const ClusterJob& job) {
  return job.told.State() == SlurmState::kWaits && !HasTrace(files, job.order);
}

std::chrono::milliseconds RecordPatience(const ClusterJob& job, const ClusterPace& pace) {
  // One that Slurm does not know any more may have ended well a moment ago.
  const bool may_be_well = job.told.word == "COMPLETED" || job.told.State() != SlurmState::kEnded;
  return may_be_well ? pace.late_record : pace.broken_record;
}

std::string ReasonWithoutRecord(FileSystem& files, const ClusterJob& job) {
  const SlurmJob& told = job.told;
  std::string reason = "Slurm does not know its job " + JobText(job) + " any more.\n";
  if (told.State() == SlurmState::kEnded) {
    reason = "Slurm says of its job " + JobText(job) + ": " + told.word +
             (told.reason.empty() ? ".\n" : " (" + told.reason + ").\n");
  }
  bool is_told = false;
  for (const std::string& file : ReasonFiles(job.order.pgn_file)) {
    const auto stamp = files.Stamp(file);
    if (!stamp || stamp->size == 0) continue;
    reason += (is_told ? "See also '" : "See '") + file + "'.\n";
    is_told = true;
  }
  // Its node makes that file before it begins.
  if (is_told || files.IsReadable(SlurmOutputFile(job.order))) return reason;
  if (told.word == "FAILED" || told.word.empty()) {
    reason += "It has left no '" + SlurmOutputFile(job.order) +
              "': perhaps its node does not see that directory.\n";
  }
  return reason;
}

void NoteState(ClusterJob& job, const SlurmJob& told, TimePoint now) {
  job.told = told;
  const bool is_running = told.State() == SlurmState::kRuns;
  if (is_running && !job.is_running) {
    job.grown = job.looked = now;
    job.is_silence_told = false;
  }
  job.is_running = is_running;
}

std::optional<std::string> TakeSilenceOf(FileSystem& files, ClusterJob& job,
                                         std::chrono::milliseconds silence, TimePoint now) {
  if (!job.is_running || now < job.looked + silence / kLooks) return std::nullopt;
  job.looked = now;
  const std::vector<JobTry> tries = FindTries(files, job.order);
  const std::string debug_file = tries.empty() ? job.order.debug_file : tries.back().DebugFile();
  const auto stamp = files.Stamp(debug_file);
  const std::int64_t size = stamp ? stamp->size : 0;
  if (size != job.debug_size) {
    job.debug_size = size;
    job.grown = now;
    job.is_silence_told = false;
  }
  if (job.is_silence_told || now < job.grown + silence) return std::nullopt;
  job.is_silence_told = true;
  return debug_file;
}

}  // namespace tarvendo
