#include "runner/collect.h"

#include <vector>

#include "base/log.h"
#include "base/read_file.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "platform/faults.h"
#include "platform/files.h"
#include "play/claim.h"
#include "play/game_files.h"
#include "reports/table_driver.h"
#include "runner/adoption.h"
#include "runner/batch_file.h"
#include "runner/file_deletion.h"
#include "runner/pgn_journal.h"
#include "runner/pgn_text.h"
#include "runner/running_games.h"
#include "tourney/game_list.h"
#include "tourney/rounds.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

/// What games that were collected have left. A claim goes last, for it tells whose the files are.
struct Leftovers {
  std::vector<std::string> files;
  std::vector<GameOrder> claims;
};

/// With AutoSave on, the results are on the disk before the files that they came from are gone, so
/// that a crash in between loses no game. When that save fails (it is reported by the one that
/// follows every step), the files stay: should the program end before a save succeeds, the next
/// start collects them.
void FinishCollection(Tourney& tourney, FileSystem& files, TourneyFile& file, PgnGroup& group,
                      const Leftovers& leftovers) {
  group.Write(tourney);
  if (file.TryAutoSave(tourney)) {
    group.Rescue();
    for (const std::string& name : leftovers.files)
      DeleteOrTell(tourney, files, name);
    for (const GameOrder& claim : leftovers.claims)
      RemoveClaim(files, claim);
    group.DropJournals(tourney);
  }
  UpdateAndWriteTable(tourney, files, "", HtmlTableDefaults(tourney));
}

}  // namespace

void TakeResult(Tourney& tourney, PgnGroup& group, const Game& game, const std::string& pgn,
                const std::string& pgn_file) {
  group.Add(tourney, game, MergedPgn(tourney, game, pgn), pgn_file);
  const auto change = tourney.Change(game);
  change->bat_file.clear();
  change->pgn_file.clear();
  change->result = ResultInPgn(pgn);
  change->status = kReady;
  AnnounceResult(game);
}

void AnnounceResult(const Game& game) {
  constexpr const char* kStars = "******************************************************";
  PrintText(std::string("\n") + kStars + "\n" +
            Format("Game %d: %s - %s : %s", game.number, game.white_player.c_str(),
                   game.black_player.c_str(), ResultText(game.result)) +
            "\n" + kStars + "\n> ");
}

void MoveOnAsATableDoes(Tourney& tourney) {
  AdvanceCurrentRound(tourney);
  AdjustRounds(tourney);
}

void CollectAll(Tourney& tourney, FileSystem& files, TourneyFile& file,
                const RunningGames& running) {
  Leftovers leftovers;
  PgnGroup group(files, PgnPace::kTogether);
  for (const Game& game : tourney.Games()) {
    // What was taken over so far is brought to its end.
    if (TerminationRequested()) break;
    if (game.status != kSpooled || running.HasNumber(game.number)) continue;
    if (IsBeingPlayed(files, game.pgn_file)) continue;
    const auto claim = FreeClaimOf(tourney, files, game.number);
    if (claim) SettleClaim(tourney, files, *claim);
    const std::string pgn_file = game.pgn_file;
    const auto pgn = ReadFile(files, pgn_file, kGameFileLimit);
    if (!pgn) continue;
    if (!leftovers.files.empty()) MoveOnAsATableDoes(tourney);
    leftovers.files.push_back(game.bat_file);
    leftovers.files.push_back(pgn_file);
    if (claim) leftovers.claims.push_back(*claim);
    TakeResult(tourney, group, game, *pgn, pgn_file);
    // Why a game has no result shall be read the next morning.
    if (game.LacksResult()) continue;
    for (const std::string& reason_file : ReasonFiles(pgn_file))
      leftovers.files.push_back(reason_file);
  }
  tourney.RecomputeGamesState();
  if (leftovers.files.empty()) return;
  FinishCollection(tourney, files, file, group, leftovers);
}

}  // namespace tarvendo
