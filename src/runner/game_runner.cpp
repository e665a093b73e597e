#include "runner/game_runner.h"

#include "base/log.h"
#include "base/text.h"
#include "pairing/bracket_list.h"
#include "platform/files.h"
#include "platform/processes.h"
#include "runner/batch_file.h"
#include "runner/collect.h"
#include "runner/next_game.h"
#include "runner/spool.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

using std::chrono::milliseconds;

constexpr milliseconds kPollInterval{2000};
constexpr milliseconds kLockedFileWait{1000};
constexpr milliseconds kNoGameWait{2000};
constexpr milliseconds kStartWait{10000};
constexpr milliseconds kBetweenGamesWait{5000};
constexpr milliseconds kPanicWait{100};

constexpr int kTriesBetweenMessages = 10;

/// So many passes (a minute) after its process has ended, a WinBoard that said nothing has crashed.
/// It is long, because the started process may have handed the game on to another one.
constexpr int kPassesForTheDead = 30;

constexpr const char* kDebugFile = "winboard.debug";

std::string Stars(std::size_t count) {
  return std::string(count, '*');
}

bool WriteFile(FileSystem& files, const std::string& path, const std::string& text) {
  const auto file = files.Create(path);
  if (!file) return false;
  const bool written = file->Write(text);
  return file->Close() && written;
}

}  // namespace

milliseconds GameRunner::Pass() {
  is_idle_ = false;
  if (phase_ == Phase::kIdle) {
    if (shared_.Take()->Switch().IsRunning()) {
      busy_counter_ = 0;
      phase_ = Phase::kStart;
    } else {
      is_idle_ = true;
    }
    return kPollInterval;
  }
  return phase_ == Phase::kStart ? StartPass() : WatchPass();
}

milliseconds GameRunner::StartPass() {
  const Hold hold = shared_.Take();
  if (!hold->Switch().IsRunning()) {
    phase_ = Phase::kIdle;
    is_idle_ = true;
    return kPollInterval;
  }
  FileSystem& files = host_.files;
  const std::string files_path = hold->Settings().files_path;
  if (!FreeDebugFile(files_path + kDebugFile)) return kLockedFileWait + kPollInterval;
  CollectAll(*hold, files, file_.With(hold));
  const Game* game = NextGameToRun(*hold, files, brackets_.With(hold));
  // An empty or bad FilesPath leaves the current directory as it is.
  if (!files_path.empty()) files.ChangeDirectory(files_path);
  if (game == nullptr) {
    is_idle_ = true;
    return kNoGameWait + kPollInterval;
  }
  StartGame(hold, *game);
  return kStartWait + kPollInterval;
}

bool GameRunner::FreeDebugFile(const std::string& debug_path) {
  FileSystem& files = host_.files;
  if (!files.Exists(debug_path) || files.Remove(debug_path)) return true;
  if (--busy_counter_ < 0) {
    PrintText("\n" + Stars(52) + "\nSomething is accessing '" + debug_path +
              "',\ncan't run a game before it's free.\n" + Stars(52) + "\n> ");
    busy_counter_ = kTriesBetweenMessages;
  }
  return false;
}

void GameRunner::StartGame(const Hold& hold, const Game& game) {
  FileSystem& files = host_.files;
  PrintText(
      "\n" + Stars(70) + "\n" + Format("Starting game no. %d\n", game.number) +
      Format("White: %-20s Black: %-20s\n", game.white_player.c_str(), game.black_player.c_str()) +
      Format("Bat: %-22s\nPgn: %-22s\n", game.bat_file.c_str(), game.pgn_file.c_str()) + Stars(70) +
      "\n\n> ");
  if (files.Exists(kDebugFile)) files.Remove(kDebugFile);
  if (!files.IsReadable(game.bat_file)) SpoolGame(*hold, files, game);
  // What is being played must be known to the next start, or it would play the game a second time.
  file_.With(hold).AutoSave(*hold);
  // A batch file that does not start leaves no debug file, which the next pass reports.
  host_.processes.StartBatch(game.bat_file);
  played_ = {game.number, game.white_player, game.black_player, hold->Settings().files_path};
  has_waited_for_pgn_ = false;
  silent_passes_ = 0;
  watch_.Begin(played_.files_path + kDebugFile);
  phase_ = Phase::kWatch;
}

