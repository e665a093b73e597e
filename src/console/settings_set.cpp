#include <algorithm>
#include <array>
#include <string>

#include "base/log.h"
#include "base/text.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/handlers.h"
#include "console/name_list.h"
#include "console/unknown_word.h"
#include "console/word_form.h"
#include "platform/paths.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

constexpr std::array kChangeableSettings = {
    "BlackOptions", "Computer",   "FilesPath",   "HashTables",   "Name",
    "PgnFile",      "PicsDir",    "Ponder",      "Rounds",       "SaveDebugFiles",
    "SubRounds",    "Tablebases", "TimeControl", "WhiteOptions", "WinboardPath"};

/// Whether the word switches a flag on; every other word switches it off.
bool MeansOn(const std::string& word) {
  return BeginsWithNoCase(word, "on") || BeginsWithNoCase(word, "tr");
}

const char* NowOnOff(int flag) {
  return flag != 0 ? "now ON" : "now OFF";
}

// Each setter is called with a value that is not empty, sets it and prints the outcome. False when
// it refuses the value.
using Setter = bool (*)(CommandContext& context);

bool SetPonder(CommandContext& context) {
  const int ponder = MeansOn(context.args.Word(2)) ? 1 : 0;
  context.tourney.ChangeSettings()->ponder = ponder;
  Print("Ponder is %s.\n", NowOnOff(ponder));
  return true;
}

bool SetAutoRun(CommandContext& context) {
  const int auto_run = MeansOn(context.args.Word(2)) ? 1 : 0;
  context.tourney.ChangeSettings()->auto_run = auto_run;
  Print("AutoRun is %s.\n", NowOnOff(auto_run));
  return true;
}

bool SetAutoSave(CommandContext& context) {
  const bool is_on = MeansOn(context.args.Word(2));
  context.tourney.ChangeSettings()->auto_save = is_on ? 1 : 0;
  if (!is_on) {
    Print("AutoSave is now OFF.\n");
    return true;
  }
  if (context.args.Count() > 3) context.file.SetName(context.args.Word(3));
  PrintText("AutoSave is now ON, save file: " + context.file.Name() + "\n");
  return true;
}

bool SetSaveDebug(CommandContext& context) {
  const auto settings = context.tourney.ChangeSettings();
  int& wish = settings->save_debug_files;
  if (BeginsWithNoCase(context.args.Word(2), "al")) {
    wish = kSaveAlways;
    Print("Debug files are now saved ALWAYS.\n");
  } else if (BeginsWithNoCase(context.args.Word(2), "au")) {
    wish = kSaveAutomatically;
    Print("Debug files to be saved are now selected AUTOMATICALLY.\n");
  } else {
    wish = kSaveNever;
    Print("Debug files are now saved NEVER.\n");
  }
  return true;
}

bool SetSubRounds(CommandContext& context) {
  const int sub_rounds = ToInt(context.args.Word(2));
  context.tourney.ChangeSettings()->sub_rounds = sub_rounds;
  Print("SubRounds = %d\n", sub_rounds);
  return true;
}

bool SetPgnFile(CommandContext& context) {
  const std::string name = context.args.Word(2);
  const auto settings = context.tourney.ChangeSettings();
  settings->pgn_file = IsBareName(name) ? settings->files_path + name : name;
  PrintText("PgnFile = " + settings->pgn_file + "\n");
  return true;
}

bool SetTimeControl(CommandContext& context) {
  const TimeControl control = ParseTimeControl(context.args.RestFrom(2));
  context.tourney.ChangeSettings()->time_control = control;
  std::string text = Format("TimeControl = Time: %d", control.seconds / 60);
  if (control.seconds % 60 != 0) text += Format(":%d", control.seconds % 60);
  PrintText(text + Format(", Inc: %d, Mps: %d\n", control.inc, control.mps));
  return true;
}

bool SetRounds(CommandContext& context) {
  if (!context.tourney.IsSwiss()) {
    Print("Tourney type not SWISS, so number of rounds will be determined automatically.\n");
    return false;
  }
  if (context.args.Count() < 3) {
    Print("You should specify a value, too.\n");
    return false;
  }
  const int rounds = ToInt(context.args.Word(2));
  if (rounds < 1) {
    Print("How about a positive value?\n");
    return false;
  }
  const int half = static_cast<int>(context.tourney.Participants().size() / 2);
  if (rounds > half) {
    // The correction is announced, but what the user asked for is stored all the same.
    Print("Amount of rounds can't be more than half of players in the tourney.\n");
    Print("Setting Rounds to %d.\n", half);
  }
  context.tourney.ChangeSettings()->rounds = rounds;
  Print("Rounds: %d\n", rounds);
  return true;
}

bool SetType(CommandContext& context) {
  const bool swiss = BeginsWithNoCase(context.args.Word(2), "s");
  context.tourney.ChangeSettings()->type = swiss ? kSwiss : kRoundRobin;
  Print(swiss ? "Tourney type now SWISS.\n" : "Tourney type now ROUND ROBIN.\n");
  return true;
}

constexpr const char* kWantsValue = "How about specifying a value, too?\n";

constexpr const char* kOnOff = "on,off";

