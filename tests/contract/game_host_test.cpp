// What a game host promises, whatever happens to the games: held against every host there is, with
// random histories on a machine made of memory.

#include "play/game_host.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <ostream>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "fakes/captured_log.h"
#include "fakes/fake_slurm.h"
#include "play/claim.h"
#include "play/cluster_host.h"
#include "play/local_host.h"
#include "play/place.h"

namespace tarvendo {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr int kSteps = 3000;
constexpr int kHistories = 12;
constexpr const char* kFilesPath = "/t\\";
constexpr const char* kHeader = "one\ntwo\nthree\nfour\nfive\n";
constexpr const char* kEnd = "GameEnds(27, White mates, 6)\n";
constexpr const char* kRecord = "[Result \"1-0\"]\n\n1. e4 1-0\n\n";

/// A host, and how many games at a time it is asked for.
struct HostKind {
  std::string name;
  int places;
  std::function<std::unique_ptr<GameHost>(const Host&, const Pace&, int)> make;
  bool is_cluster = false;    ///< its games are Slurm's jobs
  int least_outcomes = 200;   ///< fewer would mean that too little has happened
  std::vector<GameEnd> ends;  ///< that its games must have come to in all histories together
};

std::unique_ptr<GameHost> MakeLocal(const Host& machine, const Pace& pace, int places) {
  return std::make_unique<LocalHost>(machine, pace, places, [] {});
}

std::unique_ptr<GameHost> MakeCluster(const Host& machine, const Pace& pace, int places) {
  return std::make_unique<ClusterHost>(machine, pace, ClusterPace(),
                                       SlurmOptions{"/opt/tarvendo", {}, 0}, places, [] {});
}

/// A game that the host has accepted, and the WinBoard that plays it.
struct Accepted {
  GameOrder order;
  BatchId batch = 0;  ///< 0 for one that was adopted or could not be started
  bool is_adopted = false;
};

/// One host, its games, and everything that may happen to them.
class History {
 public:
  History(const HostKind& kind, unsigned seed)
      : is_cluster_(kind.is_cluster), places_(kind.places), dice_(seed) {
    machine_.files.PutDirectory("/t");
    machine_.watches.gives_notices = Happens(1, 2);
    machine_.processes.on_batch = [this](const std::string& batch) { return Begin(batch); };
    machine_.processes.on_aside = [this](const std::string& line) { return slurm_.Answer(line); };
    slurm_loses_ = is_cluster_ && Happens(1, 2);
    pace_.awaits_processes = kind.places > 1;
    pace_.silence = minutes(1);
    pace_.patience = Happens(1, 2) ? minutes(2) : minutes(0);
    host_ = kind.make(machine_.host, pace_, kind.places);
  }

  void Run() {
    AdoptSome();
    for (int step = 0; step < kSteps && !::testing::Test::HasFailure(); ++step) {
      DoSomething();
      CheckSlots();
    }
    ComeToAnEnd();
    CheckStarts();
  }

  int Outcomes() const { return outcomes_; }
  const std::set<GameEnd>& Ends() const { return ends_; }

 private:
  bool Happens(int times, int of) { return std::uniform_int_distribution(1, of)(dice_) <= times; }

  void DoSomething() {
    switch (std::uniform_int_distribution(0, 7)(dice_)) {
      case 0:
      case 1:
        return StartOne();
      case 2:
        return machine_.clock.Advance(milliseconds(std::uniform_int_distribution(
            0, Happens(1, 20) ? 400000 : (is_cluster_ ? 20000 : 5000))(dice_)));
      case 3:
        return TakeEnded();
      case 4:
        return TakeSilent();
      default:
        return LetOneWinBoardAct();
    }
  }

  GameOrder NewOrder() {
    GameOrder order;
    order.number = ++last_number_;
    order.white = "Alpha";
    order.black = "Beta";
    const std::string stem = "/t/g" + std::to_string(order.number);
    order.batch_file = stem + ".BAT";
    order.pgn_file = stem + ".PGN";
    order.claim_file = stem + ".run";
    machine_.files.Put(order.batch_file, "@winboard.exe ");
    return order;
  }

