#include "players/player_file.h"

#include <array>
#include <utility>

#include "base/line_reader.h"
#include "base/log.h"
#include "base/long_read.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "platform/faults.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "players/engines_json.h"
#include "players/player_database.h"
#include "players/winboard_import.h"

namespace tarvendo {
namespace {

struct Key {
  const char* prefix;   ///< how a key line begins, any case
  const char* written;  ///< how it is written
  std::string PlayerTexts::*value;
};

/// In the order in which they are written.
constexpr std::array<Key, 7> kKeys = {{
    {"name", "Name:", &PlayerTexts::name},
    {"whi", "WhiteOptions:", &PlayerTexts::white_options},
    {"bla", "BlackOptions:", &PlayerTexts::black_options},
    {"program", "ProgramExe:", &PlayerTexts::program_exe},
    {"group", "Group:", &PlayerTexts::group},
    {"init", "InitString:", &PlayerTexts::init_string},
    {"dir", "Dir:", &PlayerTexts::dir},
}};

const Key* FindKey(const std::string& line) {
  for (const Key& key : kKeys) {
    if (BeginsWithNoCase(line, key.prefix)) return &key;
  }
  return nullptr;
}

void SkipToBlock(LineReader& lines) {
  while (const auto line = lines.Read(kRecordLine)) {
    EndWhenAsked();
    if (line->starts_with("PLAYER")) return;
  }
}

/// `name` is that of the file.
bool ReadPlayerText(FileSystem& files, const std::string& name, const std::string& text,
                    PlayerDatabase& database) {
  LineReader lines(text);
  const auto first = lines.Read(kRecordLine);
  if (!first || !first->starts_with("PLAYER_FILE")) {
    return IsEnginesJson(text) ? ImportEnginesJson(text, name, database)
                               : ImportWinboardIni(files, text, database);
  }
  while (!lines.AtEnd() && !database.IsFull() && ReadPlayerBlock(lines, database))
    EndWhenAsked();
  return true;
}

/// The configuration beside WinBoard; empty when its path names no directory.
std::string ConfigurationBeside(const std::string& winboard_path) {
  const std::size_t separator = LastSeparator(winboard_path);
  if (separator == std::string::npos) return "";
  return winboard_path.substr(0, separator + 1) + "winboard.ini";
}

}  // namespace

bool WritePlayerFile(FileSystem& files, const std::string& path, const PlayerDatabase& database) {
  std::string text = "PLAYER_FILE\n";
  for (const Player& player : database.Players()) {
    text += "PLAYER\n";
    for (const Key& key : kKeys) {
      text.append(key.written).append("\n").append(player.texts.*key.value).append("\n");
    }
    text += "END_PLAYER\n\n";
  }
  const SaveOutcome outcome = SaveDurably(files, path, text);
  if (outcome == SaveOutcome::kInPlace) TellOfSaveInPlace(path);
  return outcome != SaveOutcome::kFailed;
}

bool ReadPlayerFile(FileSystem& files, const std::string& path, const std::string& winboard_path,
                    PlayerDatabase& database) {
  std::string name = path;
  if (name.empty()) {
    name = ConfigurationBeside(winboard_path);
    if (name.empty()) return false;
    PrintText("Because no player file was specified, file\n'" + name + "' is tried.\n");
  }
  const auto [text, is_too_long] = ReadLongFile(files, name, kPlayerFileLimit);
  if (is_too_long) PrintText(TooLongMessage(name, kPlayerFileLimit));
  if (!text) {
    PrintText("Error opening file '" + name + "'\n");
    return false;
  }
  const bool read = ReadPlayerText(files, name, *text, database);
  if (database.IsFull()) {
    const auto count = static_cast<int>(database.Players().size());
    Print("There are %d players, more are not read.\n", count);
  }
  return read;
}

bool ReadPlayerBlock(LineReader& lines, PlayerDatabase& database) {
  SkipToBlock(lines);
  PlayerTexts texts;
  bool any_value = false;
  while (const auto line = lines.Read(kRecordLine)) {
    EndWhenAsked();
    if (const Key* key = FindKey(*line)) {
      std::string value = lines.Read(kRecordLine).value_or("");
      TrimRight(value);
      texts.*(key->value) = value;
      any_value = true;
    } else if (line->starts_with("END_PLAYER")) {
      break;
    }
  }
  if (any_value) database.CreatePlayer(std::move(texts));
  return any_value;
}

}  // namespace tarvendo
