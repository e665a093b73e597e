#include "players/winboard_import.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include "base/line_reader.h"
#include "base/log.h"
#include "base/read_file.h"
#include "base/text.h"
#include "base/word_splitter.h"
#include "platform/faults.h"
#include "platform/files.h"
#include "players/player_database.h"
#include "players/text_limit.h"
#include "players/winboard_options.h"

// WinBoard keeps the engines that it offers for White and for Black in two lists of its
// configuration. A list is either braced, one engine on each line, the first of them, or none,
// behind the brace,
//
//   /firstChessProgramNames={fairymax /fd="c:\engines\fairymax" /name="Fairy-Max"
//   "my engine.exe" xboard
//   "Gamma" -fcp "randy.exe Gamma play" -fd "C:\engines\gamma" -fUCI
//   }
//
// or a quoted value on the line itself: /firstChessProgramNames="one.exe\ntwo.exe".
//
// An engine's line begins with its command. Only where an option gives the command, as in the line
// of Gamma, which WinBoard's own dialog has written, its name stands there: such a line says of one
// colour what holds for both.

namespace tarvendo {
namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";

using Words = std::vector<std::string>;

struct ListNames {
  EngineList list;
  const char* option;     ///< the option that holds the list; any case, one character follows it
  const char* short_dir;  ///< the beginning of the option for the engine's directory,
  const char* long_dir;   ///< and of its long form
  std::string PlayerTexts::*options;  ///< where the other options go
};

constexpr ListNames kFirstList = {EngineList::kFirst, "/firstChessProgramNames", "/fd",
                                  "/firstDirector", &PlayerTexts::white_options};
constexpr ListNames kSecondList = {EngineList::kSecond, "/secondChessProgramNames", "/sd",
                                   "/secondDirector", &PlayerTexts::black_options};

/// What WinBoard's own dialog writes with "-". Any other word with "-" may be an argument of an
/// engine.
constexpr std::array<std::string_view, 13> kOptionsWithMinus = {
    "-fcp",
    "-scp",
    "-fd",
    "-sd",
    "-fn",
    "-sn",
    "-fUCI",
    "-sUCI",
    "-fNoOwnBookUCI",
    "-sNoOwnBookUCI",
    "-firstProtocolVersion",
    "-secondProtocolVersion",
    "-variant",
};

std::string_view WithoutLeadingSpace(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
  return text;
}

void TrimWhiteSpaceRight(std::string& text) {
  text.erase(text.find_last_not_of(kWhiteSpace) + 1);
}

std::string FirstWord(std::string_view text) {
  return Scanner(text).ReadWord();
}

/// An option begins with a slash; so may the path of an engine, which has more of them.
bool IsOption(const Words& words, std::size_t index) {
  const std::string& word = words[index];
  if (!word.starts_with('/')) return false;
  return index > 0 || word.find('/', 1) == std::string::npos;
}

std::size_t CountWordsBeforeOptions(const Words& words) {
  std::size_t count = 0;
  while (count < words.size() && !IsOption(words, count))
    ++count;
  return count;
}

/// The engine's command: the program, and its arguments for the engine's start.
void TakeCommand(const Words& words, std::size_t count, PlayerTexts& texts) {
  if (count > 0) texts.program_exe = WithoutQuotes(words[0]);
  for (std::size_t i = 1; i < count; ++i)
    texts.init_string += (i > 1 ? " " : "") + words[i];
}

std::string WithSlash(std::string word) {
  const auto found = std::find(kOptionsWithMinus.begin(), kOptionsWithMinus.end(), word);
  if (found != kOptionsWithMinus.end()) word.front() = '/';
  return word;
}

bool IsOneOf(const std::string& word, const char* white, const char* black) {
  return EqualsNoCase(word, white) || EqualsNoCase(word, black);
}

bool GivesCommand(const std::string& word) {
  return IsOneOf(word, "/fcp", "/scp");
}

bool IsDirectory(const std::string& option, const ListNames& names) {
  return BeginsWithNoCase(option, names.short_dir) || BeginsWithNoCase(option, names.long_dir);
}

/// The text that the option takes as its value; null for one that WinBoard itself is to get.
std::string* ValueOf(const std::string& option, const ListNames& names, PlayerTexts& texts) {
  if (IsDirectory(option, names)) return &texts.dir;
  if (BeginsWithNoCase(option, "/group")) return &texts.group;
  if (BeginsWithNoCase(option, "/name")) return &texts.name;
  return nullptr;
}

void TakeOptions(const Words& words, std::size_t first, const ListNames& names,
                 PlayerTexts& texts) {
  std::string& others = texts.*names.options;
  for (std::size_t i = first; i < words.size(); ++i) {
    std::string* value = ValueOf(words[i], names, texts);
    if (value == nullptr) {
      others += " " + words[i];
    } else if (++i < words.size()) {
      *value = WithoutQuotes(words[i]);
    }
  }
  TrimBothSides(others);
}

/// The same in a line that gives the command by an option: it may be of either colour, and so may
/// all others.
std::string* ValueForBoth(const std::string& option, PlayerTexts& texts, std::string& command) {
  if (GivesCommand(option)) return &command;
  if (IsOneOf(option, "/fn", "/sn")) return &texts.name;
  if (IsDirectory(option, kSecondList)) return &texts.dir;
  return ValueOf(option, kFirstList, texts);
}

/// Fills the texts from the name in front, the command behind its option, and the other options in
/// their forms for each colour, none twice.
void TakeNameAndOptions(const Words& words, std::size_t name_words, PlayerTexts& texts) {
  for (std::size_t i = 0; i < name_words; ++i)
    texts.name.append(i > 0 ? " " : "").append(WithoutQuotes(words[i]));
  std::string command;
  for (std::size_t i = name_words; i < words.size(); ++i) {
    std::string* value = ValueForBoth(words[i], texts, command);
    if (value == nullptr) {
      const ColourForms forms = FormsOf(words[i]);
      texts.white_options += " " + forms.white;
      texts.black_options += " " + forms.black;
    } else if (++i < words.size()) {
      *value = WithoutQuotes(words[i]);
    }
  }
  texts.white_options = MissingOptions("", texts.white_options);
  texts.black_options = MissingOptions("", texts.black_options);
  const Words command_words = SplitWords(command, {"", "\"'"});
  TakeCommand(command_words, command_words.size(), texts);
}

/// Prepares the merging into the player who has the name already: takes out the options that he
/// has. No options at all would add a blank, which is taken out where one is there.
void LeaveOutOptionsOf(const Player& player, std::string PlayerTexts::*options,
                       PlayerTexts& texts) {
  const std::string& stored = player.texts.*options;
  std::string& added = texts.*options;
  const bool blank_is_there = added.empty() && stored.ends_with(' ');
  const std::string missing = MissingOptions(stored, added);
  const bool nothing_new = blank_is_there || (!added.empty() && missing.empty());
  added = nothing_new ? stored : missing;
}

}  // namespace

