#include "runner/spool.h"

#include <algorithm>
#include <vector>

#include "base/log.h"
#include "base/read_file.h"
#include "base/whole_file.h"
#include "platform/faults.h"
#include "platform/files.h"
#include "play/claim.h"
#include "runner/batch_file.h"
#include "runner/collect.h"
#include "tourney/bye.h"
#include "tourney/game_list.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

bool IsNothingDone(const Game& game) {
  return game.status == kNothingDone;
}

/// The first game of that number that is not READY; null when there is none.
const Game* UnplayedGame(const Tourney& tourney, int number) {
  for (const Game& game : tourney.Games()) {
    if (game.number == number && !game.IsReady()) return &game;
  }
  return nullptr;
}

/// The batch file of a game that is being played stays as it is when it says the same: some hosts
/// read it while it runs.
bool WriteBatchFile(FileSystem& files, const std::string& path, const std::string& text,
                    bool may_be_running) {
  if (may_be_running && ReadFile(files, path, kGameFileLimit) == text) return true;
  return SaveWholeFile(files, path, text);
}

/// A game with a bye has no files; one that was spooled before its player became a bye had a batch
/// file.
void ForgetFiles(FileSystem& files, Game& game) {
  RemoveIfThere(files, game.bat_file);
  game.bat_file.clear();
  game.pgn_file.clear();
}

}  // namespace

bool SpoolSilently(Tourney& tourney, FileSystem& files, const Game& game) {
  Game spooled = game;
  spooled.bat_file = GameFileName(tourney.Settings().files_path, game.number, ".BAT");
  spooled.pgn_file = GameFileName(tourney.Settings().files_path, game.number, ".PGN");
  // A new spool starts from no game record; one that cannot be deleted keeps the game from being
  // played.
  const bool is_anothers = HasClaim(files, spooled.pgn_file);
  if (!is_anothers && files.IsReadable(spooled.pgn_file)) files.Remove(spooled.pgn_file);
  if (!is_anothers) DeleteReasonFilesOf(tourney, files, spooled);
  if (ResultByBye(tourney, game)) {
    if (!is_anothers) ForgetFiles(files, spooled);
  } else if (!WriteBatchFile(files, spooled.bat_file, BatchText(tourney, spooled), is_anothers)) {
    return false;
  }
  spooled.status = kSpooled;
  spooled.spool_index = tourney.spool_counter;
  tourney.spool_counter = static_cast<int>(static_cast<unsigned>(tourney.spool_counter) + 1U);
  const auto change = tourney.Change(game);
  *change = spooled;
  return true;
}

bool SpoolGame(Tourney& tourney, FileSystem& files, const Game& game) {
  const int number = game.number;
  if (!SpoolSilently(tourney, files, game)) {
    PrintText("Error opening file for writing:  " +
              GameFileName(tourney.Settings().files_path, number, ".BAT") + "\n");
    return false;
  }
  Print("Game %d spooled.\n", number);
  return true;
}

bool Spool(Tourney& tourney, FileSystem& files, int number) {
  const Game* game = number == 0 ? tourney.FirstGameToSpool() : UnplayedGame(tourney, number);
  if (game != nullptr) return SpoolGame(tourney, files, *game);
  if (number == 0) Print("All games are either ready or spooled!\n");
  return false;
}

void SpoolRound(Tourney& tourney, FileSystem& files, int round) {
  if (round == 0) {
    const Game* next = tourney.FirstGameToSpool();
    if (next == nullptr) {
      Print("All games are either spooled or ready!\n");
      return;
    }
    round = next->round;
  }
  for (const Game& game : tourney.Games()) {
    EndWhenAsked();
    if (game.round == round && !game.IsReady()) SpoolGame(tourney, files, game);
  }
}

void SpoolPlayer(Tourney& tourney, FileSystem& files, int player_number) {
  if (tourney.FindParticipant(player_number) == nullptr) {
    Print("Player number %d does not exist in this tourney!\n", player_number);
    return;
  }
  bool any_spooled = false;
  for (const Game& game : tourney.Games()) {
    EndWhenAsked();
    if (!IsNothingDone(game) || !game.IsPlayedBy(player_number)) continue;
    if (SpoolGame(tourney, files, game)) any_spooled = true;
  }
  if (!any_spooled) {
    Print("All games of player %d are already either spooled or ready!\n", player_number);
  }
}

void SpoolAll(Tourney& tourney, FileSystem& files) {
  std::vector<const Game*> waiting;
  for (const Game& game : tourney.Games()) {
    if (IsNothingDone(game)) waiting.push_back(&game);
  }
  std::stable_sort(waiting.begin(), waiting.end(),
                   [](const Game* a, const Game* b) { return a->round < b->round; });
  if (waiting.empty()) Print("All games are either ready or spooled!\n");
  for (const Game* game : waiting) {
    EndWhenAsked();
    SpoolGame(tourney, files, *game);
  }
}

bool ReplayUnfinished(Tourney& tourney, FileSystem& files) {
  bool any_spooled = false;
  for (const Game& game : tourney.Games()) {
    EndWhenAsked();
    if (!game.IsReady() || !game.LacksResult()) continue;
    tourney.Change(game)->status = kNothingDone;
    if (SpoolGame(tourney, files, game)) any_spooled = true;
  }
  return any_spooled;
}

void Unspool(Tourney& tourney, FileSystem& files, TourneyFile& file, const RunningGames& running) {
  CollectAll(tourney, files, file, running);
  for (const Game& game : tourney.Games()) {
    EndWhenAsked();
    if (game.status != kSpooled) continue;
    tourney.Change(game)->status = kNothingDone;
    DeleteGameFiles(tourney, files, game);
    Print("Game %d %s - %s unspooled.\n", game.number, game.white_player.c_str(),
          game.black_player.c_str());
  }
}

void RespoolAll(Tourney& tourney, FileSystem& files, TourneyFile& file,
                const RunningGames& running) {
  CollectAll(tourney, files, file, running);
  for (const Game& game : tourney.Games()) {
    EndWhenAsked();
    if (game.status == kSpooled) SpoolGame(tourney, files, game);
  }
}

}  // namespace tarvendo
