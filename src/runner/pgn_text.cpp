#include "runner/pgn_text.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "base/line_reader.h"
#include "base/text.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

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

}  // namespace

int ResultInPgn(const std::string& pgn) {
  LineReader lines(pgn);
  while (const auto line = lines.Read(kRecordLine)) {
    if (!lines.IsFirstPiece() || !BeginsWithNoCase(*line, "[result")) continue;
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
    merged += lines.IsFirstPiece() ? MergedLine(tourney, game, *line) : *line;
  }
  return merged;
}

}  // namespace tarvendo
