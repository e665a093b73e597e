// The other program keeps its engines in one JSON array. Of each engine it knows more than
// WinBoard's options can say; whoever comes from there is told what has stayed behind. The text is
// understood as a whole before anybody is added, so that a broken file changes nothing.

#include "players/engines_json.h"

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

#include "base/log.h"
#include "base/text.h"
#include "platform/faults.h"
#include "players/player_database.h"
#include "players/winboard_import.h"

namespace tarvendo {
namespace {

using Json = nlohmann::ordered_json;

/// Deeper than any list of engines; what lies there is not kept.
constexpr int kDeepest = 6;

/// Why the text is no list of engines; ends the import before anybody is added.
struct Misfit : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// An engine of the list, and what of it has no place in a player.
struct Engine {
  PlayerTexts texts;
  std::vector<std::string> left_out;
};

constexpr std::string_view kBlanks = " \t\r\n";

/// The text of a field, or nothing when the field is not there. One with a line end in it would
/// break the files that it is written to.
std::optional<std::string> TextIn(const Json& engine, const char* key, const std::string& which) {
  const auto found = engine.find(key);
  if (found == engine.end() || found->is_null()) return std::nullopt;
  const auto* text = found->get_ptr<const std::string*>();
  const bool is_good =
      text != nullptr &&
      std::none_of(text->begin(), text->end(), [](unsigned char c) { return c < ' ' || c == 127; });
  if (!is_good) throw Misfit(which + " has a '" + key + "' that is no text on one line");
  return *text;
}

/// Takes the program off the front of a command; a quoted one may hold blanks.
void TakeCommand(const std::string& command, PlayerTexts& texts) {
  const std::size_t begin = std::min(command.find_first_not_of(kBlanks), command.size());
  const char first = begin < command.size() ? command[begin] : ' ';
  const bool is_quoted = first == '"' || first == '\'';
  const std::size_t from = is_quoted ? begin + 1 : begin;
  const std::size_t end = std::min(
      is_quoted ? command.find(first, from) : command.find_first_of(kBlanks, from), command.size());
  texts.program_exe = command.substr(from, end - from);
  texts.init_string = command.substr(std::min(end + 1, command.size()));
  TrimBothSides(texts.init_string);
}

/// Whether the text can stand in a quoted value of an option.
bool IsPlain(std::string_view text) {
  return !text.empty() && text.find_first_of("\"'\\{}\n\r\t,=") == std::string_view::npos;
}

/// "Hash=64" for "setoption name Hash value 64"; empty for any other line.
std::string UciOption(const std::string& line) {
  constexpr std::string_view kName = "setoption name ";
  constexpr std::string_view kValue = " value ";
  const std::size_t value = line.find(kValue);
  if (!line.starts_with(kName) || value == std::string::npos || value < kName.size()) return "";
  const std::string name = line.substr(kName.size(), value - kName.size());
  const std::string given = line.substr(value + kValue.size());
  return IsPlain(name) && IsPlain(given) ? name + "=" + given : "";
}

/// The lines that the engine is sent at its start.
std::vector<std::string> InitStringsOf(const Json& engine, const std::string& which) {
  const auto found = engine.find("initStrings");
  if (found == engine.end() || found->is_null()) return {};
  std::vector<std::string> lines;
  const Json list = found->is_array() ? *found : Json::array({*found});
  for (const Json& line : list) {
    const auto* text = line.get_ptr<const std::string*>();
    if (text == nullptr) throw Misfit(which + " has an 'initStrings' that is no list of texts");
    if (!text->empty()) lines.push_back(*text);
  }
  return lines;
}

void AddOption(PlayerTexts& texts, const std::string& white, const std::string& black) {
  for (const auto& [options, word] :
       {std::pair{&texts.white_options, white}, std::pair{&texts.black_options, black}}) {
    *options += (options->empty() ? "" : " ") + word;
  }
}

void TakeInitStrings(const std::vector<std::string>& lines, bool is_uci, Engine& engine) {
  std::string value;
  for (const std::string& line : lines) {
    const std::string piece = is_uci ? UciOption(line) : IsPlain(line) ? line + "\\n" : "";
    if (piece.empty()) {
      engine.left_out.push_back("initStrings");
    } else {
      value += (is_uci && !value.empty() ? "," : "") + piece;
    }
  }
  if (value.empty()) return;
  if (is_uci) {
    AddOption(engine.texts, "/firstOptions=\"" + value + "\"", "/secondOptions=\"" + value + "\"");
  } else {
    // What WinBoard sends by itself stands in front.
    const std::string all = "=\"new\\nrandom\\n" + value + "\"";
    AddOption(engine.texts, "/firstInitString" + all, "/secondInitString" + all);
  }
}

/// Whether the field says no more than what holds anyway.
bool IsUsual(const std::string& key, const Json& value) {
  if (value.is_null() || (value.is_boolean() && !value.get<bool>())) return true;
  if ((value.is_string() || value.is_structured()) && (value.empty() || value == "")) return true;
  return (key == "restart" && value == "auto") ||
         (key == "variants" && value == Json::array({"standard"})) ||
         (key == "timeoutScale" && value == 1);
}

void NoteLeftOut(const Json& from, Engine& engine) {
  constexpr std::array<std::string_view, 5> kKnown = {"name", "command", "workingDirectory",
                                                      "protocol", "initStrings"};
  for (const auto& [key, value] : from.items()) {
    const bool is_known = std::find(kKnown.begin(), kKnown.end(), key) != kKnown.end();
    if (!is_known && !IsUsual(key, value)) engine.left_out.push_back(key);
  }
  std::sort(engine.left_out.begin(), engine.left_out.end());
  const auto end = std::unique(engine.left_out.begin(), engine.left_out.end());
  engine.left_out.erase(end, engine.left_out.end());
}

Engine ReadEngine(const Json& from, std::size_t number) {
  const std::string which = "engine " + std::to_string(number);
  if (!from.is_object()) throw Misfit(which + " is no object");
  Engine engine;
  PlayerTexts& texts = engine.texts;
  TakeCommand(TextIn(from, "command", which).value_or(""), texts);
  if (texts.program_exe.empty()) throw Misfit(which + " has no 'command'");
  texts.dir = TextIn(from, "workingDirectory", which).value_or("");
  texts.name = TextIn(from, "name", which).value_or("");
  TrimBothSides(texts.name);
  if (texts.name.empty()) texts.name = NameOfProgram(texts.program_exe);
  const std::string protocol = TextIn(from, "protocol", which).value_or("xboard");
  const bool is_uci = EqualsNoCase(protocol, "uci");
  if (is_uci) AddOption(texts, "/fUCI", "/sUCI");
  if (!is_uci && !EqualsNoCase(protocol, "xboard")) engine.left_out.push_back("protocol");
  TakeInitStrings(InitStringsOf(from, which), is_uci, engine);
  NoteLeftOut(from, engine);
  return engine;
}

void Add(Engine engine, PlayerDatabase& database) {
  const std::string name = engine.texts.name;
  AddImported(std::move(engine.texts), database);
  if (engine.left_out.empty()) return;
  std::string list;
  for (const std::string& key : engine.left_out)
    list += (list.empty() ? "" : ", ") + key;
  PrintText("Not carried over of " + name + ": " + list + ".\n");
}

std::vector<Engine> ReadEngines(const std::string& text) {
  const auto keep = [](int depth, Json::parse_event_t, Json&) {
    EndWhenAsked();
    return depth <= kDeepest;
  };
  const Json list = Json::parse(text, keep);
  std::vector<Engine> engines;
  for (const Json& engine : list)
    engines.push_back(ReadEngine(engine, engines.size() + 1));
  return engines;
}

/// The line of the text in which the byte with that number, counted from 1, stands.
int LineOf(const std::string& text, std::size_t byte) {
  const std::size_t end = std::min(byte > 0 ? byte - 1 : 0, text.size());
  const auto ends = std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n');
  return 1 + static_cast<int>(ends);
}

}  // namespace

bool IsEnginesJson(const std::string& text) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  const std::size_t from = text.starts_with(kByteOrderMark) ? kByteOrderMark.size() : 0;
  const std::size_t first = text.find_first_not_of(kBlanks, from);
  return first != std::string::npos && text[first] == '[';
}

bool ImportEnginesJson(const std::string& text, const std::string& name, PlayerDatabase& database) {
  std::string why;
  try {
    for (Engine& engine : ReadEngines(text))
      Add(std::move(engine), database);
    return true;
  } catch (const Json::parse_error& error) {
    why = Format("line %d is no JSON", LineOf(text, error.byte));
  } catch (const Json::out_of_range&) {
    // The one thing in a text that is JSON which the reader has no room for.
    why = "it holds a number that is too large";
  } catch (const Misfit& misfit) {
    why = misfit.what();
  }
  PrintText("The file '" + name + "' is no list of engines: " + why + ".\n");
  return false;
}

}  // namespace tarvendo
