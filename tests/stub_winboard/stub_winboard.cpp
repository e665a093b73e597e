// Takes WinBoard's command line, as a game's batch file gives it, and leaves behind what WinBoard
// would: winboard.debug in the current directory and the PGN file. README.md tells how a game is
// planned.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "command_words.h"
#include "known_options.h"
#include "plan.h"

namespace stub {
namespace {

constexpr const char* kWordsFile = "stub_words.txt";
constexpr const char* kRunningFile = "stub_running";
constexpr const char* kPauseFile = "stub_pause";
constexpr const char* kPlayingFile = "stub_playing";
constexpr const char* kGoFile = "stub_go";
constexpr const char* kDebugFile = "winboard.debug";
constexpr int kRefused = 2;  ///< the exit code of a WinBoard that does not understand its words
constexpr auto kPatience = std::chrono::seconds(90);

using Words = std::vector<std::string>;

bool Exists(const std::string& name) {
  std::error_code error;
  return std::filesystem::exists(std::filesystem::path(name), error);
}

/// Waits until `done` holds. False when it does not come true in time.
bool Await(const std::function<bool()>& done) {
  const auto end = std::chrono::steady_clock::now() + kPatience;
  while (!done()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return true;
}

/// Not every host lets go of a file while another program, a moment longer, has it open.
void Remove(const std::string& name) {
  Await([&] {
    std::error_code error;
    std::filesystem::remove(std::filesystem::path(name), error);
    return !Exists(name);
  });
}

void WriteFile(const std::string& name, const std::string& text,
               std::ios::openmode mode = std::ios::trunc) {
  std::ofstream(name, std::ios::out | mode) << text;
}

std::string BytesOf(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void Copy(const std::string& from, const std::string& to) {
  std::ofstream(to, std::ios::binary) << BytesOf(from);
}

/// The text of a file, with line feeds alone as line ends.
std::string TextOf(const std::string& name) {
  std::string text = BytesOf(name);
  for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos; ++at) {
    text.erase(at, 1);
  }
  return text;
}

std::string UpperCase(std::string text) {
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return text;
}

/// The value of an option such as /sgf=g7.PGN; empty when it is not there.
std::string ValueOf(const Words& words, const std::string& option) {
  for (const std::string& word : words) {
    if (word.compare(0, option.size(), option) == 0) return word.substr(option.size());
  }
  return "";
}

bool Has(const Words& words, const std::string& word) {
  return std::find(words.begin(), words.end(), word) != words.end();
}

/// "alpha" for c:\engines\alpha.exe xboard.
std::string EngineName(const std::string& command) {
  std::string name = command.substr(0, command.find(' '));
  const std::size_t separator = name.find_last_of("/\\");
  if (separator != std::string::npos) name.erase(0, separator + 1);
  return name.substr(0, name.find('.'));
}

/// How often the game has been started so far, from what was written down then.
int PlaysSoFar(const std::string& name) {
  std::ifstream file(kWordsFile);
  int plays = 0;
  for (std::string line; std::getline(file, line);) {
    if (line.compare(0, name.size() + 1, name + ":") == 0) ++plays;
  }
  return plays;
}

/// WinBoard writes it to its own directory, or where it is told to.
std::string DebugFile(const Words& words) {
  const std::string name = HostName(ValueOf(words, "/debugfile="));
  return name.empty() ? kDebugFile : name;
}

/// What is wrong with the words: one that WinBoard does not understand, and every option without
/// which the tourney could not go on.
std::string Complaints(const Words& words) {
  std::string complaints;
  const std::string refusal = Refusal(words);
  if (!refusal.empty()) complaints += "  " + refusal + "\n";
  for (const char* needed : {"/cp", "/mg", "/debug", "/xexit", "/xpopup", "/autoflag"}) {
    if (!Has(words, needed)) complaints += std::string("  MISSING ") + needed + "\n";
  }
  for (const char* needed : {"/sgf=", "/fcp=", "/scp="}) {
    if (ValueOf(words, needed).empty()) complaints += std::string("  MISSING ") + needed + "\n";
  }
  for (const char* file : {"/lgf=", "/lpf="}) {
    const std::string name = HostName(ValueOf(words, file));
    if (!name.empty() && !Exists(name)) complaints += std::string("  NO FILE FOR ") + file + "\n";
  }
  if (Exists(HostName(ValueOf(words, "/sgf=")))) complaints += "  THE GAME HAS A RECORD ALREADY\n";
  if (Exists(DebugFile(words))) complaints += "  A DEBUG FILE IS THERE ALREADY\n";
  if (Exists(kRunningFile)) complaints += "  ANOTHER GAME IS BEING PLAYED\n";
  return complaints;
}

void NoteWords(const GameKey& key, const Words& words) {
  std::string line = key.name + ":";
  for (const std::string& word : words)
    line += " [" + word + "]";
  WriteFile(kWordsFile, line + "\n" + Complaints(words), std::ios::app);
}

std::string Pgn(const GameKey& key, const Plan& plan) {
  std::string tags = "[Event \"Computer Chess Game\"]\n[Site \"stub\"]\n[Date \"2001.09.25\"]\n";
  tags += "[Round \"-\"]\n[White \"" + key.white + "\"]\n[Black \"" + key.black + "\"]\n";
  if (!plan.Says("notag")) tags += "[Result \"" + plan.result + "\"]\n";
  if (plan.Says("upper")) tags = UpperCase(tags);
  std::string moves = "\n1. e4 e5 2. Nf3 Nc6\n";
  if (plan.Says("long")) moves.append("{").append(600, 'x').append("}\n");
  for (int i = 0; i < plan.kilobytes; ++i)
    moves.append("{").append(1021, 'k').append("}\n");
  return tags + moves.append("{").append(key.name).append("} ") + plan.result + "\n\n";
}

/// Every byte there is, in lines of no meaning.
std::string Garbage() {
  std::string bytes;
  for (int i = 0; i < 2048; ++i)
    bytes += static_cast<char>((i * 7 + i / 256) % 256);
  return bytes + "\n";
}

/// What WinBoard writes before the first move. It sets up the board and loads the game that is to
/// be played on, neither of which ends the game.
std::string Opening(const Plan& plan, const Words& words) {
  std::string text =
      "Reset(1, 0) from gameMode 0\nrecognized 'normal' (-1) as variant normal\n"
      "shuffleOpenings = 0\nTimeControl\nEngines are started\n";
  if (plan.Says("early")) text = "Reset(1, 0)\nGameEnds(27, White mates, 6)\nThree\nFour\nFive\n";
  if (plan.Says("garbage")) text += Garbage();
  if (plan.Says("long")) text += std::string(1000, 'l') + "\n" + std::string(254, 'm') + "\n";
  text += "GameEnds(0, (null), 2)\nReset(0, 1) from gameMode 2\nGameEnds(0, (null), 2)\n";
  const bool is_loading = !ValueOf(words, "/lgf=").empty();
  return is_loading ? text + "Parsed game end: 1/2-1/2\nGameEnds(28, , 3)\n" : text;
}

/// Asks whoever plays the clock to let the runner look at the files as they are now.
void AskForLook() {
  WriteFile(kPauseFile, "");
  Await([] { return !Exists(kPauseFile); });
}

class Player {
 public:
  Player(GameKey key, Plan plan, const Words& words)
      : key_(std::move(key)),
        plan_(std::move(plan)),
        pgn_file_(HostName(ValueOf(words, "/sgf="))),
        debug_file_(DebugFile(words)),
        opening_(Opening(plan_, words)) {}

  int Play() const {
    Debug(opening_);
    if (plan_.Says("hold")) Hold();
    if (plan_.Says("look")) AskForLook();
    std::this_thread::sleep_for(std::chrono::milliseconds(plan_.milliseconds));
    if (plan_.Says("crash")) return 3;
    Debug(">first : move e2e4\n<second: move e7e5\n");
    const bool is_late = plan_.Says("late");
    if (is_late || plan_.Says("empty")) WriteFile(pgn_file_, "");
    if (is_late) {
      DebugEnd();
      AskForLook();
    }
    if (!plan_.Says("nopgn") && !plan_.Says("empty")) WritePgn();
    if (!is_late && !plan_.Says("early")) DebugEnd();
    return 0;
  }

 private:
  void Debug(const std::string& text) const {
    if (plan_.Says("nodebug")) return;
    WriteFile(debug_file_, plan_.Says("upper") ? UpperCase(text) : text, std::ios::app);
  }

  void DebugEnd() const {
    Debug("GameEnds(27, " + plan_.result + ", 6)\nGameEnds(27, " + plan_.result + ", 2)\nbye\n");
  }

  static void Hold() {
    WriteFile(kPlayingFile, "");
    Await([] { return Exists(kGoFile); });
    Remove(kPlayingFile);
    Remove(kGoFile);
  }

  void WritePgn() const {
    if (!plan_.pgn_from.empty()) {
      Copy(plan_.pgn_from, pgn_file_);
    } else {
      WriteFile(pgn_file_, plan_.Says("garbage") ? Garbage() : Pgn(key_, plan_));
    }
  }

  GameKey key_;
  Plan plan_;
  std::string pgn_file_;
  std::string debug_file_;
  std::string opening_;
};

/// Whether WinBoard understands its words. When it does not, it says so and does nothing.
bool Understands(const Words& words) {
  const std::string refusal = Refusal(words);
  if (!refusal.empty()) std::cerr << refusal << "\n";
  return refusal.empty();
}

int ShowGames(const Words& words) {
  if (!Understands(words)) return kRefused;
  for (const std::string& word : words)
    std::cout << word << "\n";
  return 0;
}

/// Notes for as long as it lives that a game of that name is being played; a directory, for only
/// one can make it. A complaint when another one has.
class PlayingNote {
 public:
  explicit PlayingNote(const std::string& name) : directory_(kNotePrefix + name) {
    std::error_code error;
    is_ours_ = std::filesystem::create_directory(directory_, error);
    if (!is_ours_) WriteFile(kWordsFile, "  THIS GAME IS BEING PLAYED ALREADY\n", std::ios::app);
  }
  ~PlayingNote() {
    if (is_ours_) Remove(directory_);
  }
  PlayingNote(const PlayingNote&) = delete;
  PlayingNote& operator=(const PlayingNote&) = delete;

 private:
  static constexpr const char* kNotePrefix = "stub_plays_";

  std::string directory_;
  bool is_ours_ = false;
};

int PlayGame(const Words& words) {
  LeaveConsole();
  GameKey key;
  key.name = std::filesystem::path(HostName(ValueOf(words, "/sgf="))).stem().string();
  key.white = EngineName(ValueOf(words, "/fcp="));
  key.black = EngineName(ValueOf(words, "/scp="));
  key.play = PlaysSoFar(key.name) + 1;
  NoteWords(key, words);
  if (!Understands(words)) return kRefused;
  const PlayingNote note(key.name);
  WriteFile(kRunningFile, "");
  const int exit_code = Player(key, ReadPlan(key), words).Play();
  Remove(kRunningFile);
  return exit_code;
}

bool FileHolds(const std::string& name, const std::string& text) {
  return TextOf(name).find(text) != std::string::npos;
}

/// An underline stands for a blank: a script that awaits a text in the log must not find its own
/// line there.
std::string WithBlanks(std::string text) {
  std::replace(text.begin(), text.end(), '_', ' ');
  return text;
}

std::string WithLineFeeds(std::string text) {
  std::replace(text.begin(), text.end(), '~', '\n');
  return text;
}

/// What a script asks for through the shell, in words that every host's shell hands on alike.
/// False when the words are WinBoard's own.
bool ServeScript(const Words& words) {
  const std::string file = HostName(ValueOf(words, "/file="));
  const std::string text = WithBlanks(ValueOf(words, "/text="));
  if (Has(words, "/touch")) {
    WriteFile(file, "");
  } else if (Has(words, "/await") || Has(words, "/gone")) {
    const bool wanted = Has(words, "/await");
    const auto is_there = [&] { return text.empty() ? Exists(file) : FileHolds(file, text); };
    if (!Await([&] { return is_there() == wanted; })) {
      std::cout << "waited for " << file << " in vain\n";
    }
  } else if (Has(words, "/remove")) {
    Remove(file);
  } else if (Has(words, "/write")) {
    WriteFile(file, text + "\n");
  } else if (Has(words, "/print")) {
    std::cout << WithLineFeeds(text);
  } else if (Has(words, "/show")) {
    std::cout << TextOf(file);
  } else if (Has(words, "/copy")) {
    Copy(file, HostName(ValueOf(words, "/to=")));
  } else {
    return false;
  }
  return true;
}

}  // namespace
}  // namespace stub

int main(int count, char** words) {
  const std::vector<std::string> given = stub::CommandWords(count, words);
  if (stub::ServeScript(given)) return 0;
  if (stub::Has(given, "/ncp")) return stub::ShowGames(given);
  return stub::PlayGame(given);
}
