#include "tourney/game_list.h"

#include <algorithm>
#include <string_view>

#include "base/log.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "platform/faults.h"
#include "platform/files.h"
#include "play/claim.h"
#include "play/game_files.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

bool IsUnsetOr(int criterion, int value) {
  return criterion == 0 || criterion == value;
}

/// Deletes the files of the games with these indices, says so for each, and takes them out of the
/// list.
void RemoveAt(Tourney& tourney, FileSystem& files, const std::vector<std::size_t>& indices) {
  for (const std::size_t index : indices) {
    EndWhenAsked();
    const Game& game = tourney.Games()[index];
    DeleteGameFiles(tourney, files, game);
    Print("Removing game %d...", game.number);
    Print("removed.\n");
  }
  if (!indices.empty()) tourney.EraseGames(indices);
}

const char* ResultColumn(int result) {
  switch (result) {
    case kWhiteWins:
      return "   1 - 0    ";
    case kBlackWins:
      return "   0 - 1    ";
    case kDraw:
      return "   1 / 2";
    case kBothLose:
      return "   0 - 0    ";
    default:
      return "     *";
  }
}

std::string StatusAndResultColumns(const Game& game) {
  switch (game.status) {
    case kNothingDone:
      return "NOTHING DONE";
    case kSpooled:
      return "SPOOLED     ";
    case kReady:
      return std::string("READY       ") + ResultColumn(game.result);
    default:
      return "";
  }
}

int LongestName(const Tourney& tourney) {
  std::size_t longest = 0;
  for (const Player& player : tourney.Participants()) {
    longest = std::max(longest, player.texts.name.size());
  }
  return static_cast<int>(longest);
}

/// A width below 6 is computed anew, however often that gives the same.
void EnsureNameWidth(Tourney& tourney) {
  if (tourney.name_width < 6) ComputeNameWidth(tourney);
}

std::string LineOfWidth(const Game& game, int width) {
  return Format("%3d. Round %d-%d  %2d.%-*s - %2d.%-*s   -", game.number, game.round,
                game.sub_round, game.white, width, game.white_player.c_str(), game.black, width,
                game.black_player.c_str()) +
         StatusAndResultColumns(game) + "\n";
}

/// The result line of the detailed form; a game that both lose has none.
std::string ResultLine(const Game& game) {
  switch (game.result) {
    case kUnknown:
      return "    Result: UNKNOWN\n";
    case kUnfinished:
      return "    Result: UNFINISHED\n";
    case kWhiteWins:
    case kBlackWins:
    case kDraw:
      return std::string("    Result: ") + ResultText(game.result) + "\n";
    default:
      return "";
  }
}

std::string StatusLines(const Game& game) {
  switch (game.status) {
    case kNothingDone:
      return "    Status: NOTHING DONE\n";
    case kSpooled:
      return "    Status: SPOOLED\n    BatFile: '" + game.bat_file + "'    PgnFile: '" +
             game.pgn_file + "'\n";
    case kReady:
      return "    Status: READY\n" + ResultLine(game);
    default:
      return "";
  }
}

}  // namespace

bool Matches(const Game& game, const GameFilter& filter) {
  if (filter.all) return true;
  return IsUnsetOr(filter.number, game.number) &&
         (filter.player == 0 || game.IsPlayedBy(filter.player)) &&
         IsUnsetOr(filter.white, game.white) && IsUnsetOr(filter.black, game.black) &&
         IsUnsetOr(filter.round, game.round) && IsUnsetOr(filter.sub_round, game.sub_round) &&
         IsUnsetOr(filter.status, game.status) && IsUnsetOr(filter.result, game.result);
}

void ComputeNameWidth(Tourney& tourney) {
  tourney.name_width = std::max(LongestName(tourney), 4);
}

