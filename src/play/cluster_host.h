#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "play/aside_command.h"
#include "play/cluster_job.h"
#include "play/game_host.h"
#include "play/local_host.h"
#include "play/slurm.h"

namespace tarvendo {

/// Hands games to Slurm: a game is a job with a name of its own, which the claim tells before the
/// job is submitted. What has become of all jobs is asked together, and told apart by these names.
/// Says itself, on the console, when Slurm does not answer or takes no more. Games of an earlier
/// process that are played on this machine are watched as well.
class ClusterHost : public GameHost {
 public:
  /// `places` is how many games are queued or played at once. `on_news` as for LocalHost.
  ClusterHost(const Host& host, const Pace& pace, const ClusterPace& cluster_pace,
              const SlurmOptions& options, int places, std::function<void()> on_news);
  /// Jobs go on, and a submission that is under way does too.
  ~ClusterHost() override;
  ClusterHost(const ClusterHost&) = delete;
  ClusterHost& operator=(const ClusterHost&) = delete;

  int FreeSlots() const override;
  std::optional<Obstacle> FindObstacle(const std::string& files_path, TimePoint now) override;
  std::string DebugFileFor(const std::string& files_path, int number) const override;
  void Start(const GameOrder& order, std::unique_ptr<LockedFile> claim) override;
  bool AdoptsJobs() const override { return true; }
  void Adopt(const std::vector<GameOrder>& orders) override;
  std::vector<GameOutcome> TakeEnded(TimePoint now) override;
  std::vector<GameOrder> TakeSilent(TimePoint now) override;
  std::optional<TimePoint> NextLook() const override;

 private:
  std::string NextStamp();
  void TakeLocal(TimePoint now);

  // Submitting.
  std::size_t SubmissionsAllowed(TimePoint now) const;
  void Submit(TimePoint now);
  void SubmitOne(ClusterJob& job);
  void TakeSubmissions(TimePoint now);
  void TakeSubmission(ClusterJob& job, TimePoint now);
  void Accept(ClusterJob& job, const std::string& number);
  void SubmitAgain(ClusterJob& job);
  void Refuse(ClusterJob& job, TimePoint now);
  bool HasJobElsewhere() const;

  // Asking.
  bool HasQuestion() const;
  void Ask(TimePoint now);
  void TakeAnswer(TimePoint now);
  void TellThatNobodyAnswers(const std::string& what);
  void Judge(const SlurmQueue& queue, int question, TimePoint now);
  bool IsRecordLikely(ClusterJob& job, TimePoint now) const;
  void NoteMissing(ClusterJob& job, TimePoint now);

  // Ending.
  void End(ClusterJob& job, TimePoint now);
  void LookForRecords(TimePoint now);
  void Finish(ClusterJob& job, GameEnd end, std::string reason);
  void ForgetFinished();

  Host host_;
  Pace pace_;
  ClusterPace cluster_pace_;
  SlurmOptions options_;
  std::size_t places_;
  LocalHost local_;
  std::size_t local_games_ = 0;
  std::map<int, ClusterJob> jobs_;  ///< by the number of the game
  std::deque<int> to_submit_;
  std::vector<int> submitting_;
  std::vector<int> ended_;  ///< whose records are awaited
  TimePoint records_looked_;
  std::vector<int> finished_;  ///< whose outcomes are told, and which are not forgotten yet
  std::vector<GameOutcome> outcomes_;
  std::unique_ptr<AsideCommand> question_;
  int questions_ = 0;  ///< so far
  TimePoint ask_at_;
  TimePoint submit_at_;
  bool is_answering_ = true;
  bool has_accepted_ = false;  ///< the last submission whose end is known
  bool is_refusal_told_ = false;
  std::string directory_;  ///< that of the last game, for what squeue says
  int stamps_ = 0;
};

}  // namespace tarvendo