  /// An earlier process has begun them, perhaps more than there are places now.
  void AdoptSome() {
    std::vector<GameOrder> orders;
    const int count = std::uniform_int_distribution(0, places_ + 2)(dice_);
    for (int i = 0; i < count; ++i) {
      GameOrder order = NewOrder();
      const bool is_first = i == 0 && !is_cluster_;
      order.debug_file = machine_.files.FullPath(is_first ? FirstDebugFile(kFilesPath)
                                                          : OwnDebugFile(kFilesPath, order.number));
      if (is_cluster_ && Happens(3, 4)) {
        LetJobBeThere(order);
      } else {
        if (!is_first) PreparePlace(machine_.files, order);
        machine_.files.HoldLock(order.claim_file, order.claim_file);
      }
      accepted_[order.number] = {order, 0, true};
      adopted_.insert(order.number);
      orders.push_back(order);
    }
    host_->Adopt(orders);
    CheckSlots();
  }

  /// An earlier process has submitted it; perhaps Slurm has forgotten it, or never got it.
  void LetJobBeThere(GameOrder& order) {
    order.job = SlurmJobName("/t", order.number, "1");
    machine_.files.Put(order.claim_file, ClaimText(order));
    if (Happens(1, 3)) return;
    slurm_.jobs.push_back({1000 + order.number, order.job, "RUNNING", "None", "", "", {}});
  }

  void StartOne() {
    const bool was_free = host_->FreeSlots() > 0;
    const auto obstacle = host_->FindObstacle(kFilesPath, Now());
    // To look for an obstacle may find that a place has become free.
    if (obstacle || host_->FreeSlots() == 0) {
      EXPECT_TRUE(obstacle) << "no place and no obstacle";
      return;
    }
    EXPECT_TRUE(was_free || host_->FreeSlots() > 0);
    GameOrder order = NewOrder();
    order.debug_file = host_->DebugFileFor(kFilesPath, order.number);
    for (const auto& [number, other] : accepted_)
      EXPECT_NE(order.debug_file, other.order.debug_file) << "two games in one debug file";
    const int slots = host_->FreeSlots();
    can_start_ = !Happens(1, 10);
    begun_ = 0;
    host_->Start(order, MakeClaim(machine_.files, order));
    EXPECT_EQ(host_->FreeSlots(), slots - 1);
    accepted_[order.number] = {order, begun_, false};
    ++starts_;
  }

  /// A batch file is started.
  bool Begin(const std::string&) {
    if (can_start_) begun_ = machine_.processes.LastBatch();
    return can_start_;
  }

  void LetOneWinBoardAct() {
    if (accepted_.empty()) return;
    auto which = accepted_.begin();
    std::advance(which, std::uniform_int_distribution<std::size_t>(0, accepted_.size() - 1)(dice_));
    const GameOrder& order = which->second.order;
    if (is_cluster_ && !(which->second.is_adopted && order.job.empty())) return LetSlurmAct(order);
    switch (std::uniform_int_distribution(0, 6)(dice_)) {
      case 0:
      case 1:
        return Write(order, kHeader);
      case 2:
        return Write(order, "a move\n");
      case 3:
        machine_.files.Put(order.pgn_file, kRecord);
        return Write(order, kEnd);
      case 4:
        return Write(order, kEnd);
      case 5:
        return Happens(1, 2) ? machine_.processes.LeaderEnds(which->second.batch)
                             : EndProcesses(which->second);
      default:
        return machine_.watches.Notify(order.debug_file);
    }
  }

  void LetSlurmAct(const GameOrder& order) {
    FakeSlurm::Job* const job = slurm_.Find(order.number);
    switch (std::uniform_int_distribution(0, 9)(dice_)) {
      case 0:
        slurm_.answers = Happens(4, 5);
        return;
      case 1:
        slurm_.garbage = Happens(4, 5) ? "" : "\x02 garbage";
        return;
      case 2:
        slurm_.refusal = Happens(2, 3) ? "" : "sbatch: error: limit";
        return;
      case 3:
        slurm_.loses_answers = slurm_loses_ && Happens(1, 2);
        return;
      case 4:
        // A job is forgotten some time behind its end.
        if (!slurm_loses_ && job != nullptr && job->state != "RUNNING") slurm_.Forget(order.number);
        return;
      default:
        if (job != nullptr) MoveOn(*job, order);
    }
  }

