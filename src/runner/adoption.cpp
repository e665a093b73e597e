#include "runner/adoption.h"

#include "base/log.h"
#include "base/read_file.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "platform/files.h"
#include "play/claim.h"
#include "play/place.h"
#include "runner/batch_file.h"
#include "runner/pgn_journal.h"
#include "runner/running_games.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr int kMostNames = 1000;

/// The order of a claim whose text is gone: as the game would be started now.
GameOrder OrderOf(const Tourney& tourney, FileSystem& files, const FoundClaim& claim) {
  if (claim.order) return *claim.order;
  const std::string& files_path = tourney.Settings().files_path;
  GameOrder order;
  order.number = claim.number;
  order.batch_file = files.FullPath(GameFileName(files_path, claim.number, ".BAT"));
  order.pgn_file = files.FullPath(GameFileName(files_path, claim.number, ".PGN"));
  order.debug_file = files.FullPath(FirstDebugFile(files_path));
  order.claim_file = files.FullPath(claim.path);
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

/// The program ended between the start of the game and the save that knows of it.
void SpoolAgain(Tourney& tourney, const Game& game) {
  if (game.status != kNothingDone) return;
  const std::string& files_path = tourney.Settings().files_path;
  const auto change = tourney.Change(game);
  change->status = kSpooled;
  change->bat_file = GameFileName(files_path, game.number, ".BAT");
  change->pgn_file = GameFileName(files_path, game.number, ".PGN");
}

void RemoveClaim(FileSystem& files, const GameOrder& order) {
  RemovePlace(files, order);
  RemoveIfThere(files, order.claim_file);
}

/// The game is still to be played as far as the tourney knows.
void SettleUnplayed(FileSystem& files, const GameOrder& order, const std::string& pgn) {
  if (files.Exists(order.pgn_file) && !HoldsResult(pgn)) {
    const std::string aside = SetRecordAside(files, order.pgn_file, "broken");
    if (!aside.empty() && !pgn.empty()) {
      PrintText(Format("\nGame %d was broken off, its record is kept as '%s'.\n> ", order.number,
                       aside.c_str()));
    }
  }
  RemoveClaim(files, order);
}

/// The tourney does not wait for the game: it was collected, or is another one's.
void SettleForeign(const Tourney& tourney, FileSystem& files, const GameOrder& order,
                   const std::string& pgn) {
  const Game* game = SameGame(tourney, order);
  if (game != nullptr && game->IsReady() && IsInJournal(tourney, files, order)) {
    RemoveIfThere(files, order.pgn_file);
    RemoveIfThere(files, order.batch_file);
  } else if (!pgn.empty()) {
    LeaveRecord(files, order);
  }
  RemoveClaim(files, order);
}

void Settle(Tourney& tourney, FileSystem& files, const GameOrder& order) {
  const Game* game = SameGame(tourney, order);
  const std::string pgn = ReadFile(files, order.pgn_file, kGameFileLimit).value_or("");
  if (game == nullptr || game->IsReady()) return SettleForeign(tourney, files, order, pgn);
  if (HoldsResult(pgn)) SpoolAgain(tourney, *game);
  SettleUnplayed(files, order, pgn);
}

}  // namespace

std::vector<GameOrder> FindGamesToAdopt(Tourney& tourney, FileSystem& files,
                                        const RunningGames& running) {
  std::vector<GameOrder> playing;
  for (const FoundClaim& claim : FindClaims(files, tourney.Settings().files_path)) {
    const GameOrder order = OrderOf(tourney, files, claim);
    if (running.HasNumber(claim.number)) continue;
    if (!claim.is_held) {
      Settle(tourney, files, order);
      continue;
    }
    if (const Game* game = SameGame(tourney, order)) SpoolAgain(tourney, *game);
    playing.push_back(order);
  }
  return playing;
}

void SettleClaimOf(Tourney& tourney, FileSystem& files, int game_number) {
  const std::string& files_path = tourney.Settings().files_path;
  FoundClaim claim;
  claim.number = game_number;
  claim.path = GameFileName(files_path, game_number, ".run");
  if (!files.IsPlainFile(claim.path) || files.IsLocked(claim.path)) return;
  claim.order = ReadClaimText(ReadFile(files, claim.path, kGameFileLimit).value_or(""), claim.path);
  Settle(tourney, files, OrderOf(tourney, files, claim));
}

void LeaveRecord(FileSystem& files, const GameOrder& order) {
  const std::string aside = SetRecordAside(files, order.pgn_file, "left");
  PrintText(Format("\nGame %d: %s - %s is not awaited any more, its record is kept as '%s'.\n> ",
                   order.number, order.white.c_str(), order.black.c_str(), aside.c_str()));
}

std::string SetRecordAside(FileSystem& files, const std::string& pgn_file,
                           const std::string& kind) {
  const std::string stem = pgn_file.substr(0, pgn_file.rfind('.'));
  for (int n = 1; n <= kMostNames; ++n) {
    const std::string name = stem + "." + kind + (n == 1 ? "" : std::to_string(n)) + ".PGN";
    if (files.Exists(name)) continue;
    return files.Rename(pgn_file, name) ? name : "";
  }
  return "";
}

}  // namespace tarvendo
