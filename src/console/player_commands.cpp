#include <array>

#include "base/log.h"
#include "base/text.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/handlers.h"
#include "console/line_input.h"
#include "console/word_form.h"
#include "players/player_database.h"
#include "players/player_file.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// A field that the Player command can set.
struct PlayerField {
  const char* prefix;
  const char* name;  ///< the whole word
  std::string PlayerTexts::*text;
  const char* without_value;  ///< printed when there is no value
  const char* set;            ///< printed in front of the new value
  bool may_be_empty;
};

constexpr std::array<PlayerField, 8> kFields = {{
    {"dir", "dir", &PlayerTexts::dir, "Player dir set to ''.\n", "Player dir set to ", true},
    {"ini", "init", &PlayerTexts::init_string, "Player init string set to ''.\n",
     "Player init string set to ", true},
    {"nam", "name", &PlayerTexts::name, "You must specify a name!\n", "Player name set to ", false},
    {"whi", "white", &PlayerTexts::white_options, "Player white options set to ''.\n",
     "Player white options set to ", true},
    {"bla", "black", &PlayerTexts::black_options, "Player black options set to ''.\n",
     "Player black options set to ", true},
    {"pro", "program", &PlayerTexts::program_exe, "You must specify the program exe!\n",
     "Player program exe set to ", false},
    {"exe", "exe", &PlayerTexts::program_exe, "You must specify the program exe!\n",
     "Player program exe set to ", false},
    {"gro", "group", &PlayerTexts::group, "Player group cleared.\n", "Player group set to ", true},
}};

const PlayerField* FindField(const std::string& word) {
  for (const PlayerField& field : kFields) {
    if (BeginsWithNoCase(word, field.prefix)) return &field;
  }
  return nullptr;
}

void SetField(PlayerDatabase& players, Player& player, const PlayerField& field,
              const std::string& value) {
  if (value.empty() && !field.may_be_empty) {
    PrintText(field.without_value);
    return;
  }
  if (field.text == &PlayerTexts::name && players.FindByName(value) != nullptr) {
    PrintText("Name " + value + " already taken.\n");
    return;
  }
  if (field.text == &PlayerTexts::name) {
    players.Rename(player, value);
  } else {
    player.texts.*field.text = value;
  }
  PrintText(value.empty() ? std::string(field.without_value) : field.set + value + ".\n");
}

/// The word by which players are listed by their groups.
constexpr WordForm kByGroup{"-group", "-gro", Operand::kGroup};

/// Prints a question and reads one line as its answer, trailing white space cut; the end of the
/// input is an empty answer.
std::string Ask(LineInput& input, const char* question) {
  PrintText(question);
  std::string answer = input.Read().value_or("");
  if (TheLog != nullptr && !answer.empty()) TheLog->Echo(answer);
  TrimRight(answer);
  return answer;
}

}  // namespace

std::vector<WordForm> PlayerFields() {
  std::vector<WordForm> words;
  for (const PlayerField& field : kFields)
    words.push_back({field.name, field.prefix});
  return words;
}

std::vector<WordForm> AvailableWords() {
  return {kByGroup};
}

void DoPlayer(CommandContext& context) {
  const CommandArgs& args = context.args;
  if (args.Count() < 2) return Print("You didn't specify a player.\n");
  const int number = IsAllDigits(args.Word(1)) ? ToInt(args.Word(1)) : 0;
  Player* player = context.players.FindByNumber(number);
  if (player == nullptr) return Print("Can't find player number %d.\n", number);
  if (args.Count() < 3) {
    Print("You didn't specify a command for player, so here's it's data:\n");
    PrintText(PlayerData(*player));
    return;
  }
  const PlayerField* field = FindField(args.Word(2));
  if (field == nullptr) {
    PrintText("I don't understand the command '" + args.Word(2) + "'.\n");
    return;
  }
  SetField(context.players, *player, *field, args.RestFrom(3));
}

void DoReadPlayers(CommandContext& context) {
  const bool read = ReadPlayerFile(context.host.files, context.args.Word(1),
                                   context.tourney.Settings().winboard_path, context.players);
  Print(read ? "Players read.\n" : "Reading players failed!\n");
}

void DoWritePlayers(CommandContext& context) {
  const std::string path = context.args.Word(1);
  if (path.empty()) return Print("I need a file where to write!\n");
  const bool written = WritePlayerFile(context.host.files, path, context.players);
  Print(written ? "Players written.\n" : "Writing players to file failed!\n");
}

void DoAvailable(CommandContext& context) {
  const bool by_group = BeginsWithNoCase(context.args.Word(1), kByGroup.prefix);
  context.players.ListPlayers(context.args.RestFrom(by_group ? 2 : 1), by_group);
}

void DoCreatePlayer(WaitingCommandContext& context) {
  PlayerTexts texts;
  texts.name = Ask(context.input, "Name:");
  if (texts.name.empty()) return Print("You should give the name!\n");
  if (context.players.FindByName(texts.name) != nullptr) {
    PrintText("A player by name '" + texts.name + "' already exists!\n");
    return;
  }
  texts.dir = Ask(context.input, "Dir:");
  texts.init_string = Ask(context.input, "InitString:");
  texts.white_options = Ask(context.input, "WhiteOptions:");
  texts.black_options = Ask(context.input, "BlackOptions:");
  texts.program_exe = Ask(context.input, "ProgramExe:");
  if (texts.program_exe.empty()) return Print("You should give the program exe!\n");
  texts.group = Ask(context.input, "Group:");
  context.players.CreatePlayer(std::move(texts));
}

void DoDeletePlayer(CommandContext& context) {
  const std::string name = context.args.RestFrom(1);
  if (name.empty()) return Print("Deleting player failed!\n");
  const Player* player = context.players.FindByName(name);
  if (player == nullptr) {
    PrintText("Can't find player '" + name + "'.\n");
    Print("Note that when deleting, player name is case-sensitive.\n");
    return;
  }
  context.players.DeletePlayer(player->number);
}

}  // namespace tarvendo
