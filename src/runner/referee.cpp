#include "runner/referee.h"

#include <algorithm>

#include "base/log.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "platform/files.h"
#include "play/game_files.h"
#include "play/place.h"
#include "reports/table_driver.h"
#include "runner/adoption.h"
#include "runner/batch_file.h"
#include "runner/collect.h"
#include "runner/file_deletion.h"
#include "runner/running_games.h"
#include "tourney/bye.h"
#include "tourney/game_list.h"
#include "tourney/history.h"
#include "tourney/rounds.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

constexpr long long kLogLimit = 2097152;  ///< bytes

std::string Stars(std::size_t count) {
  return std::string(count, '*');
}

void AnnounceNoSignOfLife() {
  const std::string stars = Stars(70);
  PrintText("\n" + stars +
            "\nError running game. Stopping game and setting its result to UNKNOWN.\n"
            "Possible reasons for this problem is that you have deleted\n"
            "the game's bat-file, or your player's directory or exe-file name are\n"
            "incorrect or your winboard-path is incorrect.\n" +
            stars + "\n> ");
}

void AnnounceUnwatchable() {
  const std::string stars = Stars(70);
  PrintText(stars + "Error running game. I can't access winboard.debug, stopping runner." + stars);
}

void AnnounceNoResult(const Game& game, const std::string& reason) {
  PrintText(std::string("\n") + Stars(79) + "\n" +
            Format("Game %d: %s - %s result not found, and therefore set to UNKNOWN.\n",
                   game.number, game.white_player.c_str(), game.black_player.c_str()) +
            reason + Stars(79) + "\n> ");
}

void AnnounceRefusal(const std::string& reason) {
  PrintText(std::string("\n") + Stars(79) + "\n" + reason +
            "Stopping runner. What was not begun stays to be played.\n" + Stars(79) + "\n> ");
}

/// What is said of a game that did not end by itself.
void AnnounceEnd(const GameOutcome& outcome) {
  switch (outcome.end) {
    case GameEnd::kNotStarted:
    case GameEnd::kNoSignOfLife:
      return AnnounceNoSignOfLife();
    case GameEnd::kCannotBeWatched:
      AnnounceNoSignOfLife();
      return AnnounceUnwatchable();
    case GameEnd::kEnded:
    case GameEnd::kDiedSilently:
    case GameEnd::kOutOfPatience:
    case GameEnd::kNeverBegun:
      return;
    case GameEnd::kRefused:
      return AnnounceRefusal(outcome.reason);
  }
}

/// The record of the game with that number and these players; null when the tourney has none.
const Game* FindSameGame(const Tourney& tourney, const GameOrder& order) {
  const Game* game = tourney.FindGame(order.number);
  const bool is_same =
      game != nullptr && game->white_player == order.white && game->black_player == order.black;
  return is_same ? game : nullptr;
}

bool IsCurrentRoundPlayed(const Tourney& tourney) {
  const auto& participants = tourney.Participants();
  return std::all_of(participants.begin(), participants.end(), [&](const Player& player) {
    return RoundComplete(tourney, player, tourney.State().round, true);
  });
}

/// In a Swiss tourney whose round is complete: whether the next one is to be paired now.
bool MoveRoundOn(Tourney& tourney) {
  if (!tourney.IsSwiss() || !IsCurrentRoundPlayed(tourney)) return false;
  CutRoundsToHalf(tourney);
  RecomputeCurrentRound(tourney);
  if (tourney.State().round < tourney.Settings().rounds) return tourney.Settings().auto_run != 0;
  Print("Tourney finished.\n");
  tourney.ChangeSettings()->auto_run = 0;
  return false;
}

}  // namespace

void Referee::GoBeforeSavesOf(TourneyFile& file) {
  file.SetBeforeSave([group = std::weak_ptr(pgn_)](const Tourney& tourney) {
    if (const auto pgn = group.lock()) pgn->Write(tourney);
  });
}

bool Referee::Judge(Tourney& tourney, TourneyFile& file, RunningGames& running,
                    const GameOutcome& outcome) {
  AnnounceEnd(outcome);
  running.Remove(outcome.order);
  if (outcome.IsGivenBack()) {
    // As if it had never been ordered: it is SPOOLED as it was.
    RemoveClaim(host_.files, outcome.order);
    if (outcome.end == GameEnd::kRefused) tourney.ChangeSwitch()->SetRunning(false);
    return false;
  }
  if (outcome.end == GameEnd::kCannotBeWatched) {
    // The claim stays: WinBoard may be playing all the same, and whoever starts next learns of it.
    tourney.ChangeSwitch()->StopItself();
    return false;
  }
  const Game* game = FindSameGame(tourney, outcome.order);
  const bool is_awaited = game != nullptr && game->status == kSpooled;
  if (is_awaited) {
    TakeOver(tourney, outcome);
  } else if (outcome.pgn && !outcome.pgn->empty()) {
    LeaveRecord(tourney, host_.files, outcome.order);
  }
  KeepOrLeaveDebugFile(tourney, outcome, game != nullptr && game->LacksResult());
  const bool drops_files = !is_awaited || outcome.pgn.has_value();
  settled_.push_back({outcome.order, drops_files, outcome.end != GameEnd::kEnded});
  if (TheLog != nullptr) TheLog->Housekeep(kLogLimit);
  if (pace_ == RefereePace::kAtOnce) SaveAndClear(tourney, file, running);
  // The end of a game that the tourney does not hold says nothing about the tourney's round.
  return game != nullptr && MoveRoundOn(tourney);
}

