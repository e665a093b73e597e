#include "base/log.h"
#include "base/text.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/handlers.h"
#include "pairing/bracket_list.h"
#include "players/player_database.h"
#include "runner/spool.h"
#include "tourney/game_list.h"
#include "tourney/participants.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// The participant that a command names by number or by its exact name; 0 when there is none.
int NamedParticipant(const Tourney& tourney, const std::string& text) {
  if (IsAllDigits(text)) return ToInt(text);
  for (const Player& player : tourney.Participants()) {
    if (player.texts.name == text) return player.number;
  }
  return 0;
}

const Player* PlayerToAdd(PlayerDatabase& players, const std::string& text) {
  if (IsAllDigits(text)) {
    const Player* player = players.FindByNumber(ToInt(text));
    if (player == nullptr) {
      Print("Adding player failed: player no. %d does not exist.\n", ToInt(text));
    }
    return player;
  }
  const Player* player = players.FindByName(text);
  if (player == nullptr) {
    PrintText("Adding player failed: player named '" + text +
              "' does not exist.\nPlease notice that names are case sensitive.\n");
  }
  return player;
}

}  // namespace

void DoAddAllPlayers(CommandContext& context) {
  AddAllPlayers(context.tourney, context.players.Players());
}

void DoAddGroup(CommandContext& context) {
  AddGroups(context.tourney, context.players.Players(), context.args.RestFrom(1));
}

void DoAddPlayer(CommandContext& context) {
  const Player* player = PlayerToAdd(context.players, context.args.RestFrom(1));
  if (player != nullptr && !AddPlayerToTourney(context.tourney, *player)) {
    Print("Adding player failed!\n");
  }
}

void DoRemovePlayer(CommandContext& context) {
  const std::string text = context.args.RestFrom(1);
  if (text.empty()) {
    return Print("Removing player failed, because you didn't specify one!\n");
  }
  const int number = NamedParticipant(context.tourney, text);
  if (number == 0 || !RemoveParticipant(context.tourney, context.host.files, number)) {
    return Print("Remove player failed!\n");
  }
  context.brackets.Clear();
  RespoolAll(context.tourney, context.host.files, context.file, context.running);
  Print("Player removed succesfully.\n");
}

void DoForfeitPlayer(CommandContext& context) {
  const std::string text = context.args.RestFrom(1);
  if (text.empty()) {
    return Print("Forfeiting player failed, because you didn't specify one!\n");
  }
  const int number = FindPlayer(context.tourney, text);
  if (number != 0) Forfeit(context.tourney, context.host.files, number);
}

void DoShowPlayers(CommandContext& context) {
  const std::string text = context.args.RestFrom(1);
  if (text.empty()) {
    ShowParticipants(context.tourney, 0);
  } else if (IsAllDigits(text)) {
    // Number 0 is nobody's; the operation would take it for everybody.
    if (ToInt(text) != 0) ShowParticipants(context.tourney, ToInt(text));
  } else {
    ShowParticipantByName(context.tourney, text);
  }
}

}  // namespace tarvendo
