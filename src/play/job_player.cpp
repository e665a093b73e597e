#include "play/job_player.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <vector>

#include "base/read_file.h"
#include "base/text.h"
#include "platform/batch_plan.h"
#include "platform/events.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "play/claim.h"
#include "play/game_files.h"
#include "play/game_order.h"
#include "play/job_tries.h"
#include "play/place.h"

namespace tarvendo {
namespace {

using std::chrono::milliseconds;

constexpr std::string_view kSaveGame = "/sgf=";

class JobPlayer {
 public:
  JobPlayer(const Host& host, const JobSurroundings& job, const JobPace& pace,
            const std::function<void(const std::string&)>& say)
      : host_(host), job_(job), pace_(pace), say_(say), events_(host.clock) {}

  JobEnd Play(const std::string& claim_file) {
    if (!AwaitOrder(claim_file)) return JobEnd::kNotPlayed;
    // An earlier try has come so far before its machine was lost.
    if (host_.files.IsReadable(order_.pgn_file)) return JobEnd::kRecorded;
    if (!MakeTriesDirectory(host_.files, order_) || !MakeTry(host_.files, try_)) {
      return NotPlayed("cannot make the directory '" + try_.directory + "'");
    }
    host_.files.ChangeDirectory(DirectoryOf(order_.batch_file));
    host_.processes.SetEndListener([this] { events_.Post(Event::kHostNews); });
    const std::optional<BatchId> batch = host_.processes.StartSteps(Steps());
    const bool has_ended = batch && AwaitEnd(*batch);
    host_.processes.SetEndListener({});
    if (!batch) return NotPlayed("cannot start a process");
    if (!has_ended) return NotPlayed("processes of the game do not end");
    return NameRecord();
  }

 private:
  void Say(const std::string& text) { say_("tarvendo --play: " + text + "\n"); }

  JobEnd NotPlayed(const std::string& why) {
    Say(why);
    return JobEnd::kNotPlayed;
  }

  /// Another machine has written the claim and the batch file, perhaps a moment ago.
  bool AwaitOrder(const std::string& claim_file) {
    const TimePoint end = host_.clock.Steady() + pace_.late_files;
    while (!TakeOrder(claim_file)) {
      if (host_.clock.Steady() >= end) {
        Say("the claim '" + claim_file + "' or its batch file is not there, or is for another job");
        return false;
      }
      events_.WaitUntil(host_.clock.Steady() + pace_.look);
    }
    return true;
  }

  bool TakeOrder(const std::string& claim_file) {
    const auto order = ReadOrder(claim_file);
    if (!order) return false;
    const auto batch = ReadFile(host_.files, CopyOfBatch(*order), kGameFileLimit);
    if (!batch) return false;
    order_ = *order;
    batch_ = *batch;
    try_ = TryOf(order_, job_.job, job_.restarts);
    return true;
  }

  /// The claim's order, when it is one for this job.
  std::optional<GameOrder> ReadOrder(const std::string& claim_file) {
    const auto text = ReadFile(host_.files, claim_file, kGameFileLimit);
    auto order = ReadClaimText(text.value_or(""), claim_file);
    if (order && order->job != job_.name) order.reset();
    return order;
  }

  /// The batch file's steps, with record and debug file in the directory of the try.
  std::vector<BatchStep> Steps() {
    std::vector<BatchStep> steps = ParseBatch(batch_);
    for (BatchStep& step : steps) {
      bool saves_game = false;
      for (std::string& word : step.words) {
        if (!word.starts_with(kSaveGame) || !IsRecord(word.substr(kSaveGame.size()))) continue;
        word = std::string(kSaveGame) + HostPath(try_.PgnFile(order_));
        saves_game = true;
      }
      if (!saves_game) continue;
      // Of several /debugfile= the last one counts; the user's own would be one file for all games.
      std::erase_if(step.words,
                    [](const std::string& word) { return word.starts_with("/debugfile="); });
      step.words.push_back("/debugfile=" + HostPath(try_.DebugFile()));
    }
    return steps;
  }

