// What does a game cost the program, in time and memory, when a cluster plays it? The program's own
// loop, its host for Slurm and the files on a real disk, with a Slurm that is simulated in memory
// and a clock that passes by the waits: so a tourney's life of weeks takes only as long as the
// program itself works.
//
//     cluster_simulation --games 1000000 --played 500000 --play 20000 --at-once 10000 --directory D
//
// A round robin of fifty engines with about --games games of which --played have their results
// already; --play more are played, --at-once of them queued or played at a time, of --mean seconds
// each. What the simulation itself works is not counted.

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <map>
#include <string>

#include "base/log.h"
#include "play/cluster_host.h"
#include "play/slurm.h"
#include "runner/play_loop.h"
#include "runner/runner.h"
#include "runner/tourney_room.h"
#include "simulated_slurm.h"
#include "tourney/round_robin.h"
#include "tourney/runner_switch_commands.h"

namespace tarvendo {
namespace {

using std::chrono::milliseconds;

constexpr int kEngines = 50;
constexpr std::int64_t kSbatch = 9;    ///< milliseconds until a real one has answered
constexpr std::int64_t kSqueue = 100;  ///< likewise, with many jobs

struct Wishes {
  long games = 1225;
  long played = 0;
  long play = 0;  ///< 0: all
  long at_once = 1000;
  long mean = 300;  ///< seconds
  std::string directory = "/tmp/tarvendo-simulation";
};

double SecondsOf(clockid_t clock) {
  timespec time{};
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Counts by the clock and by the processor what is worked while it lives.
class Stopwatch {
 public:
  Stopwatch(double& clock, double& processor) : clock_(clock), processor_(processor) {}
  ~Stopwatch() {
    clock_ += SecondsOf(CLOCK_MONOTONIC) - clock_start_;
    processor_ += SecondsOf(CLOCK_PROCESS_CPUTIME_ID) - processor_start_;
  }
  Stopwatch(const Stopwatch&) = delete;
  Stopwatch& operator=(const Stopwatch&) = delete;

 private:
  double& clock_;
  double& processor_;
  double clock_start_ = SecondsOf(CLOCK_MONOTONIC);
  double processor_start_ = SecondsOf(CLOCK_PROCESS_CPUTIME_ID);
};

/// Passes by what the program itself works, in processor's time so that nobody else's work counts,
/// and by its waits, which take no time.
class PassingClock : public Clock {
 public:
  std::int64_t Now() override { return 1800000000 + Milliseconds() / 1000; }
  TimePoint Steady() override { return TimePoint(milliseconds(Milliseconds())); }
  bool Wait(std::condition_variable& /*wake*/, std::unique_lock<std::mutex>& /*held*/,
            milliseconds span, const std::function<bool()>& done) override {
    skipped_ += static_cast<double>(span.count()) / 1000;
    return done();
  }

  std::int64_t Milliseconds() {
    const double passed =
        SecondsOf(CLOCK_PROCESS_CPUTIME_ID) - begin_ - simulation_processor + skipped_;
    return 1000000 + static_cast<std::int64_t>(passed * 1000);
  }
  void SkipTo(std::int64_t moment) {
    skipped_ += static_cast<double>(std::max<std::int64_t>(moment - Milliseconds(), 0)) / 1000;
  }

  // Seconds that the simulation itself has taken.
  double simulation_clock = 0;
  double simulation_processor = 0;

 private:
  double begin_ = SecondsOf(CLOCK_PROCESS_CPUTIME_ID);
  double skipped_ = 0;
};

/// Runs what the program hands to the shell: sbatch and squeue of the simulated Slurm, which are
/// done at once and have ended some time later.
class SimulatedProcesses : public Processes {
 public:
  SimulatedProcesses(PassingClock& clock, SimulatedSlurm& slurm) : clock_(clock), slurm_(slurm) {}

  std::optional<BatchId> StartShell(const std::string& line, const std::string& output,
                                    const LockedFile* /*lock*/) override {
    const std::int64_t now = clock_.Milliseconds();
    const Stopwatch watch(clock_.simulation_clock, clock_.simulation_processor);
    std::string said = "no such command";
    const int code = Run(line, now, said);
    std::ofstream(HostPath(output)) << said << "\ntarvendo-end " << code << "\n";
    return ++last_;
  }

  bool IsRunning(BatchId batch) override {
    const auto end = ends_.find(batch);
    if (end == ends_.end()) return false;
    if (clock_.Milliseconds() < end->second) return true;
    ends_.erase(end);
    return false;
  }

  /// When the next of the commands ends; a far moment when none runs.
  std::int64_t NextEnd() const {
    std::int64_t next = INT64_MAX;
    for (const auto& [id, end] : ends_)
      next = std::min(next, end);
    return next;
  }

  int questions = 0;

  // None of these is for a cluster.
  ShellOutcome RunShell(const std::string&, const std::string&) override { std::abort(); }
  std::optional<BatchId> StartBatch(const std::string&, const LockedFile*) override {
    std::abort();
  }
  std::optional<BatchId> StartSteps(const std::vector<BatchStep>&) override { std::abort(); }
  void EndBatch(BatchId) override { std::abort(); }
  void EndHolders(const std::string&) override { std::abort(); }
  void SetEndListener(std::function<void()>) override {}
  std::string ShellWords(const std::vector<std::string>&) override { std::abort(); }

 private:
  int Run(const std::string& line, std::int64_t now, std::string& said) {
    const std::vector<std::string> words = SplitSlurmWords(line);
    const auto end = std::find(words.begin(), words.end(), "2>&1;");
    const auto submits = std::find(words.begin(), end, "sbatch");
    const auto asks = std::find(words.begin(), end, "squeue");
    if (submits == end && asks == end) return 127;
    ends_[last_ + 1] = now + (submits != end ? kSbatch : kSqueue);
    if (submits != end) {
      // Behind "$@", which is --requeue.
      return slurm_.Submit({submits + 2, end}, now, said);
    }
    ++questions;
    said.clear();
    return slurm_.Tell({asks + 1, end}, now, said);
  }

  PassingClock& clock_;
  SimulatedSlurm& slurm_;
  std::map<BatchId, std::int64_t> ends_;
  BatchId last_ = 0;
};

long MegabytesOf(const std::string& field) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(field + ":")) return std::atol(line.c_str() + field.size() + 1) / 1024;
  }
  return 0;
}

