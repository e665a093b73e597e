#include "runner/adoption.h"

#include "base/log.h"
#include "base/read_file.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "platform/files.h"
#include "play/claim.h"
#include "play/place.h"
#include "runner/batch_file.h"
#include "runner/file_deletion.h"
#include "runner/pgn_journal.h"
#include "runner/pgn_text.h"
#include "runner/record_aside.h"
#include "runner/running_games.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// The order that a claim tells. For a claim whose text is gone: the order with which the game
/// would be started now.
GameOrder OrderOf(const Tourney& tourney, FileSystem& files, const FoundClaim& claim) {
  GameOrder order = claim.order.value_or(GameOrder());
  order.claim_file = files.FullPath(claim.path);
  if (claim.order) return order;
  const std::string& files_path = tourney.Settings().files_path;
  order.number = claim.number;
  order.batch_file = files.FullPath(GameFileName(files_path, claim.number, ".BAT"));
  order.pgn_file = files.FullPath(GameFileName(files_path, claim.number, ".PGN"));
  order.debug_file = files.FullPath(DebugFileOfBegun(files, files_path, claim.number));
  if (const Game* game = tourney.FindGame(claim.number)) {
    order.white = game->white_player;
    order.black = game->black_player;
  }
  return order;
}

const Game* SameGame(const Tourney& tourney, const GameOrder& order) {
  const Game* game = tourney.FindGame(order.number);
  const bool is_same =
      game != nullptr && game->white_player == order.white && game->black_player == order.black;
  return is_same ? game : nullptr;
}

/// The game was begun before a save that knows of it.
void SpoolAgain(Tourney& tourney, const Game& game) {
  if (game.status != kNothingDone) return;
  const std::string& files_path = tourney.Settings().files_path;
  const auto change = tourney.Change(game);
  change->status = kSpooled;
  change->bat_file = GameFileName(files_path, game.number, ".BAT");
  change->pgn_file = GameFileName(files_path, game.number, ".PGN");
}

/// The game is still to be played as far as the tourney knows. The claim of a whole record stays
/// until that is collected: should the program end behind the save, it tells whose files lie there.
void SettleUnplayed(const Tourney& tourney, FileSystem& files, const GameOrder& order,
                    const std::string& pgn) {
  if (HoldsResult(pgn)) return;
  if (files.Exists(order.pgn_file)) {
    const std::string aside = SetRecordAside(files, order.pgn_file, "broken");
    if (!aside.empty() && !pgn.empty()) {
      PrintText(Format("\nGame %d was broken off, its record is kept as '%s'.\n> ", order.number,
                       AsTyped(tourney, files, aside).c_str()));
    }
  }
  RemoveClaim(files, order);
}

/// The journal tells of the last games that were collected, but may have gone with the save of
/// another one.
bool WasCollected(const Tourney& tourney, FileSystem& files, const GameOrder& order,
                  const std::string& pgn) {
  const Game* game = SameGame(tourney, order);
  if (game == nullptr || !game->IsReady()) return false;
  if (IsInJournal(tourney, files, order)) return true;
  const std::string merged = MergedPgn(tourney, *game, pgn);
  // A power failure may leave of a collected record its name alone, or its name and a beginning.
  if (merged.empty()) return game->IsFinished();
  const auto all = ReadFile(files, tourney.Settings().pgn_file, kTourneyFileLimit);
  return all && all->find(merged) != std::string::npos;
}

/// The tourney does not wait for the game: it was collected, or belongs to another tourney.
void SettleForeign(const Tourney& tourney, FileSystem& files, const GameOrder& order,
                   const std::string& pgn) {
  const Game* game = SameGame(tourney, order);
  const bool was_collected = WasCollected(tourney, files, order, pgn);
  // The record goes behind the batch file: without it nobody knows that both were collected.
  if (was_collected || (game != nullptr && game->IsFinished())) {
    RemoveIfThere(files, order.batch_file);
  }
  if (was_collected) {
    RemoveIfThere(files, order.pgn_file);
  } else if (!pgn.empty()) {
    LeaveRecord(tourney, files, order);
  }
  RemoveClaim(files, order);
}

}  // namespace

void SpoolRunningAgain(Tourney& tourney, FileSystem& files, const RunningGames& running) {
  for (const GameOrder& order : running.Orders()) {
    const Game* game = SameGame(tourney, order);
    if (game == nullptr) continue;
    const std::string& files_path = tourney.Settings().files_path;
    const std::string record = files.FullPath(GameFileName(files_path, game->number, ".PGN"));
    if (record == order.pgn_file) SpoolAgain(tourney, *game);
  }
}

std::vector<GameOrder> FindGamesToAdopt(Tourney& tourney, FileSystem& files,
                                        const RunningGames& running) {
  std::vector<GameOrder> playing;
  for (const FoundClaim& claim : FindClaims(files, tourney.Settings().files_path)) {
    const GameOrder order = OrderOf(tourney, files, claim);
    if (running.HasNumber(claim.number)) continue;
    const Game* game = SameGame(tourney, order);
    const bool is_judged = game != nullptr && game->IsReady();
    // A job is judged only when its scheduler says that it has ended.
    if (!claim.is_held || (is_judged && !order.job.empty())) {
      SettleClaim(tourney, files, order);
      continue;
    }
    // A game that was judged already, but whose WinBoard still hangs, must not keep others waiting.
    if (is_judged) continue;
    if (game != nullptr) SpoolAgain(tourney, *game);
    playing.push_back(order);
  }
  return playing;
}

std::optional<GameOrder> FreeClaimOf(const Tourney& tourney, FileSystem& files, int game_number) {
  const std::string& files_path = tourney.Settings().files_path;
  FoundClaim claim;
  claim.number = game_number;
  claim.path = GameFileName(files_path, game_number, ".run");
  if (!files.IsPlainFile(claim.path)) return std::nullopt;
  if (IsBeingPlayed(files, GameFileName(files_path, game_number, ".PGN"))) return std::nullopt;
  claim.order = ReadClaimText(ReadFile(files, claim.path, kGameFileLimit).value_or(""), claim.path);
  return OrderOf(tourney, files, claim);
}

void SettleClaim(Tourney& tourney, FileSystem& files, const GameOrder& order) {
  const Game* game = SameGame(tourney, order);
  const std::string pgn = ReadFile(files, order.pgn_file, kGameFileLimit).value_or("");
  if (game == nullptr || game->IsReady()) return SettleForeign(tourney, files, order, pgn);
  if (HoldsResult(pgn)) SpoolAgain(tourney, *game);
  SettleUnplayed(tourney, files, order, pgn);
}

void RemoveClaim(FileSystem& files, const GameOrder& order) {
  RemovePlace(files, order);
  RemoveIfThere(files, order.claim_file);
}

void LeaveRecord(const Tourney& tourney, FileSystem& files, const GameOrder& order) {
  const std::string aside = SetRecordAside(files, order.pgn_file, "left");
  const std::string kept = AsTyped(tourney, files, aside.empty() ? order.pgn_file : aside);
  PrintText(Format("\nGame %d: %s - %s is not awaited any more, its record is kept as '%s'.\n> ",
                   order.number, order.white.c_str(), order.black.c_str(), kept.c_str()));
}

}  // namespace tarvendo