std::string NameOfProgram(const std::string& program) {
  const std::size_t separator = program.find_last_of("/\\");
  std::string name = separator == std::string::npos ? program : program.substr(separator + 1);
  const bool has_extension = name.size() >= 4 && EqualsNoCase(name.substr(name.size() - 4), ".exe");
  if (has_extension) name.resize(name.size() - 4);
  return name;
}

void AddImported(PlayerTexts texts, PlayerDatabase& database) {
  PlayerTexts name_alone;
  name_alone.name = Player(texts).texts.name;
  CutToLines(name_alone);
  const std::string& name = name_alone.name;
  texts.name = name;
  if (const Player* player = database.FindByName(name)) {
    LeaveOutOptionsOf(*player, &PlayerTexts::white_options, texts);
    LeaveOutOptionsOf(*player, &PlayerTexts::black_options, texts);
  }
  if (database.CreatePlayer(std::move(texts))) CutToLines(database.FindByName(name)->texts);
}

namespace {

const ListNames& NamesOf(EngineList list) {
  return list == EngineList::kFirst ? kFirstList : kSecondList;
}

/// Reads one configuration, remembering the line that it has come to.
class Importer {
 public:
  Importer(FileSystem& files, const std::string& text, PlayerDatabase& database)
      : files_(files), lines_(text), database_(database) {}

  const std::string& Line() const { return line_; }