  void MoveOn(FakeSlurm::Job& job, const GameOrder& order) {
    static const std::vector<std::string> kStates = {
        "PENDING", "RUNNING",   "REQUEUED", "COMPLETING", "COMPLETED",
        "FAILED",  "CANCELLED", "TIMEOUT",  "NODE_FAIL",  "A_NEWER_ONE"};
    job.state = kStates[std::uniform_int_distribution<std::size_t>(0, kStates.size() - 1)(dice_)];
    const bool leaves_record = job.state == "COMPLETED" ? Happens(4, 5) : Happens(1, 20);
    if (leaves_record) machine_.files.Put(order.pgn_file, kRecord);
  }

  /// All jobs there are end, and those that are submitted from now on do at once.
  void LetSlurmComeToAnEnd() {
    slurm_.answers = true;
    slurm_.garbage.clear();
    slurm_.refusal.clear();
    for (FakeSlurm::Job& job : slurm_.jobs)
      job.state = "CANCELLED";
  }

  void Write(const GameOrder& order, const std::string& text) {
    machine_.files.PutMore(order.debug_file, text);
    machine_.watches.Notify(order.debug_file);
  }

  void EndProcesses(const Accepted& game) {
    if (game.is_adopted) return machine_.files.EndProcess(game.order.claim_file);
    machine_.processes.EndOf(game.batch);
  }

  void TakeEnded() {
    for (const GameOutcome& outcome : host_->TakeEnded(Now())) {
      const auto game = accepted_.find(outcome.order.number);
      ASSERT_NE(game, accepted_.end()) << "a second outcome of game " << outcome.order.number;
      EXPECT_TRUE(IsSameGame(game->second.order, outcome.order));
      EXPECT_EQ(outcome.pgn.has_value(), machine_.files.Has(outcome.order.pgn_file));
      ends_.insert(outcome.end);
      if (outcome.IsGivenBack() && !game->second.is_adopted) ++given_back_;
      ++outcomes_;
      stragglers_.push_back(game->second);
      accepted_.erase(game);
      RemovePlace(machine_.files, outcome.order);
      for (const std::string& name : {outcome.order.batch_file, outcome.order.pgn_file,
                                      outcome.order.claim_file, outcome.order.debug_file})
        machine_.files.Remove(name);
      // Sooner or later they end, or nobody could play any more.
      if (Happens(9, 10)) EndStragglers();
    }
  }

  void EndStragglers() {
    for (const Accepted& game : stragglers_)
      EndProcesses(game);
    stragglers_.clear();
  }

  void TakeSilent() {
    for (const GameOrder& order : host_->TakeSilent(Now()))
      EXPECT_TRUE(accepted_.contains(order.number)) << order.number;
  }

  void CheckSlots() {
    EXPECT_GE(host_->FreeSlots(), 0);
    EXPECT_LE(host_->FreeSlots(), places_);
    EXPECT_LE(host_->FreeSlots(), std::max(0, places_ - static_cast<int>(accepted_.size())));
    EXPECT_TRUE(accepted_.empty() || host_->NextLook()) << "nobody would ever look again";
  }

  /// All processes end, and the host is looked at when it asks for it, and not more often.
  void ComeToAnEnd() {
    for (const auto& [number, game] : accepted_)
      EndProcesses(game);
    EndStragglers();
    const auto is_awaited = [&] {
      return !accepted_.empty() || (is_cluster_ && host_->NextLook());
    };
    for (int looks = 0; is_awaited() && !::testing::Test::HasFailure(); ++looks) {
      LetSlurmComeToAnEnd();
      TakeEnded();
      ASSERT_LT(looks, 10000) << "no outcome of game " << accepted_.begin()->first;
      const auto next = host_->NextLook();
      if (next && *next > Now()) {
        machine_.clock.Advance(*next - Now());
      } else if (next) {
        machine_.clock.Advance(milliseconds(1));
      }
    }
    EndStragglers();
    host_->FindObstacle(kFilesPath, Now());
    EXPECT_EQ(host_->FreeSlots(), places_);
    EXPECT_TRUE(host_->TakeEnded(Now()).empty());
    EXPECT_FALSE(host_->NextLook()) << "nothing is left to be looked at";
  }

