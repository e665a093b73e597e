#pragma once

#include <cstddef>
#include <functional>
#include <queue>
#include <set>
#include <utility>
#include <vector>

namespace tarvendo {

class Game;

/// Finds games of the tourney's list without looking through all of it, for a list may hold a
/// million. It is made when it is first asked and kept up to date as long as games change one by
/// one. Part of the tourney, and used by its holder only.
class GameIndex {
 public:
  GameIndex() = default;
  ~GameIndex() = default;
  /// A copy of the tourney asks anew.
  GameIndex(const GameIndex& /*other*/) {}
  GameIndex& operator=(const GameIndex& /*other*/) {
    Forget();
    return *this;
  }

  /// The list itself has changed, or any number of its games.
  void Forget() { is_known_ = false; }

  /// The game with that index in the list is about to be changed; nothing is asked before it has
  /// been.
  void NoteChangeAt(std::size_t index);

  /// The first game with that number; null when there is none.
  const Game* Find(const std::vector<Game>& games, int number);

  /// The NOTHING DONE game of the lowest round, the first of the list among equals; null when there
  /// is none.
  const Game* FirstToSpool(const std::vector<Game>& games);

  /// The first in the running order of the SPOOLED games that pass `passes`; null when there is
  /// none.
  const Game* FirstSpooled(const std::vector<Game>& games,
                           const std::function<bool(const Game&)>& passes);

 private:
  /// A game's round or place in the running order, and then its index in the list. What was true of
  /// a game once may stand here for longer, and is passed by.
  using Entry = std::pair<unsigned, std::size_t>;
  using Lowest = std::priority_queue<Entry, std::vector<Entry>, std::greater<>>;

  void Update(const std::vector<Game>& games);
  void Enter(const std::vector<Game>& games, std::size_t index);

  bool is_known_ = false;
  bool numbers_rise_ = false;  ///< so that a number can be found by halving the list
  Lowest to_spool_;
  std::set<Entry> spooled_;
  std::vector<std::size_t> changed_;  ///< since the last question
};

}  // namespace tarvendo