/// A setting with a rule of its own.
struct RuledSetting {
  const char* prefix;
  const char* name;
  const char* without_value;  ///< printed when there is no value; null when the setter sees to that
  Setter set;
  const char* choices = "";  ///< the words for its value, a comma between two
  Operand value = Operand::kNothing;
};

/// A setting that is the rest of the line.
struct TextSetting {
  const char* prefix;
  const char* name;
  std::string TourneySettings::*text;
  const char* shown;  ///< how the messages name it
  const char* quote;  ///< what stands around a value in its message
  bool may_be_empty;
  Operand value = Operand::kNothing;
};

constexpr std::array<RuledSetting, 6> kFirstRuled = {{
    {"pond", "Ponder", "You want ponder on or off?\n", SetPonder, kOnOff},
    {"autor", "AutoRun", "You want autorun on or off?\n", SetAutoRun, kOnOff},
    {"autos", "AutoSave", "You want autosave on or off?\n", SetAutoSave, kOnOff},
    {"sav", "SaveDebugFiles",
     "Do you want to save winboard.debug-files always, never or automatically?\n", SetSaveDebug,
     "always,never,automatically"},
    {"sub", "SubRounds", kWantsValue, SetSubRounds},
    {"pgn", "PgnFile", kWantsValue, SetPgnFile, "", Operand::kFile},
}};

constexpr std::array<TextSetting, 9> kTexts = {{
    {"fil", "FilesPath", &TourneySettings::files_path, "FilesPath", "", true, Operand::kDirectory},
    {"pic", "PicsDir", &TourneySettings::pics_dir, "PicsDir", "", true, Operand::kDirectory},
    {"com", "Computer", &TourneySettings::computer, "Computer", "", true},
    {"has", "HashTables", &TourneySettings::hash_tables, "Hashtables", "", true},
    {"tab", "Tablebases", &TourneySettings::tablebases, "Tablebases", "", true},
    {"name", "Name", &TourneySettings::name, "Name", "", true},
    {"whi", "WhiteOptions", &TourneySettings::white_options, "WhiteOptions", "'", true},
    {"bla", "BlackOptions", &TourneySettings::black_options, "BlackOptions", "'", true},
    {"win", "WinboardPath", &TourneySettings::winboard_path, "WinBoardPath", "", false,
     Operand::kFile},
}};

constexpr std::array<RuledSetting, 3> kLastRuled = {{
    {"tim", "TimeControl", "Time control: <Moves per sesion> <Time> <Inc>\n", SetTimeControl},
    {"rounds", "Rounds", nullptr, SetRounds},
    {"type", "Type", nullptr, SetType, "swiss,roundrobin"},
}};

template <typename Settings>
auto FindSetting(const Settings& settings, const std::string& word) -> decltype(settings.data()) {
  for (const auto& setting : settings) {
    if (BeginsWithNoCase(word, setting.prefix)) return &setting;
  }
  return nullptr;
}

bool SetByRule(const RuledSetting& setting, CommandContext& context) {
  if (context.args.Count() < 3 && setting.without_value != nullptr) {
    Print("%s", setting.without_value);
    return false;
  }
  return setting.set(context);
}

bool SetText(const TextSetting& setting, CommandContext& context) {
  std::string value = context.args.RestFrom(2);
  if (value.empty() && !setting.may_be_empty) {
    Print(kWantsValue);
    return false;
  }
  const char* quote = value.empty() ? "'" : setting.quote;
  if (value.empty() && setting.text == &TourneySettings::name) value = "My own tourney";
  const bool is_directory = setting.text == &TourneySettings::files_path;
  if (is_directory && !value.empty() && !value.ends_with('\\')) value += '\\';
  const auto settings = context.tourney.ChangeSettings();
  (*settings).*setting.text = value;
  PrintText(std::string(setting.shown) + " = " + quote + value + quote + "\n");
  return true;
}

/// Changes the setting that the second word names. False when it is unknown or the value is
/// refused.
bool SetSetting(CommandContext& context) {
  const std::string word = context.args.Word(1);
  if (const auto* first = FindSetting(kFirstRuled, word)) return SetByRule(*first, context);
  if (const auto* text = FindSetting(kTexts, word)) return SetText(*text, context);
  if (const auto* last = FindSetting(kLastRuled, word)) return SetByRule(*last, context);
  PrintUnknownWord(word);
  return false;
}

}  // namespace

std::vector<WordForm> SettingsToSet() {
  std::vector<WordForm> words;
  const auto add_ruled = [&](const RuledSetting& setting) {
    words.push_back({setting.name, setting.prefix, setting.value, setting.choices});
  };
  std::for_each(kFirstRuled.begin(), kFirstRuled.end(), add_ruled);
  for (const TextSetting& setting : kTexts)
    words.push_back({setting.name, setting.prefix, setting.value, ""});
  std::for_each(kLastRuled.begin(), kLastRuled.end(), add_ruled);
  return words;
}

void DoSet(CommandContext& context) {
  if (context.args.Count() < 2) return PrintNameList(kChangeableSettings);
  if (SetSetting(context)) context.must_save = true;
}

}  // namespace tarvendo
