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
#include "tourney/runner_switch_commands.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

constexpr std::array kReadableSettings = {
    "AutoRun",     "AutoSave",     "BlackOptions",   "Computer",    "FilesPath",
    "HashTables",  "Name",         "PgnFile",        "PicsDir",     "Ponder",
    "Rounds",      "RunnerStatus", "SaveDebugFiles", "SubRounds",   "Tablebases",
    "TimeControl", "Type",         "WhiteOptions",   "WinboardPath"};

const char* OnOff(int flag) {
  return flag != 0 ? "ON" : "OFF";
}

/// What the settings are read from.
struct Shown {
  explicit Shown(const CommandContext& context)
      : settings(context.tourney.Settings()),
        round(context.tourney.State().round),
        save_file(context.file.Name()) {}

  const TourneySettings& settings;
  int round;
  const std::string& save_file;
};

std::string AutoSaveLine(const Shown& t) {
  // A switched off AutoSave is reported under AutoRun's name: that is the program's text.
  return t.settings.auto_save != 0 ? "AutoSave is ON, save file: " + t.save_file + "\n"
                                   : "AutoRun is OFF.\n";
}

const char* SaveDebugWord(const TourneySettings& settings) {
  switch (settings.save_debug_files) {
    case kSaveAlways:
      return "ALWAYS";
    case kSaveAutomatically:
      return "AUTOMATICALLY";
    default:
      return "NEVER";
  }
}

std::string SaveDebugLine(const TourneySettings& settings) {
  if (settings.save_debug_files == kSaveAutomatically) {
    return "Debug files that are saved are selected AUTOMATICALLY.\n";
  }
  return std::string("Debug files are saved ") + SaveDebugWord(settings) + ".\n";
}

/// Minutes and seconds of the base time, the increment and the moves, with `blanks` before each
/// value.
std::string TimeControlLines(const TimeControl& control, const char* blanks) {
  return Format("TimeControl:\n    Time: %s%d:%02d\n    Inc:  %s%d\n    Mps:  %s%d\n", blanks,
                control.seconds / 60, control.seconds % 60, blanks, control.inc, blanks,
                control.mps);
}

/// How a setting is asked for and shown.
struct Readable {
  const char* prefix;
  std::string (*text)(const Shown& shown);  ///< null for the runner's own report
  bool anywhere = false;  ///< any word of the line may ask for it, not only the second
  /// The answer does not end the command, so that the message of an unknown word follows.
  bool goes_on = false;
};

constexpr std::array<Readable, 19> kReadables = {{
    {"pond", [](const Shown& t) { return Format("Ponder is %s.\n", OnOff(t.settings.ponder)); },
     false, true},
    {"autor", [](const Shown& t) { return Format("AutoRun is %s.\n", OnOff(t.settings.auto_run)); },
     false, true},
    {"autos", [](const Shown& t) { return AutoSaveLine(t); }, false, true},
    {"sav", [](const Shown& t) { return SaveDebugLine(t.settings); }},
    {"run", nullptr},
    {"sub", [](const Shown& t) { return Format("SubRounds = %d\n", t.settings.sub_rounds); }},
    {"rou", [](const Shown& t) { return Format("Round = %d/%d\n", t.round, t.settings.rounds); },
     true},
    {"type",
     [](const Shown& t) {
       return std::string(t.settings.type == kSwiss ? "Type = SWISS.\n" : "Type = ROUND ROBIN.\n");
     },
     true},
    {"fil", [](const Shown& t) { return "Files Path = " + t.settings.files_path + "\n"; }},
    {"pic", [](const Shown& t) { return "Pics Dir = " + t.settings.pics_dir + "\n"; }},
    {"tab", [](const Shown& t) { return "Tablebases = " + t.settings.tablebases + "\n"; }},
    {"com", [](const Shown& t) { return "Computer = " + t.settings.computer + "\n"; }},
    {"has", [](const Shown& t) { return "Hashtables = " + t.settings.hash_tables + "\n"; }},
    {"name", [](const Shown& t) { return "Name = " + t.settings.name + "\n"; }},
    {"pgn", [](const Shown& t) { return "PgnFile = " + t.settings.pgn_file + "\n"; }},
    {"win", [](const Shown& t) { return "WinboardPath = " + t.settings.winboard_path + "\n"; }},
    {"whi", [](const Shown& t) { return "WhiteOptions = '" + t.settings.white_options + "'\n"; }},
    {"bla", [](const Shown& t) { return "BlackOptions = '" + t.settings.black_options + "'\n"; }},
    {"tim", [](const Shown& t) { return TimeControlLines(t.settings.time_control, ""); }},
}};

bool IsAskedFor(const Readable& readable, const CommandArgs& args) {
  return readable.anywhere ? args.Find(readable.prefix, -1, 0) != 0
                           : args.Find(readable.prefix, 1, 0) != 0;
}

void PrintAll(const CommandContext& context) {
  const Tourney& tourney = context.tourney;
  const TourneySettings& s = tourney.Settings();
  std::string text = std::string("Type:          ") +
                     (tourney.IsSwiss() ? "Swiss\n" : "Round Robin\n") +
                     TimeControlLines(s.time_control, "     ");
  if (tourney.IsSwiss()) text += Format("Round:         %d/%d\n", tourney.State().round, s.rounds);
  text += Format("SubRounds:     %d\n", s.sub_rounds);
  text += "\nName:          " + s.name + "\nWinboardPath:  " + s.winboard_path +
          "\nFiles Path:    " + s.files_path + "\nPics Dir:      " + s.pics_dir +
          "\nPgnFile:       " + s.pgn_file + "\n\nComputer:     " + s.computer +
          "\nHashtables:    " + s.hash_tables + "\nPonder:        " + OnOff(s.ponder) +
          ".\nTablebases:    " + s.tablebases + "\nWhiteOptions:  '" + s.white_options +
          "'\nBlackOptions:  '" + s.black_options + "'\nAutoRun:       " + OnOff(s.auto_run) +
          ".\n";
  text += s.auto_save != 0 ? "AutoSave:      ON, save file: " + context.file.Name() + "\n"
                           : "AutoSave:      OFF.\n";
  PrintText(text + "SaveDebug:     " + SaveDebugWord(s) + ".");
  ShowRunnerStatus(tourney);
}

}  // namespace

std::vector<WordForm> SettingsToGet() {
  std::vector<WordForm> words = {{"all", "all"}};
  for (const char* const name : kReadableSettings)
    words.push_back({name, name});
  return words;
}

void DoGet(CommandContext& context) {
  const CommandArgs& args = context.args;
  if (args.Count() < 2) return PrintNameList(kReadableSettings);
  if (args.Find("all", 1, 0) != 0) return PrintAll(context);
  for (const Readable& readable : kReadables) {
    if (!IsAskedFor(readable, args)) continue;
    if (readable.text == nullptr) return ShowRunnerStatus(context.tourney);
    PrintText(readable.text(Shown(context)));
    if (!readable.goes_on) return;
  }
  PrintUnknownWord(args.Word(1));
}

}  // namespace tarvendo
