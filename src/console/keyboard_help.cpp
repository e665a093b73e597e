#include "console/keyboard_help.h"

#include <set>

#include "base/text.h"
#include "console/command_interpreter.h"
#include "console/completion.h"
#include "players/player_database.h"
#include "runner/tourney_room.h"

namespace tarvendo {
namespace {

constexpr const char* kHistoryFile = "tarvendo/history";

std::vector<std::string> NamesOf(const std::vector<Player>& players) {
  std::vector<std::string> names;
  for (const Player& player : players)
    names.push_back(player.texts.name);
  return names;
}

std::vector<std::string> GroupsOf(const std::vector<Player>& players) {
  std::set<std::string> groups;
  for (const Player& player : players) {
    for (const std::string& word : SplitAtWhiteSpace(player.texts.group))
      groups.insert(word);
  }
  return {groups.begin(), groups.end()};
}

}  // namespace

LineHelp HelpToType(TourneyRoom& room, const PlayerDatabase& players) {
  const KnownNames names = {[&] { return NamesOf(players.Players()); },
                            [&] { return NamesOf(room.shared.Take()->Participants()); },
                            [&] { return GroupsOf(players.Players()); }, NamesInDirectory};
  const std::string directory = StateDirectory();
  return {kPrompt, directory.empty() ? "" : directory + kHistoryFile,
          [names](const std::string& beginning) { return CompleteLine(beginning, names); }};
}

}  // namespace tarvendo