/// A round robin of engines, the first games of it played.
void MakeTourney(Tourney& tourney, FileSystem& files, const Wishes& wishes) {
  const auto settings = tourney.ChangeSettings();
  settings->type = kRoundRobin;
  settings->files_path = wishes.directory + "/";
  settings->pgn_file = wishes.directory + "/all.pgn";
  settings->sub_rounds =
      std::max(1, static_cast<int>(wishes.games / (kEngines * (kEngines - 1) / 2)));
  settings->auto_run = 1;
  settings->auto_save = 1;
  for (int number = 1; number <= kEngines; ++number) {
    Player player;
    player.texts.name = "Engine " + std::to_string(number);
    player.texts.program_exe = "engine" + std::to_string(number);
    player.number = number;
    tourney.ChangeParticipants().push_back(player);
  }
  CreateRRGames(tourney, files);
  long to_do = wishes.played;
  for (Game& game : tourney.ChangeGames()) {
    if (to_do-- <= 0) break;
    game.status = kReady;
    game.result =
        std::array{kWhiteWins, kBlackWins, kDraw}[static_cast<std::size_t>(game.number % 3)];
  }
}

class Simulation {
 public:
  explicit Simulation(const Wishes& wishes)
      : wishes_(wishes),
        slurm_(static_cast<int>(wishes.at_once), wishes.mean * 1000,
               [](const SimulatedSlurm::Job& job) { return PlaySimulatedGame(job); }),
        processes_(clock_, slurm_) {}

  int Run() {
    std::filesystem::create_directories(wishes_.directory);
    TheLog = &log_;
    log_.AddFile(wishes_.directory + "/Tarvendo.log");
    TourneyRoom room(machine_);
    {
      const Hold hold = room.shared.Take();
      MakeTourney(*hold, *files_, wishes_);
      room.file.With(hold).SetName(wishes_.directory + "/tourney.ini");
      hold->ChangeSwitch()->SetRunning(true);
      games_ = static_cast<long>(hold->Games().size());
      if (wishes_.play == 0) wishes_.play = games_;
    }
    begun_with_ = MegabytesOf("VmRSS");
    const bool is_well = Play(room);
    TheLog = nullptr;
    return is_well ? EXIT_SUCCESS : EXIT_FAILURE;
  }