void Referee::TakeOver(Tourney& tourney, const GameOutcome& outcome) {
  const Game& game = *tourney.FindGame(outcome.order.number);
  if (!outcome.pgn) {
    AnnounceNoResult(game, outcome.reason);
    tourney.Change(game)->status = kReady;
    return;
  }
  TakeResult(tourney, *pgn_, game, *outcome.pgn, outcome.order.pgn_file);
  FollowResult(tourney);
}

bool Referee::JudgeBye(Tourney& tourney, TourneyFile& file, const RunningGames& running,
                       const Game& game) {
  const auto result = ResultByBye(tourney, game);
  if (!result) return false;
  DeleteGameFiles(tourney, host_.files, game);
  {
    const auto change = tourney.Change(game);
    change->result = *result;
    change->status = kReady;
  }
  AnnounceResult(game);
  FollowResult(tourney);
  if (pace_ == RefereePace::kAtOnce) SaveAndClear(tourney, file, running);
  return MoveRoundOn(tourney);
}

/// The page, and the rounds that it moves on, behind each result.
void Referee::FollowResult(Tourney& tourney) {
  if (pace_ == RefereePace::kAtOnce) {
    WritePage(tourney);
  } else {
    is_table_due_ = true;
    MoveOnAsATableDoes(tourney);
  }
}

void Referee::KeepOrLeaveDebugFile(const Tourney& tourney, const GameOutcome& outcome,
                                   bool lacks_result) {
  FileSystem& files = host_.files;
  const std::string copy = GameFileBeside(outcome.order.pgn_file, ".debug");
  RemoveIfThere(files, copy);
  const int wish = tourney.Settings().save_debug_files;
  if (wish == kSaveAlways || (wish == kSaveAutomatically && lacks_result)) {
    files.Rename(outcome.order.debug_file, copy);
  }
}

void Referee::SaveAndClear(Tourney& tourney, TourneyFile& file, const RunningGames& running) {
  DropHeldClaims(running);
  pgn_->Write(tourney);
  if (file.HasChanged(tourney) && !file.AutoSave(tourney)) return;
  pgn_->Rescue();
  std::erase_if(settled_, [&](Settled& settled) {
    // A load between the result and this save made it a game to be played, and it is under way.
    return running.HasNumber(settled.order.number) || ClearUp(tourney, settled);
  });
  pgn_->DropJournals(tourney);
}

/// A claim that a game begun anew has taken over is left to that game.
void Referee::DropHeldClaims(const RunningGames& running) {
  std::erase_if(held_claims_, [&](const GameOrder& held) {
    const bool is_begun_anew =
        running.HasNumber(held.number) ||
        std::any_of(settled_.begin(), settled_.end(), [&](const Settled& settled) {
          return settled.order.claim_file == held.claim_file;
        });
    if (is_begun_anew) return true;
    if (host_.files.IsLocked(held.claim_file)) return false;
    RemoveIfThere(host_.files, held.claim_file);
    return true;
  });
}

bool Referee::ClearUp(const Tourney& tourney, Settled& settled) {
  const GameOrder& order = settled.order;
  bool is_clear = !settled.drops_files || DropFiles(tourney, settled);
  if (!RemovePlace(host_.files, order)) {
    if (!settled.is_told) TellUndeleted(tourney, host_.files, OwnDirectory(order));
    is_clear = false;
  }
  if (is_clear && settled.may_hang && host_.files.IsLocked(order.claim_file)) {
    held_claims_.push_back(order);
    return true;
  }
  is_clear = is_clear && DeleteOrTell(tourney, host_.files, order.claim_file, settled.is_told);
  settled.is_told = !is_clear;
  return is_clear;
}

/// A game of that number may have been spooled anew meanwhile: then the files are its own.
bool Referee::DropFiles(const Tourney& tourney, const Settled& settled) {
  FileSystem& files = host_.files;
  const GameOrder& order = settled.order;
  const Game* game = tourney.FindGame(order.number);
  if (game != nullptr && game->status == kSpooled) return true;
  const bool has_batch = !DeleteOrTell(tourney, files, order.batch_file, settled.is_told);
  const bool has_record = !DeleteOrTell(tourney, files, order.pgn_file, settled.is_told);
  // Why a game has no result shall be read the next morning.
  if (game != nullptr && game->IsFinished()) {
    for (const std::string& reason_file : ReasonFiles(order.pgn_file))
      RemoveIfThere(files, reason_file);
  }
  return !has_batch && !has_record;
}

void Referee::WritePage(Tourney& tourney) {
  UpdateAndWriteTable(tourney, host_.files, "", HtmlTableDefaults(tourney));
}

void Referee::Settle(Tourney& tourney, TourneyFile& file, const RunningGames& running) {
  SaveAndClear(tourney, file, running);
  if (is_table_due_) WritePage(tourney);
  is_table_due_ = false;
}

}  // namespace tarvendo
