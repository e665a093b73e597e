#include "players/player_database.h"

#include <algorithm>
#include <utility>

#include "base/log.h"
#include "base/text.h"
#include "platform/faults.h"
#include "players/text_limit.h"

namespace tarvendo {
namespace {

void MergeOptions(std::string& stored, const std::string& added) {
  if (stored.empty()) {
    stored = added;
  } else if (stored != added) {
    stored += " " + added;
  }
}

}  // namespace

bool PlayerDatabase::CreatePlayer(PlayerTexts texts) {
  Player player(std::move(texts));
  if (Player* existing = FindByName(player.texts.name)) {
    MergeOptions(existing->texts.white_options, player.texts.white_options);
    MergeOptions(existing->texts.black_options, player.texts.black_options);
    CutToLines(existing->texts);
    return true;
  }
  if (player.texts.program_exe.empty() || IsFull()) return false;
  player.number = static_cast<int>(players_.size()) + 1;
  PrintText("Player " + player.texts.name + " created.\n");
  index_of_.emplace(player.texts.name, players_.size());
  players_.push_back(std::move(player));
  return true;
}

void PlayerDatabase::DeletePlayer(int number) {
  const auto found = std::find_if(players_.begin(), players_.end(),
                                  [&](const Player& player) { return player.number == number; });
  if (found != players_.end()) {
    PrintText("Player '" + found->texts.name + "' deleted from player list.\n");
    players_.erase(found);
    NoteIndices();
  }
  int next = 1;
  for (Player& player : players_)
    player.number = next++;
}

void PlayerDatabase::ListPlayers(const std::string& pattern, bool by_group) const {
  for (const Player& player : players_) {
    EndWhenAsked();
    const bool listed =
        by_group ? player.texts.group == pattern : BeginsWithNoCase(player.texts.name, pattern);
    if (listed) PrintText(PlayerGroupLine(player));
  }
}

Player* PlayerDatabase::FindByNumber(int number) {
  const bool there = number >= 1 && static_cast<std::size_t>(number) <= players_.size();
  return there ? &players_[static_cast<std::size_t>(number) - 1] : nullptr;
}

Player* PlayerDatabase::FindByName(const std::string& name) {
  const auto found = index_of_.find(name);
  return found == index_of_.end() ? nullptr : &players_[found->second];
}

void PlayerDatabase::Rename(Player& player, const std::string& name) {
  player.texts.name = name;
  NoteIndices();
}

void PlayerDatabase::NoteIndices() {
  index_of_.clear();
  for (std::size_t index = 0; index < players_.size(); ++index)
    index_of_.emplace(players_[index].texts.name, index);
}

}  // namespace tarvendo