  /// Every order was started once, and no adopted game ever.
  void CheckStarts() {
    EXPECT_EQ(static_cast<std::size_t>(outcomes_), starts_ + adopted_.size());
    if (is_cluster_) return CheckSubmissions();
    std::set<int> started;
    for (const std::string& batch : machine_.processes.Batches()) {
      const std::size_t digits = batch.rfind('g') + 1;
      const int number = std::stoi(batch.substr(digits));
      EXPECT_TRUE(started.insert(number).second) << "game " << number << " was started twice";
      EXPECT_FALSE(adopted_.contains(number)) << "game " << number << " was adopted";
    }
    EXPECT_EQ(started.size(), starts_);
  }

  void CheckSubmissions() {
    std::set<int> submitted;
    for (const std::string& name : slurm_.submitted) {
      const int number = std::stoi(name.substr(name.find("-g") + 2));
      EXPECT_TRUE(submitted.insert(number).second) << "game " << number << " was submitted twice";
      EXPECT_FALSE(adopted_.contains(number)) << "game " << number << " was adopted";
    }
    // One that was submitted and forgotten before it began is given back, too.
    EXPECT_LE(submitted.size(), starts_);
    EXPECT_GE(submitted.size() + given_back_, starts_);
  }

  TimePoint Now() { return machine_.clock.Steady(); }

  CapturedLog machine_;
  FakeSlurm slurm_;
  bool slurm_loses_ = false;  ///< submissions may seem to fail; else ended jobs may be forgotten
  bool is_cluster_;
  int places_;
  Pace pace_;
  std::mt19937 dice_;
  std::unique_ptr<GameHost> host_;
  std::map<int, Accepted> accepted_;  ///< without an outcome so far, by number
  std::set<int> adopted_;
  std::vector<Accepted> stragglers_;  ///< their outcome has come, and their processes may still run
  std::set<GameEnd> ends_;
  std::size_t starts_ = 0;
  std::size_t given_back_ = 0;  ///< of those
  int outcomes_ = 0;
  int last_number_ = 0;
  bool can_start_ = true;
  BatchId begun_ = 0;
};

/// GoogleTest shows a parameter by its bytes otherwise.
std::ostream& operator<<(std::ostream& out, const HostKind& kind) {
  return out << kind.name;
}

class GameHosts : public ::testing::TestWithParam<HostKind> {};

TEST_P(GameHosts, GiveOneOutcomeForEachOrderWhateverHappensAndStartNoAdoptedGame) {
  int outcomes = 0;
  std::set<GameEnd> ends;
  for (unsigned seed = 1; seed <= kHistories && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    History history(GetParam(), seed);
    history.Run();
    outcomes += history.Outcomes();
    ends.insert(history.Ends().begin(), history.Ends().end());
  }
  EXPECT_GT(outcomes, GetParam().least_outcomes) << "too little has happened";
  for (const GameEnd end : GetParam().ends)
    EXPECT_TRUE(ends.contains(end)) << "no game has ended in the way " << static_cast<int>(end);
}

const std::vector<GameEnd> kLocalEnds = {GameEnd::kEnded, GameEnd::kNoSignOfLife,
                                         GameEnd::kDiedSilently, GameEnd::kOutOfPatience,
                                         GameEnd::kNotStarted};
const std::vector<GameEnd> kLonelyEnds = {GameEnd::kEnded, GameEnd::kNeverBegun, GameEnd::kRefused};
// As long as others play, a game that is refused waits.
const std::vector<GameEnd> kClusterEnds = {GameEnd::kEnded, GameEnd::kNeverBegun};

INSTANTIATE_TEST_SUITE_P(
    All, GameHosts,
    ::testing::Values(HostKind{"LocalHostWithOnePlace", 1, MakeLocal, false, 200, kLocalEnds},
                      HostKind{"LocalHostWithFourPlaces", 4, MakeLocal, false, 200, kLocalEnds},
                      HostKind{"ClusterHostWithOnePlace", 1, MakeCluster, true, 100, kLonelyEnds},
                      HostKind{"ClusterHostWithFortyPlaces", 40, MakeCluster, true, 1000,
                               kClusterEnds}),
    [](const auto& kind) { return kind.param.name; });

}  // namespace
}  // namespace tarvendo
