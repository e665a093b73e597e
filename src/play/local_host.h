#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "play/game_host.h"
#include "play/local_game.h"

namespace tarvendo {

/// Plays games on this machine, as many at once as it has places. The first place uses FilesPath
/// and its winboard.debug. A place above it has a directory of its own for its debug file
/// ("gN.place" beside the game's files), and its game is started from a copy of the batch file that
/// names it.
class LocalHost : public GameHost {
 public:
  /// `places` is at least 1. `on_news` is called when something has happened to a game, on any
  /// thread; it is not called any more when the destructor has returned.
  LocalHost(const Host& host, const Pace& pace, int places, std::function<void()> on_news);
  ~LocalHost() override;
  LocalHost(const LocalHost&) = delete;
  LocalHost& operator=(const LocalHost&) = delete;

  int FreeSlots() const override;
  std::optional<Obstacle> FindObstacle(const std::string& files_path, TimePoint now) override;
  std::string DebugFileFor(const std::string& files_path, int number) const override;
  void Start(const GameOrder& order, std::unique_ptr<LockedFile> claim) override;
  void Adopt(const std::vector<GameOrder>& orders) override;
  std::vector<GameOutcome> TakeEnded(TimePoint now) override;
  std::vector<GameOrder> TakeSilent(TimePoint now) override;
  std::optional<TimePoint> NextLook() const override;

 private:
  /// The processes of a game that is over have not all ended: they keep its place.
  struct Straggler {
    GameOrder order;
    BatchId batch;
    TimePoint since;
  };

  void Add(const GameOrder& order, const std::function<void(LocalGame&)>& begin);
  Obstacle ObstacleOfFullHouse(const std::string& first_debug_file, TimePoint now) const;
  bool IsFirstPlaceTaken(const std::string& first_debug_file) const;
  void DropEndedStragglers();

  Host host_;
  Pace pace_;
  std::size_t places_;
  std::function<void()> on_news_;
  std::vector<std::unique_ptr<LocalGame>> games_;
  std::vector<Straggler> stragglers_;
};

}  // namespace tarvendo