  /// Finds the list and adds its engines. False when it is missing or does not end.
  bool ReadList(const ListNames& names) {
    if (!FindLineBeginning(names.option)) return false;
    const std::string_view value = WithoutLeadingSpace(ValueOnLine(names.option));
    if (!value.starts_with('{')) return ReadQuoted(value, names.list);
    const std::string_view behind_brace = WithoutLeadingSpace(value.substr(1));
    if (!behind_brace.starts_with('@')) return ReadBraced(std::string(behind_brace), names.list);
    ReadIncluded(behind_brace.substr(1), names.list);
    return true;
  }

 private:
  bool NextLine() {
    EndWhenAsked();
    const std::optional<std::string> line = lines_.Read(kLongLine);
    if (line) line_ = *line;
    return line.has_value();
  }

  bool FindLineBeginning(const char* option) {
    while (NextLine()) {
      if (BeginsWithNoCase(line_, option)) return true;
    }
    return false;
  }

  /// What stands behind the option and the one character that follows it.
  std::string_view ValueOnLine(std::string_view option) const {
    return std::string_view(line_).substr(std::min(option.size() + 1, line_.size()));
  }

  /// The first engine may stand behind the brace, and so may, behind it, the brace that ends the
  /// list.
  bool ReadBraced(std::string first_line, EngineList list) {
    TrimWhiteSpaceRight(first_line);
    const bool ends = first_line.ends_with('}');
    if (ends) first_line.pop_back();
    ImportEngineLine(first_line, true, list, database_);
    if (ends) return true;
    while (NextLine()) {
      if (FirstWord(line_) == "}") return true;
      ImportEngineLine(line_, true, list, database_);
    }
    return false;
  }

  /// The engines of `"one.exe\ntwo.exe"`: "\n" stands there as the two characters.
  bool ReadQuoted(std::string_view value, EngineList list) {
    if (!value.starts_with('"')) return false;
    value.remove_prefix(1);
    const std::size_t closing = value.find('"');
    if (closing == std::string_view::npos) return false;
    value = value.substr(0, closing);
    while (!value.empty()) {
      const std::size_t end = value.find("\\n");
      ImportEngineLine(std::string(value.substr(0, end)), false, list, database_);
      value = end == std::string_view::npos ? "" : value.substr(end + 2);
    }
    return true;
  }

  /// The engines of the file named in the brace. A file that cannot be read has none. The lines in
  /// it are engines and nothing else, so a file that names itself ends like any other.
  void ReadIncluded(std::string_view name, EngineList list) {
    const Words words = SplitWords(name, {"}", "\"'"});
    if (words.empty()) return;
    const auto text = ReadFile(files_, WithoutQuotes(words.front()), kPlayerFileLimit);
    if (!text) return;
    LineReader lines(*text);
    while (const auto line = lines.Read(kLongLine)) {
      EndWhenAsked();
      if (FirstWord(*line) != "}") ImportEngineLine(*line, true, list, database_);
    }
  }

  FileSystem& files_;
  LineReader lines_;
  PlayerDatabase& database_;
  std::string line_;
};

}  // namespace

bool ImportWinboardIni(FileSystem& files, const std::string& text, PlayerDatabase& database) {
  Importer importer(files, text, database);
  if (importer.ReadList(kFirstList) && importer.ReadList(kSecondList)) return true;
  PrintText("Can't understand the line '" + WithoutLineFeed(importer.Line()) + "'");
  return false;
}

void ImportEngineLine(const std::string& line, bool in_braces, EngineList list,
                      PlayerDatabase& database) {
  Words words = SplitWords(WithoutLineFeed(line), {"=;", in_braces ? "\"'" : "'"});
  std::transform(words.begin(), words.end(), words.begin(), WithSlash);
  const std::size_t before_options = CountWordsBeforeOptions(words);
  PlayerTexts texts;
  if (std::any_of(words.begin(), words.end(), GivesCommand)) {
    TakeNameAndOptions(words, before_options, texts);
  } else {
    TakeCommand(words, before_options, texts);
    TakeOptions(words, before_options, NamesOf(list), texts);
  }
  if (texts.name.empty()) texts.name = NameOfProgram(texts.program_exe);
  if (!texts.name.empty() || !texts.program_exe.empty()) AddImported(std::move(texts), database);
}

}  // namespace tarvendo
