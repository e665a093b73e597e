#include "tourney/participants.h"

#include <algorithm>
#include <unordered_set>

#include "base/log.h"
#include "base/text.h"
#include "platform/faults.h"
#include "tourney/game_list.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr int kOpponentsInFirstLine = 8;

using Names = std::unordered_set<std::string>;

Names ParticipantNames(const Tourney& tourney) {
  Names names;
  for (const Player& player : tourney.Participants())
    names.insert(player.texts.name);
  return names;
}

/// "+", "-" or "=" for a game that this side won, lost or drew; any other: "*" when READY, else a
/// blank.
char ResultMark(const Game& game, bool is_black) {
  switch (game.result) {
    case kDraw:
      return '=';
    case kWhiteWins:
      return is_black ? '-' : '+';
    case kBlackWins:
      return is_black ? '+' : '-';
    default:
      return game.IsReady() ? '*' : ' ';
  }
}

std::string OpponentEntry(const Game& game, const Player& player, int index) {
  const bool is_black = game.black == player.number;
  return Format("%c%c%02d(%d) ", ResultMark(game, is_black), is_black ? 'B' : 'W',
                is_black ? game.white : game.black, index);
}

/// Closes the gap that participant `removed` has left: m becomes m - 1 for all behind it.
void RenumberBehind(Tourney& tourney, int removed) {
  const auto closed = [&](int number) { return number > removed ? number - 1 : number; };
  for (Player& player : tourney.ChangeParticipants())
    player.number = closed(player.number);
  for (Game& game : tourney.ChangeGames()) {
    game.white = closed(game.white);
    game.black = closed(game.black);
  }
}

/// Adds a copy of the player, unless its name is among `names`, to which it is added then.
bool AddUnlessNamed(Tourney& tourney, const Player& player, Names& names) {
  if (!names.insert(player.texts.name).second) {
    PrintText("A player named '" + player.texts.name + "' already exists in tourney!\n");
    return false;
  }
  Player participant;
  participant.texts = player.texts;
  participant.number = static_cast<int>(tourney.Participants().size()) + 1;
  participant.tourney_flag = 1;
  for (std::string* text : {&participant.texts.dir, &participant.texts.init_string,
                            &participant.texts.white_options, &participant.texts.black_options,
                            &participant.texts.program_exe, &participant.texts.group}) {
    TrimBothSides(*text);
  }
  const int width = static_cast<int>(participant.texts.name.size());
  tourney.name_width = std::max(tourney.name_width, width);
  tourney.ChangeParticipants().push_back(participant);
  PrintText("Player " + player.texts.name + " added to tourney.\n");
  return true;
}

}  // namespace

bool AddPlayerToTourney(Tourney& tourney, const Player& player) {
  Names names = ParticipantNames(tourney);
  return AddUnlessNamed(tourney, player, names);
}

void AddGroups(Tourney& tourney, const std::vector<Player>& database,
               const std::string& group_words) {
  Names names = ParticipantNames(tourney);
  for (const std::string& wanted : SplitAtWhiteSpace(group_words)) {
    for (const Player& player : database) {
      EndWhenAsked();
      for (const std::string& group : SplitAtWhiteSpace(player.texts.group)) {
        if (group == wanted) AddUnlessNamed(tourney, player, names);
      }
    }
  }
}

void AddAllPlayers(Tourney& tourney, const std::vector<Player>& database) {
  Names names = ParticipantNames(tourney);
  for (const Player& player : database) {
    EndWhenAsked();
    AddUnlessNamed(tourney, player, names);
  }
}

void ShowParticipants(const Tourney& tourney, int number) {
  if (number == 0) {
    PrintText("Players currently at tourney '" + tourney.Settings().name + "':\n");
  }
  for (const Player& player : tourney.Participants()) {
    EndWhenAsked();
    if (number == 0 || player.number == number) PrintText(ParticipantText(tourney, player));
  }
}

void ShowParticipantByName(const Tourney& tourney, const std::string& prefix) {
  bool found = false;
  for (const Player& player : tourney.Participants()) {
    EndWhenAsked();
    if (!BeginsWithNoCase(player.texts.name, prefix)) continue;
    found = true;
    PrintText(ParticipantText(tourney, player));
  }
  if (!found) PrintText("Player named '" + prefix + "' not found.\n");
}

std::string ParticipantText(const Tourney& tourney, const Player& player) {
  std::string text = PlayerData(player) + "\n    Opponents    : ";
  int entries = 0;
  for (const int index : player.games) {
    const Game* game = tourney.GameAt(index);
    if (game == nullptr) continue;
    text += OpponentEntry(*game, player, index);
    if (++entries == kOpponentsInFirstLine) text += "\n                   ";
  }
  return text + "\n";
}

int FindPlayer(const Tourney& tourney, const std::string& text) {
  const std::string first_word = Scanner(text).ReadWord();
  if (IsAllDigits(first_word) && ToInt(first_word) != 0) return ToInt(first_word);
  for (const Player& player : tourney.Participants()) {
    if (BeginsWithNoCase(player.texts.name, text)) return player.number;
  }
  PrintText("Can't find player " + text + ".\n");
  return 0;
}

bool RemoveParticipant(Tourney& tourney, FileSystem& files, int number) {
  const std::vector<Player>& participants = tourney.Participants();
  const auto found = std::find_if(participants.begin(), participants.end(),
                                  [&](const Player& player) { return player.number == number; });
  if (found == participants.end()) return false;
  // What may take long comes first, so that nobody can be asked to end with half of it done.
  RemoveGamesOf(tourney, files, number);
  tourney.ChangeParticipants().erase(found);
  ComputeNameWidth(tourney);
  RenumberBehind(tourney, number);
  return true;
}

}  // namespace tarvendo
