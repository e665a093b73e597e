#include "play/local_host.h"

#include <algorithm>
#include <utility>

#include "play/claim.h"
#include "play/place.h"

namespace tarvendo {
namespace {

/// Processes that outlive their game are awaited for so long before somebody is told.
constexpr std::chrono::milliseconds kStragglersGrace{10000};

}  // namespace

LocalHost::LocalHost(const Host& host, const Pace& pace, int places, std::function<void()> on_news)
    : host_(host),
      pace_(pace),
      places_(static_cast<std::size_t>(std::max(places, 1))),
      on_news_(std::move(on_news)) {
  host_.processes.SetEndListener(on_news_);
}

LocalHost::~LocalHost() {
  host_.processes.SetEndListener({});
}

int LocalHost::FreeSlots() const {
  const std::size_t taken = games_.size() + stragglers_.size();
  return taken < places_ ? static_cast<int>(places_ - taken) : 0;
}

std::optional<Obstacle> LocalHost::FindObstacle(const std::string& files_path, TimePoint now) {
  DropEndedStragglers();
  const std::string first = FirstDebugFile(files_path);
  if (FreeSlots() == 0) return ObstacleOfFullHouse(first, now);
  if (IsFirstPlaceTaken(host_.files.FullPath(first))) return std::nullopt;
  if (!host_.files.Exists(first) || host_.files.Remove(first) || places_ > 1) return std::nullopt;
  return Obstacle{first, now};
}

/// Games that this program has started need no word; those of an earlier one do.
Obstacle LocalHost::ObstacleOfFullHouse(const std::string& first_debug_file, TimePoint now) const {
  const bool has_adopted =
      std::any_of(games_.begin(), games_.end(), [](const auto& game) { return game->IsAdopted(); });
  if (has_adopted) return {first_debug_file, now};
  if (stragglers_.empty()) return {first_debug_file, std::nullopt};
  const Straggler& first = stragglers_.front();
  return {first.order.debug_file, first.since + kStragglersGrace};
}

bool LocalHost::IsFirstPlaceTaken(const std::string& first_debug_file) const {
  return std::any_of(games_.begin(), games_.end(), [&](const auto& game) {
    return game->Order().debug_file == first_debug_file;
  });
}

std::string LocalHost::DebugFileFor(const std::string& files_path, int number) const {
  std::string first = host_.files.FullPath(FirstDebugFile(files_path));
  // A file that is there could not be deleted: somebody else still has it.
  const bool is_free = !IsFirstPlaceTaken(first) && !host_.files.Exists(first);
  if (places_ == 1 || is_free) return first;
  return host_.files.FullPath(OwnDebugFile(files_path, number));
}

void LocalHost::Start(const GameOrder& order, std::unique_ptr<LockedFile> claim) {
  Add(order, [&](LocalGame& game) { game.Start(host_.clock.Steady(), std::move(claim)); });
}

void LocalHost::Adopt(const std::vector<GameOrder>& orders) {
  for (const GameOrder& order : orders)
    Add(order, [&](LocalGame& game) { game.Adopt(host_.clock.Steady()); });
}

void LocalHost::Add(const GameOrder& order, const std::function<void(LocalGame&)>& begin) {
  games_.push_back(std::make_unique<LocalGame>(host_, pace_, order, on_news_));
  begin(*games_.back());
}

std::vector<GameOutcome> LocalHost::TakeEnded(TimePoint now) {
  std::vector<GameOutcome> outcomes;
  for (auto& game : games_) {
    if (!game->Step(now)) continue;
    outcomes.push_back(game->TakeOutcome());
    const auto batch = game->RunningBatch();
    const bool stays = pace_.awaits_processes && outcomes.back().ShowedLife() && batch;
    if (stays) stragglers_.push_back({game->Order(), *batch, now});
    game.reset();
  }
  std::erase(games_, nullptr);
  return outcomes;
}

void LocalHost::DropEndedStragglers() {
  std::erase_if(stragglers_, [&](const Straggler& straggler) {
    return !host_.processes.IsRunning(straggler.batch);
  });
}

std::vector<GameOrder> LocalHost::TakeSilent(TimePoint now) {
  std::vector<GameOrder> silent;
  for (const auto& game : games_) {
    if (game->TakeSilence(now)) silent.push_back(game->Order());
  }
  return silent;
}

std::optional<TimePoint> LocalHost::NextLook() const {
  std::optional<TimePoint> next;
  for (const auto& game : games_) {
    if (!next || game->NextStep() < *next) next = game->NextStep();
  }
  return next;
}

}  // namespace tarvendo
