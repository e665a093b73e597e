#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

#include "players/player.h"

namespace tarvendo {

/// The engines that the user knows, in number order: element i has the number i + 1. Owned by main,
/// used by the console thread.
class PlayerDatabase {
 public:
  static constexpr std::size_t kMostPlayers = 1000000;

  /// `most` players have room.
  explicit PlayerDatabase(std::size_t most = kMostPlayers) : most_(most) {}
  virtual ~PlayerDatabase() = default;

  const std::vector<Player>& Players() const { return players_; }

  /// Whether there are as many players as there may be: more than anybody has, and less than what
  /// fills the memory.
  bool IsFull() const { return players_.size() >= most_; }

  /// Adds a player and prints "Player %s created.\n". A player of that exact name is there already:
  /// nothing is added or printed, the two option texts are merged into it (an empty one is taken
  /// over, a differing one appended behind a blank), and what is too long then is cut, and said so
  /// (players/text_limit.h). An empty name counts as "PlayerName". False, silently, when a new
  /// player has no program or the list is full.
  bool CreatePlayer(PlayerTexts texts);

  /// Deletes the player with that number (1-based) and prints "Player '%s' deleted from player
  /// list.\n"; the players are numbered anew. An unknown number deletes nobody and prints nothing.
  void DeletePlayer(int number);

  /// Prints a line for every player whose name begins with `pattern` (any case) or, by group, whose
  /// whole group text is `pattern`.
  void ListPlayers(const std::string& pattern, bool by_group) const;

  /// The player with that number or that exact name; null when there is none. The name is changed
  /// by Rename only.
  Player* FindByNumber(int number);
  Player* FindByName(const std::string& name);

  /// Gives a player of the list another name, which nobody has.
  void Rename(Player& player, const std::string& name);

 private:
  /// Finds every name's index anew.
  void NoteIndices();

  std::size_t most_;
  std::vector<Player> players_;
  std::unordered_map<std::string, std::size_t> index_of_;  ///< in the list, by name
};

}  // namespace tarvendo
