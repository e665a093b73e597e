#include "runner/collect.h"

#include <vector>

#include "base/line_reader.h"
#include "base/log.h"
#include "base/text.h"
#include "platform/files.h"
#include "reports/table_driver.h"
#include "tourney/rounds.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

constexpr std::size_t kTagName = 1;  ///< where a tag's name stands in its line, behind the bracket
constexpr std::size_t kResultValue = 9;  ///< where the value of a Result tag stands: [Result "

std::string_view Behind(const std::string& line, std::size_t position) {
  return std::string_view(line).substr(std::min(position, line.size()));
}

/// What stands in the tourney's PGN file for a line of the game's own.
std::string MergedLine(const Tourney& tourney, const Game& game, const std::string& line) {
  if (BeginsWithNoCase(line, "[event")) return "[Event \"" + tourney.Settings().name + "\"]\n";
  if (BeginsWithNoCase(line, "[round")) {
    const bool with_sub_round = tourney.Settings().sub_rounds >= 2;
    return Format("[Round \"%d", game.round) +
           (with_sub_round ? Format(".%d", game.sub_round) : "") + "\"]\n";
  }
  if (BeginsWithNoCase(line, "[white \"")) {
    return Format("[Number \"%d\"]\n", game.number) + "[White \"" + game.white_player + "\"]\n";
  }
  if (BeginsWithNoCase(line, "[black \"")) return "[Black \"" + game.black_player + "\"]\n";
  return line;
}

bool AppendToTourneyPgn(const Tourney& tourney, FileSystem& files, const std::string& text) {
  const auto file = files.Append(tourney.Settings().pgn_file);
  if (!file) return false;
  const bool written = file->Write(text);
  return file->Close() && written;
}

void Announce(const Game& game) {
  constexpr const char* kStars = "******************************************************";
  PrintText(std::string("\n") + kStars + "\n" +
            Format("Game %d: %s - %s : %s", game.number, game.white_player.c_str(),
                   game.black_player.c_str(), ResultText(game.result)) +
            "\n" + kStars + "\n> ");
}

/// Collects one game but for its files, whose names go to `leftovers`: they are deleted when the
/// tourney that no longer needs them is on the disk.
void TakeResult(Tourney& tourney, FileSystem& files, const Game& game, const std::string& pgn,
                std::vector<std::string>& leftovers) {
  if (!AppendToTourneyPgn(tourney, files, MergedPgn(tourney, game, pgn))) {
    Print("Error copying pgn-file!\n");
  }
  const auto change = tourney.Change(game);
  for (std::string* name : {&change->bat_file, &change->pgn_file}) {
    if (!name->empty()) leftovers.push_back(*name);
    name->clear();
  }
  change->result = ResultInPgn(pgn);
  change->status = kReady;
  Announce(game);
}

/// What a table behind a result that is not the last one would do: the page itself is soon written
/// over, but the rounds that it moves on are part of the tourney.
void MoveOnAsATableDoes(Tourney& tourney) {
  AdvanceCurrentRound(tourney);
  AdjustRounds(tourney);
}

/// With AutoSave on, the results are on the disk before the files that they came from are gone, so
/// that a crash in between loses no game. When that save fails (it is reported by the one that
/// follows every step), the files stay: should the program end before a save succeeds, the next
/// start collects them.
void FinishCollection(Tourney& tourney, FileSystem& files, TourneyFile& file,
                      const std::vector<std::string>& leftovers) {
  const bool on_disk = file.TryAutoSave(tourney);
  for (const std::string& name : leftovers) {
    if (on_disk && files.Exists(name)) files.Remove(name);
  }
  WriteTable(tourney, files, "", HtmlTableDefaults(tourney));
}

}  // namespace

int ResultInPgn(const std::string& pgn) {
  LineReader lines(pgn);
  while (const auto line = lines.Read(kRecordLine)) {
    if (!BeginsWithNoCase(Behind(*line, kTagName), "result")) continue;
    const std::string_view value = Behind(*line, kResultValue);
    if (value.starts_with("1-0")) return kWhiteWins;
    if (value.starts_with("0-1")) return kBlackWins;
    if (value.starts_with("1/2-1/2")) return kDraw;
    return kUnfinished;
  }
  return kUnknown;
}

std::string MergedPgn(const Tourney& tourney, const Game& game, const std::string& pgn) {
  std::string merged;
  LineReader lines(pgn);
  for (auto line = lines.Read(kRecordLine); line && !lines.AtEnd();
       line = lines.Read(kRecordLine)) {
    merged += MergedLine(tourney, game, *line);
  }
  return merged;
}

bool CollectResult(Tourney& tourney, FileSystem& files, TourneyFile& file, int game_number) {
  const Game* game = tourney.FindGame(game_number);
  if (game == nullptr) return false;
  const auto pgn = files.ReadText(game->pgn_file);
  if (!pgn) return false;
  std::vector<std::string> leftovers;
  TakeResult(tourney, files, *game, *pgn, leftovers);
  FinishCollection(tourney, files, file, leftovers);
  return true;
}

void CollectAll(Tourney& tourney, FileSystem& files, TourneyFile& file) {
  std::vector<std::string> leftovers;
  bool any_collected = false;
  for (const Game& game : tourney.Games()) {
    if (game.status != kSpooled) continue;
    const auto pgn = files.ReadText(game.pgn_file);
    if (!pgn || (pgn->empty() && game.number == tourney.current_game)) continue;
    if (any_collected) MoveOnAsATableDoes(tourney);
    TakeResult(tourney, files, game, *pgn, leftovers);
    any_collected = true;
  }
  tourney.RecomputeGamesState();
  if (any_collected) FinishCollection(tourney, files, file, leftovers);
}

bool LacksPgn(FileSystem& files, const Game& game) {
  return files.ReadText(game.pgn_file).value_or("").empty();
}

}  // namespace tarvendo