milliseconds GameRunner::WatchPass() {
  busy_counter_ = 0;
  const bool has_died = HasDiedSilently();
  switch (watch_.Look(host_.files)) {
    case DebugNews::kNoFile:
      return PanicStop();
    case DebugNews::kStillOpen:
      if (!has_died) return kPollInterval;
      has_waited_for_pgn_ = true;  // A minute was long enough.
      break;
    case DebugNews::kGameOver:
      break;
  }
  return EndGame();
}

bool GameRunner::HasDiedSilently() {
  const bool is_running = host_.processes.AnyBatchRunning();
  silent_passes_ = is_running ? 0 : silent_passes_ + 1;
  return silent_passes_ > kPassesForTheDead;
}

milliseconds GameRunner::PanicStop() {
  const Hold hold = shared_.Take();
  FileSystem& files = host_.files;
  const std::string stars = Stars(70);
  PrintText("\n" + stars +
            "\nError running game. Stopping game and setting its result to UNKNOWN.\n"
            "Possible reasons for this problem is that you have deleted\n"
            "the game's bat-file, or your player's directory or exe-file name are\n"
            "incorrect or your winboard-path is incorrect.\n" +
            stars + "\n> ");
  // The ordinary way of ending a game ends this one too: it finds the line behind the five header
  // lines.
  const bool written =
      WriteFile(files, kDebugFile, "Panic stop by Tarvendo\n \n \n \n \ngameends \n \n");
  if (written && files.IsReadable(kDebugFile)) {
    has_waited_for_pgn_ = true;  // Nobody is going to write one.
    watch_.Begin(kDebugFile);
    return kPanicWait;
  }
  PrintText(stars + "Error running game. I can't access winboard.debug, stopping runner." + stars);
  hold->ChangeSwitch()->SetRunning(false);
  hold->current_game = 0;
  phase_ = Phase::kIdle;
  return kPollInterval;
}

milliseconds GameRunner::EndGame() {
  const Hold hold = shared_.Take();
  const Game* game = FindPlayedGame(*hold);
  const bool is_due = game != nullptr && !game->IsReady() && LacksPgn(host_.files, *game);
  if (is_due && !has_waited_for_pgn_) {
    has_waited_for_pgn_ = true;
    return kPollInterval;
  }
  CollectPlayedGame(hold);
  hold->current_game = 0;
  KeepOrLeaveDebugFile(*hold);
  // The end of a game that the tourney no longer holds says nothing about the tourney's round.
  if (game != nullptr) NextRound(*hold, file_.With(hold), brackets_.With(hold));
  const bool goes_on = hold->Switch().IsRunning();
  phase_ = goes_on ? Phase::kStart : Phase::kIdle;
  return goes_on ? kBetweenGamesWait + kPollInterval : kPollInterval;
}

void GameRunner::CollectPlayedGame(const Hold& hold) {
  const Game* game = FindPlayedGame(*hold);
  if (game == nullptr) return;
  CollectResult(*hold, host_.files, file_.With(hold), game->number);
  if (game->IsReady()) return;
  PrintText("\n" + Stars(79) + "\n" +
            Format("Game %d: %s - %s result not found, and therefore set to UNKNOWN.\n",
                   game->number, game->white_player.c_str(), game->black_player.c_str()) +
            Stars(79) + "\n> ");
  hold->Change(*game)->status = kReady;
}

void GameRunner::KeepOrLeaveDebugFile(const Tourney& tourney) {
  FileSystem& files = host_.files;
  const std::string copy = GameFileName(played_.files_path, played_.number, ".debug");
  if (files.Exists(copy)) files.Remove(copy);
  const Game* game = FindPlayedGame(tourney);
  const int wish = tourney.Settings().save_debug_files;
  const bool lacks_result = game != nullptr && game->LacksResult();
  if (wish == kSaveAlways || (wish == kSaveAutomatically && lacks_result)) {
    files.Rename(played_.files_path + kDebugFile, copy);
  }
}

const Game* GameRunner::FindPlayedGame(const Tourney& tourney) const {
  const Game* game = tourney.FindGame(played_.number);
  const bool is_same =
      game != nullptr && game->white_player == played_.white && game->black_player == played_.black;
  return is_same ? game : nullptr;
}

}  // namespace tarvendo
