#include "tourney/game_index.h"

#include <algorithm>
#include <limits>

#include "tourney/game.h"

namespace tarvendo {
namespace {

/// Rounds are compared as they are, negative ones of a file too.
unsigned RankOfRound(const Game& game) {
  constexpr auto kMiddle = static_cast<unsigned>(std::numeric_limits<int>::max()) + 1U;
  return static_cast<unsigned>(game.round) + kMiddle;
}

/// The running order goes on behind the largest number with the smallest.
unsigned RankInRunningOrder(const Game& game) {
  return static_cast<unsigned>(game.spool_index);
}

}  // namespace

void GameIndex::NoteChangeAt(std::size_t index) {
  if (is_known_) changed_.push_back(index);
}

const Game* GameIndex::Find(const std::vector<Game>& games, int number) {
  Update(games);
  if (numbers_rise_) {
    const auto found =
        std::lower_bound(games.begin(), games.end(), number,
                         [](const Game& game, int wanted) { return game.number < wanted; });
    return found != games.end() && found->number == number ? &*found : nullptr;
  }
  const auto found = std::find_if(games.begin(), games.end(),
                                  [&](const Game& game) { return game.number == number; });
  return found == games.end() ? nullptr : &*found;
}

const Game* GameIndex::FirstToSpool(const std::vector<Game>& games) {
  Update(games);
  for (; !to_spool_.empty(); to_spool_.pop()) {
    const auto& [rank, index] = to_spool_.top();
    const Game& game = games[index];
    if (game.status == kNothingDone && RankOfRound(game) == rank) return &game;
  }
  return nullptr;
}

const Game* GameIndex::FirstSpooled(const std::vector<Game>& games,
                                    const std::function<bool(const Game&)>& passes) {
  Update(games);
  for (auto entry = spooled_.begin(); entry != spooled_.end();) {
    const Game& game = games[entry->second];
    if (game.status != kSpooled || RankInRunningOrder(game) != entry->first) {
      entry = spooled_.erase(entry);
      continue;
    }
    if (passes(game)) return &game;
    ++entry;
  }
  return nullptr;
}

void GameIndex::Update(const std::vector<Game>& games) {
  if (is_known_) {
    for (const std::size_t index : std::exchange(changed_, {}))
      Enter(games, index);
    return;
  }
  to_spool_ = Lowest();
  spooled_.clear();
  changed_.clear();
  numbers_rise_ = true;
  for (std::size_t index = 0; index < games.size(); ++index)
    Enter(games, index);
  is_known_ = true;
}

void GameIndex::Enter(const std::vector<Game>& games, std::size_t index) {
  const Game& game = games[index];
  const bool rises = (index == 0 || games[index - 1].number < game.number) &&
                     (index + 1 == games.size() || game.number < games[index + 1].number);
  numbers_rise_ = numbers_rise_ && rises;
  if (game.status == kNothingDone) to_spool_.emplace(RankOfRound(game), index);
  if (game.status == kSpooled) spooled_.emplace(RankInRunningOrder(game), index);
}

}  // namespace tarvendo
