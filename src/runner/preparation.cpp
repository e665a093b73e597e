#include "runner/preparation.h"

#include "base/log.h"
#include "base/read_file.h"
#include "base/text.h"
#include "platform/files.h"
#include "play/claim.h"
#include "runner/batch_file.h"
#include "runner/spool.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

GameOrder OrderFor(FileSystem& files, const Game& game, const std::string& debug_file) {
  GameOrder order;
  order.number = game.number;
  order.white = game.white_player;
  order.black = game.black_player;
  order.batch_file = files.FullPath(game.bat_file);
  order.pgn_file = files.FullPath(game.pgn_file);
  order.debug_file = debug_file;
  order.claim_file = ClaimFileOf(order.pgn_file);
  return order;
}

/// Nobody waits until a batch file is on the disk: a power failure may leave its name alone, or NUL
/// bytes in the place of its text.
bool IsThere(FileSystem& files, const std::string& batch_file) {
  const auto text = ReadFile(files, batch_file, kGameFileLimit);
  return text && !text->empty() && text->find('\0') == std::string::npos;
}

void AnnounceStart(const Game& game) {
  const std::string stars(70, '*');
  PrintText(
      "\n" + stars + "\n" + Format("Starting game no. %d\n", game.number) +
      Format("White: %-20s Black: %-20s\n", game.white_player.c_str(), game.black_player.c_str()) +
      Format("Bat: %-22s\nPgn: %-22s\n", game.bat_file.c_str(), game.pgn_file.c_str()) + stars +
      "\n\n> ");
}

}  // namespace

Preparation PrepareGame(Tourney& tourney, const Host& host, const Game& game,
                        const std::string& debug_file, PreparedGame& prepared) {
  FileSystem& files = host.files;
  if (IsBeingPlayed(files, game.pgn_file)) return Preparation::kBeingPlayed;
  const bool is_batch_missing = !IsThere(files, game.bat_file);
  if (is_batch_missing && !SpoolSilently(tourney, files, game)) return Preparation::kNoBatchFile;
  GameOrder order = OrderFor(files, game, debug_file);
  std::unique_ptr<LockedFile> claim = MakeClaim(files, order);
  if (!claim) return Preparation::kNoClaim;
  AnnounceStart(game);
  if (is_batch_missing) Print("Game %d spooled.\n", game.number);
  prepared = {std::move(order), std::move(claim)};
  return Preparation::kReady;
}

}  // namespace tarvendo