std::string GameData(const Game& game) {
  const std::string sub_round = game.sub_round != 0 ? Format(" - %d\n", game.sub_round) : "\n";
  return Format("Game number %d:\n    Round : %2d", game.number, game.round) + sub_round +
         Format("    White : %2d %s\n", game.white, game.white_player.c_str()) +
         Format("    Black : %2d %s\n", game.black, game.black_player.c_str()) + StatusLines(game);
}

void ListGames(Tourney& tourney, const GameFilter& filter) {
  bool width_is_known = false;
  for (const Game& game : tourney.Games()) {
    EndWhenAsked();
    if (!Matches(game, filter)) continue;
    if (!width_is_known) EnsureNameWidth(tourney);
    width_is_known = true;
    PrintText(LineOfWidth(game, tourney.name_width));
  }
}

int RemoveGames(Tourney& tourney, FileSystem& files, const GameFilter& filter) {
  std::vector<std::size_t> indices;
  for (std::size_t i = 0; i < tourney.Games().size(); ++i) {
    if (Matches(tourney.Games()[i], filter)) indices.push_back(i);
  }
  RemoveAt(tourney, files, indices);
  return static_cast<int>(indices.size());
}

int RemoveFirstGame(Tourney& tourney, FileSystem& files, int number, const GameFilter& filter) {
  for (std::size_t i = 0; i < tourney.Games().size(); ++i) {
    const Game& game = tourney.Games()[i];
    if ((number == 0 || game.number != number) && !Matches(game, filter)) continue;
    RemoveAt(tourney, files, {i});
    return 1;
  }
  return 0;
}

void RemoveGamesOf(Tourney& tourney, FileSystem& files, int player_number) {
  std::vector<std::size_t> indices;
  for (std::size_t i = tourney.Games().size(); i-- > 0;) {
    const Game& game = tourney.Games()[i];
    if (game.IsPlayedBy(player_number) || game.IsPlayedBy(0)) indices.push_back(i);
  }
  RemoveAt(tourney, files, indices);
}

std::array<std::string, 2> ReasonFilesOf(const Tourney& tourney, const Game& game) {
  constexpr std::string_view kPgn = ".PGN";
  std::string name = game.pgn_file;
  if (name.empty()) name = tourney.Settings().files_path + "g" + std::to_string(game.number);
  if (!name.ends_with(kPgn)) name += kPgn;
  return ReasonFiles(name);
}

void DeleteReasonFilesOf(const Tourney& tourney, FileSystem& files, const Game& game) {
  for (const std::string& name : ReasonFilesOf(tourney, game))
    RemoveIfThere(files, name);
}

void DeleteReasonFiles(const Tourney& tourney, FileSystem& files) {
  for (const Game& game : tourney.Games()) {
    EndWhenAsked();
    if (!HasClaim(files, game.pgn_file)) DeleteReasonFilesOf(tourney, files, game);
  }
}

void DeleteGameFiles(Tourney& tourney, FileSystem& files, const Game& game) {
  if (!HasClaim(files, game.pgn_file)) {
    DeleteReasonFilesOf(tourney, files, game);
    RemoveIfThere(files, game.bat_file);
    RemoveIfThere(files, game.pgn_file);
  }
  if (game.bat_file.empty() && game.pgn_file.empty()) return;
  const auto change = tourney.Change(game);
  change->bat_file.clear();
  change->pgn_file.clear();
}

bool Forfeit(Tourney& tourney, FileSystem& files, int player_number) {
  const Player* player = tourney.FindParticipant(player_number);
  if (player == nullptr) {
    Print("Can't find a player by number %d!\n", player_number);
    return false;
  }
  for (const Game& game : tourney.Games()) {
    EndWhenAsked();
    if (game.IsReady() || !game.IsPlayedBy(player_number)) continue;
    DeleteGameFiles(tourney, files, game);
    const auto change = tourney.Change(game);
    change->status = kReady;
    change->result = game.black == player_number ? kWhiteWins : kBlackWins;
  }
  PrintText("All games of player " + player->texts.name +
            " adjudicated as win for the opponent.\n");
  return true;
}

}  // namespace tarvendo
