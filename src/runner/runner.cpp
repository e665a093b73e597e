#include "runner/runner.h"

#include <algorithm>
#include <functional>
#include <system_error>
#include <utility>

#include "platform/faults.h"
#include "play/cluster_host.h"
#include "play/local_host.h"
#include "runner/reporter.h"
#include "runner/tourney_room.h"

namespace tarvendo {

namespace {

std::optional<TimePoint> TheEarlierOf(const std::optional<TimePoint>& a,
                                      const std::optional<TimePoint>& b) {
  return a && b ? std::min(*a, *b) : a ? a : b;
}

}  // namespace

RunnerOptions ManyGames(int places) {
  RunnerOptions options;
  options.places = places;
  options.game.awaits_processes = true;
  options.game.look = std::chrono::milliseconds(100);
  options.play.between_games = std::chrono::milliseconds(0);
  options.play.referee = RefereePace::kInGroups;
  options.play.failures_allowed = 5;
  return options;
}

namespace {

std::unique_ptr<GameHost> MakeGameHost(const Host& host, const RunnerOptions& options,
                                       std::function<void()> on_news) {
  if (!options.slurm) {
    return std::make_unique<LocalHost>(host, options.game, options.places, std::move(on_news));
  }
  return std::make_unique<ClusterHost>(host, options.game, ClusterPace(), *options.slurm,
                                       options.places, std::move(on_news));
}

}  // namespace

Runner::Runner(TourneyRoom& room, const RunnerOptions& options)
    : room_(room),
      events_(room.host.clock),
      bell_(MakeDoorbell()),
      host_(MakeGameHost(room.host, options, [this] { events_.Post(Event::kHostNews); })),
      loop_(room, *host_, options.play, options.openings),
      reporter_(options.reporter) {}

Runner::~Runner() {
  room_.shared.SetChangeListener({});
  events_.Post(Event::kEnd);
  if (thread_.joinable()) thread_.join();
}

bool Runner::StartThread() {
  try {
    thread_ = std::thread([this] { RunPasses(); });
  } catch (const std::system_error&) {
    const std::lock_guard guard(mutex_);
    has_died_ = true;
    return false;
  }
  return true;
}

void Runner::NoteWhatIsUnderWay(std::uint64_t pass) {
  const std::lock_guard guard(mutex_);
  counts_ = {loop_.GamesUnderWay(), loop_.GamesJudged()};
  if (refusal_.empty() && !loop_.Refusal().empty()) {
    refusal_ = loop_.Refusal();
    RequestTermination();
    bell_->Ring();
  }
  if (!loop_.IsIdle()) return;
  idle_pass_ = pass;
  idle_changes_ = loop_.SwitchChangesSeen();
  bell_->Ring();
}

void Runner::RunPasses() {
  const bool ended_well = CallGuarded([&] {
    room_.shared.SetChangeListener([this] { events_.Post(Event::kTourneyChanged); },
                                   std::this_thread::get_id());
    std::optional<TimePoint> next;
    do {
      std::uint64_t pass = 0;
      {
        const std::lock_guard guard(mutex_);
        pass = ++passes_begun_;
      }
      next = loop_.Pass();
      NoteWhatIsUnderWay(pass);
      if (reporter_ != nullptr) next = TheEarlierOf(next, reporter_->Pass());
    } while (!events_.WaitUntil(next).Has(Event::kEnd));
    loop_.SettleAtEnd();
  });
  if (ended_well) return;
  room_.shared.Break();
  {
    // Before anybody is asked to end, so that he knows that it was not the user who asked.
    const std::lock_guard guard(mutex_);
    has_died_ = true;
  }
  RequestTermination();
  bell_->Ring();
}

bool Runner::IsDone(std::uint64_t asked) {
  if (TerminationRequested()) return true;
  std::uint64_t changes = 0;
  bool has_start_time = false;
  {
    const Hold hold = room_.shared.Take();
    changes = hold->Switch().Changes();
    has_start_time = hold->Switch().Get().start_time != 0;
  }
  const std::lock_guard guard(mutex_);
  // A pass that was idle before the switch was moved says nothing of what comes now.
  const bool is_idle = idle_pass_ > asked && idle_changes_ == changes;
  return has_died_ || (is_idle && !has_start_time);
}

std::string Runner::Refusal() {
  const std::lock_guard guard(mutex_);
  return refusal_;
}

Runner::Counts Runner::CountGames() {
  const std::lock_guard guard(mutex_);
  return counts_;
}

bool Runner::HasDied() {
  const std::lock_guard guard(mutex_);
  return has_died_;
}

void Runner::AwaitIdle(const std::function<std::chrono::milliseconds()>& look) {
  std::uint64_t asked = 0;
  {
    const std::lock_guard guard(mutex_);
    asked = passes_begun_;
  }
  events_.Post(Event::kTourneyChanged);
  auto next_look = std::chrono::steady_clock::now();
  while (!IsDone(asked)) {
    if (!look) {
      bell_->Await(Doorbell::kForEver);
      continue;
    }
    const auto now = std::chrono::steady_clock::now();
    if (now >= next_look) next_look = now + look();
    bell_->Await(std::chrono::ceil<std::chrono::milliseconds>(next_look - now));
  }
}

}  // namespace tarvendo
