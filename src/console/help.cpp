#include "console/help.h"

#include <array>
#include <optional>
#include <string_view>

#include "base/line_reader.h"
#include "base/log.h"
#include "base/read_file.h"
#include "base/text.h"
#include "base/word_skip.h"
#include "console/name_list.h"
#include "platform/files.h"

namespace tarvendo {
namespace {

constexpr const char* kHelpFile = "TourneyHelp.txt";
constexpr std::string_view kEndOfTopic = "-ENDTOPIC-";
constexpr std::string_view kPageBreak = "PAUSE";

/// The names that a user who asks for nothing in particular is shown.
constexpr std::array<const char*, 36> kCommandNames = {
    "Available",    "AddAllPlayers",  "AddGroup",      "AddPlayer",     "CreatePlayer",
    "DeletePlayer", "ReadPlayers",    "RemovePlayer",  "WritePlayers",  "Get",
    "Game",         "Load",           "Player",        "Reset",         "Save",
    "Set",          "CreateBrackets", "CreateRRGames", "ForfeitPlayer", "Pair",
    "RemoveGames",  "Replay",         "ReSpool",       "Run",           "ShowPlayers",
    "Spool",        "ShowGames",      "Stop",          "ShowBrackets",  "Table",
    "TextTable",    "UnSpool",        "Housekeep",     "GetAllResults", "Quit",
    "View"};

struct Abbreviation {
  const char* prefix;  ///< any case
  const char* topic;
};

/// The first prefix that fits gives the topic. These prefixes are help's own: they are longer than
/// those by which the console knows a command.
constexpr std::array<Abbreviation, 40> kAbbreviations = {{
    {"adda", "AddAllPlayers"},
    {"addp", "AddPlayer"},
    {"remp", "RemovePlayer"},
    {"removep", "RemovePlayer"},
    {"avai", "Available"},
    {"createp", "CreatePlayer"},
    {"delp", "DeletePlayer"},
    {"deletep", "DeletePlayer"},
    {"forf", "ForfeitPlayer"},
    {"game", "Game"},
    {"geta", "GetAllResults"},
    {"load", "Load"},
    {"remg", "RemoveGame"},
    {"removeg", "RemoveGame"},
    {"resp", "ReSpool"},
    {"showp", "ShowPlayers"},
    {"spool", "Spool"},
    {"read", "ReadPlayers"},
    {"replay", "Replay"},
    {"reset", "Reset"},
    {"save", "Save"},
    {"writ", "WritePlayers"},
    {"showg", "ShowGames"},
    {"run", "Run"},
    {"stop", "Stop"},
    {"get", "Get"},
    {"set", "Set"},
    {"tab", "Table"},
    {"tex", "TextTable"},
    {"vie", "View"},
    {"createrr", "CreateRRGames"},
    {"qui", "Quit"},
    {"help", "Help"},
    {"createb", "CreateBrackets"},
    {"pair", "Pair"},
    {"showb", "ShowBrackets"},
    {"unsp", "UnSpool"},
    {"addg", "AddGroup"},
    {"hou", "Housekeep"},
    {"playe", "Player"},
}};

std::string WithoutTrailingSpace(const std::string& text) {
  return text.substr(0, text.find_last_not_of(" \t\n\v\f\r") + 1);
}

/// The last letter of the name is left out of the comparison: a header "RemoveGames" and one
/// "RemoveGame" both serve the topic RemoveGame.
bool IsHeaderOf(std::string_view topic, const std::string& line) {
  return BeginsWithNoCase(line, topic.substr(0, topic.size() - 1));
}

bool EndsTopic(const std::string& line) {
  return line.starts_with(kEndOfTopic);
}

/// Reads on behind the line that ends the topic.
void SkipTopic(LineReader& lines) {
  while (const auto line = lines.Read(kConsoleLine)) {
    if (EndsTopic(*line)) return;
  }
}

/// The header of the topic, with the reader behind it. A header that the file ends with does not
/// count.
std::optional<std::string> FindHeader(LineReader& lines, std::string_view topic) {
  while (auto line = lines.Read(kConsoleLine)) {
    if (lines.AtEnd()) return std::nullopt;
    if (IsHeaderOf(topic, *line)) return line;
    if (!EndsTopic(*line)) SkipTopic(lines);
  }
  return std::nullopt;
}

/// The whole topic from its header on. A page break takes one character of the file, as if it were
/// the key that the user would press; a last line without line feed is not shown.
std::string TopicText(LineReader& lines, std::string line) {
  std::string text;
  while (!lines.AtEnd() && !EndsTopic(line)) {
    if (line.starts_with(kPageBreak)) {
      text += "-- more --\n";
      lines.ReadByte();
    } else {
      text += line;
    }
    line = lines.Read(kConsoleLine).value_or("");
  }
  return text;
}

/// What help says of an argument, given the text of the help file.
std::string Answer(const std::string& argument, const std::string& help_text) {
  std::string not_found = "Command " + argument + " not found.\n";
  const char* topic = FindHelpTopic(argument);
  if (topic == nullptr) return not_found;
  LineReader lines(help_text);
  const auto header = FindHeader(lines, topic);
  return header ? TopicText(lines, *header) : not_found;
}

}  // namespace

const char* FindHelpTopic(const std::string& argument) {
  for (const Abbreviation& abbreviation : kAbbreviations) {
    if (BeginsWithNoCase(argument, abbreviation.prefix)) return abbreviation.topic;
  }
  return nullptr;
}

void Help(const std::string& line, FileSystem& files, const std::string& work_dir) {
  const auto argument = SkipWord(line);
  if (!argument) {
    PrintNameList(kCommandNames);
    return;
  }
  const auto help_text = ReadFile(files, work_dir + kHelpFile, kHelpFileLimit);
  if (!help_text) {
    PrintText("Can't find help file '" + work_dir + kHelpFile + "'.\n");
    return;
  }
  PrintText(Answer(WithoutTrailingSpace(line.substr(*argument)), *help_text));
}

}  // namespace tarvendo