 private:
  bool Play(TourneyRoom& room) {
    const RunnerOptions options = ManyGames(static_cast<int>(wishes_.at_once));
    ClusterHost host(machine_, options.game, ClusterPace(), SlurmOptions{"/opt/tarvendo", {}, 0},
                     options.places, [] {});
    PlayLoop loop(room, host, options.play);
    const Work filling = Measure(loop, [&] {
      return slurm_.Submissions() < std::min(wishes_.at_once, games_ - wishes_.played);
    });
    std::printf("%ld games, %ld played before, %ld at once\n", games_, wishes_.played,
                wishes_.at_once);
    Tell("until all places are taken", slurm_.Submissions(), filling);
    const auto judged = static_cast<long>(loop.GamesJudged());
    const Work playing = Measure(
        loop, [&] { return static_cast<long>(loop.GamesJudged()) - judged < wishes_.play; });
    const long played = static_cast<long>(loop.GamesJudged()) - judged;
    Tell("then", played, playing);
    std::printf("  %d questions, up to %zu jobs told; memory: %ld MB before, %ld MB at most\n",
                processes_.questions, slurm_.MostTold(), begun_with_, MegabytesOf("VmHWM"));
    return (played >= wishes_.play || loop.IsIdle()) && slurm_.Failures() == 0;
  }

  /// What has been worked, in seconds, and how many have passed meanwhile.
  struct Work {
    double clock = 0;
    double processor = 0;
    double passed = 0;
    long passes = 0;
  };

  Work Measure(PlayLoop& loop, const std::function<bool()>& goes_on) {
    Work work;
    const std::int64_t begin = clock_.Milliseconds();
    const double simulation_clock = clock_.simulation_clock;
    const double simulation_processor = clock_.simulation_processor;
    {
      const Stopwatch watch(work.clock, work.processor);
      for (; goes_on() && !loop.IsIdle(); ++work.passes) {
        const auto next = loop.Pass();
        const std::int64_t due = next ? next->time_since_epoch().count() : INT64_MAX;
        const std::int64_t moment = std::min(due, processes_.NextEnd());
        if (moment == INT64_MAX) break;
        clock_.SkipTo(moment);
      }
    }
    work.clock -= clock_.simulation_clock - simulation_clock;
    work.processor -= clock_.simulation_processor - simulation_processor;
    work.passed = static_cast<double>(clock_.Milliseconds() - begin) / 1000;
    return work;
  }

  static void Tell(const char* what, long games, const Work& work) {
    std::printf(
        "  %s: %ld games in %.0f seconds; each %.3f ms of the processor, %.3f by the clock; busy "
        "%.1f of 100, %ld passes\n",
        what, games, work.passed, work.processor * 1000 / static_cast<double>(std::max(games, 1L)),
        work.clock * 1000 / static_cast<double>(std::max(games, 1L)),
        100 * work.processor / std::max(work.passed, 0.001), work.passes);
    std::fflush(stdout);
  }

  Wishes wishes_;
  PassingClock clock_;
  SimulatedSlurm slurm_;
  SimulatedProcesses processes_;
  std::unique_ptr<FileSystem> files_ = MakeFileSystem();
  std::unique_ptr<FileWatches> watches_ = MakeFileWatches();
  Host machine_{*files_, processes_, clock_, *watches_};
  Log log_{machine_, [](const std::string&) {}, [](const std::string&) {}};
  long games_ = 0;
  long begun_with_ = 0;
};

bool TakeNumber(const std::string& word, const std::string& value, Wishes& wishes) {
  const std::map<std::string, long*> numbers = {{"--games", &wishes.games},
                                                {"--played", &wishes.played},
                                                {"--play", &wishes.play},
                                                {"--at-once", &wishes.at_once},
                                                {"--mean", &wishes.mean}};
  const auto number = numbers.find(word);
  if (number == numbers.end()) return false;
  *number->second = std::atol(value.c_str());
  return true;
}

}  // namespace
}  // namespace tarvendo

int main(int count, char** words) {
  tarvendo::Wishes wishes;
  for (int i = 1; i + 1 < count; i += 2) {
    if (tarvendo::TakeNumber(words[i], words[i + 1], wishes)) continue;
    if (std::string(words[i]) != "--directory") {
      std::fprintf(stderr, "unknown: %s\n", words[i]);
      return EXIT_FAILURE;
    }
    wishes.directory = words[i + 1];
  }
  return tarvendo::Simulation(wishes).Run();
}