  bool IsRecord(const std::string& path) { return host_.files.FullPath(path) == order_.pgn_file; }

  /// Waits until WinBoard has ended, or ends it when it is silent for too long. False when even
  /// then it goes on.
  bool AwaitEnd(BatchId batch) {
    std::int64_t size = 0;
    TimePoint grown = host_.clock.Steady();
    std::optional<TimePoint> killed;
    while (host_.processes.IsRunning(batch)) {
      const TimePoint now = host_.clock.Steady();
      const std::int64_t size_now = DebugSize();
      if (size_now != size) grown = now;
      size = size_now;
      const bool is_silent = pace_.patience.count() > 0 && now >= grown + pace_.patience;
      if (is_silent && !killed) {
        EndGame(batch);
        killed = now;
      }
      if (killed && now >= *killed + pace_.killing) return false;
      std::optional<TimePoint> next;
      if (killed) next = *killed + pace_.killing;
      if (!killed && pace_.patience.count() > 0) next = now + pace_.look;
      events_.WaitUntil(next);
    }
    return true;
  }

  void EndGame(BatchId batch) {
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(pace_.patience).count();
    const std::string why =
        Format("the debug file told nothing for %lld minutes, the game was ended",
               static_cast<long long>(minutes));
    Say(why);
    const auto file = host_.files.Append(try_.ErrorFile(order_));
    if (file && file->Write("tarvendo --play: " + why + "\n")) file->Close();
    host_.processes.EndBatch(batch);
  }

  std::int64_t DebugSize() {
    const auto stamp = host_.files.Stamp(try_.DebugFile());
    return stamp ? stamp->size : 0;
  }

  JobEnd NameRecord() {
    const std::string record = try_.PgnFile(order_);
    const auto text = ReadFile(host_.files, record, kGameFileLimit);
    if (!text || text->empty()) {
      Say("WinBoard has left no record of the game");
      return JobEnd::kNoRecord;
    }
    if (!IsStillAwaited()) return NotPlayed("the game is not awaited any more");
    if (!Sync(record) || !host_.files.RenameDurably(record, order_.pgn_file)) {
      Say("cannot write '" + order_.pgn_file + "'");
      return JobEnd::kNoRecord;
    }
    return JobEnd::kRecorded;
  }

  /// The scheduler may have taken this machine for lost, and the game may have been played again.
  bool IsStillAwaited() {
    if (!ReadOrder(order_.claim_file)) return false;
    const std::vector<JobTry> tries = FindTries(host_.files, order_);
    return std::none_of(tries.begin(), tries.end(), [&](const JobTry& other) {
      return other.job == try_.job && other.restarts > try_.restarts;
    });
  }

  bool Sync(const std::string& path) {
    const auto file = host_.files.Append(path);
    return file && file->Sync() && file->Close();
  }

  Host host_;
  JobSurroundings job_;
  JobPace pace_;
  const std::function<void(const std::string&)>& say_;
  EventQueue events_;
  GameOrder order_;
  std::string batch_;
  JobTry try_;
};

long long NumberOf(const char* variable) {
  const char* const text = std::getenv(variable);
  return text == nullptr ? 0 : std::atoll(text);
}

}  // namespace

JobEnd PlayJob(const Host& host, const JobSurroundings& job, const std::string& claim_file,
               const JobPace& pace, const std::function<void(const std::string&)>& say) {
  return JobPlayer(host, job, pace, say).Play(claim_file);
}

JobSurroundings JobOfEnvironment() {
  const char* const name = std::getenv("SLURM_JOB_NAME");
  return {name == nullptr ? "" : name, NumberOf("SLURM_JOB_ID"),
          static_cast<int>(NumberOf("SLURM_RESTART_COUNT"))};
}

}  // namespace tarvendo
