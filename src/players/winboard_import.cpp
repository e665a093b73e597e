#include "players/winboard_import.h"

#include <algorithm>
#include <optional>
#include <vector>

#include "base/line_reader.h"
#include "base/log.h"
#include "base/text.h"
#include "base/word_splitter.h"
#include "platform/files.h"
#include "players/player_database.h"

// WinBoard keeps the engines that it offers for White and for Black in two lists of its
// configuration. A list is either braced, one engine on each line behind the one with the brace,
//
//   /firstChessProgramNames={
//   fairymax /fd="c:\engines\fairymax" /name="Fairy-Max"
//   "my engine.exe" xboard
//   }
//
// or a quoted value on the line itself: /firstChessProgramNames="one.exe\ntwo.exe".

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

std::string_view WithoutLeadingSpace(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
  return text;
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

std::size_t CountCommandWords(const Words& words) {
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

/// The text that the option takes as its value; null for one that WinBoard itself is to get.
std::string* ValueOf(const std::string& option, const ListNames& names, PlayerTexts& texts) {
  if (BeginsWithNoCase(option, names.short_dir) || BeginsWithNoCase(option, names.long_dir)) {
    return &texts.dir;
  }
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
}

/// "c:\engines\Crafty.EXE" is called "Crafty".
std::string NameOfProgram(const std::string& program) {
  const std::size_t separator = program.find_last_of("/\\");
  std::string name = separator == std::string::npos ? program : program.substr(separator + 1);
  const bool has_extension = name.size() >= 4 && EqualsNoCase(name.substr(name.size() - 4), ".exe");
  if (has_extension) name.resize(name.size() - 4);
  return name;
}

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
    if (!behind_brace.starts_with('@')) return ReadBraced(names.list);
    ReadIncluded(behind_brace.substr(1), names.list);
    return true;
  }

 private:
  bool NextLine() {
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

  bool ReadBraced(EngineList list) {
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
    const auto text = files_.ReadText(WithoutQuotes(words.front()));
    if (!text) return;
    LineReader lines(*text);
    while (const auto line = lines.Read(kLongLine)) {
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
  const Words words = SplitWords(WithoutLineFeed(line), {"=;", in_braces ? "\"'" : "'"});
  const std::size_t command_words = CountCommandWords(words);
  PlayerTexts texts;
  TakeCommand(words, command_words, texts);
  TakeOptions(words, command_words, NamesOf(list), texts);
  TrimBothSides(texts.*NamesOf(list).options);
  if (texts.name.empty()) texts.name = NameOfProgram(texts.program_exe);
  const bool names_nobody = texts.name.empty() && texts.program_exe.empty();
  if (!names_nobody) database.CreatePlayer(std::move(texts));
}

}  // namespace tarvendo
