#pragma once

#include <string_view>
#include <vector>

namespace tarvendo {

/// What may stand at a place of a line, beside words that are told by their names.
enum class Operand {
  kNothing,      ///< nothing that can be offered: nothing at all, a number, a free text
  kFile,         ///< a file, a word without blanks
  kDirectory,    ///< a directory, the rest of the line
  kPlayer,       ///< a player of the database, the rest of the line
  kParticipant,  ///< a participant of the tourney, the rest of the line
  kGroup,        ///< a word of a player's groups
  kCommand,      ///< a command's name
};

/// A word that may stand behind a command: an option, a setting, a field.
struct WordForm {
  std::string_view name;              ///< as it is offered, whole
  std::string_view prefix;            ///< how such a word begins at least, in any case
  Operand value = Operand::kNothing;  ///< what stands behind it
  std::string_view choices = {};      ///< the words for its value, a comma between two
};

/// What may stand behind a command, for whoever completes lines.
struct CommandWords {
  Operand operand = Operand::kNothing;  ///< behind the command itself
  std::vector<WordForm> (*words)() = nullptr;
  bool behind_number = false;  ///< words come behind a number: of a game, of a player
};

// Each stands beside the table that the command itself reads.
std::vector<WordForm> SettingsToSet();
std::vector<WordForm> SettingsToGet();
std::vector<WordForm> PlayerFields();
std::vector<WordForm> GameFields();
std::vector<WordForm> SelectionWords();
std::vector<WordForm> SpoolWords();
std::vector<WordForm> PairWords();
std::vector<WordForm> BracketWords();
std::vector<WordForm> TableWords();
std::vector<WordForm> AvailableWords();
std::vector<WordForm> SwitchWords();

}  // namespace tarvendo
