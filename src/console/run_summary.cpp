#include "console/run_summary.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

#include "base/text.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr std::size_t kShortestName = 6;
constexpr std::size_t kMostEndings = 15;
constexpr std::size_t kLongestEnding = 60;

/// One participant's results.
struct EngineRow {
  std::string name;
  bool is_bye = false;
  int won = 0;
  int drawn = 0;
  int lost = 0;
  int without_result = 0;

  int HalfPoints() const { return 2 * won + drawn; }
  int Games() const { return won + drawn + lost + without_result; }
};

/// Counts a game for a participant, who wins by the result `winning`.
void CountGame(EngineRow& row, int result, int winning) {
  if (result == winning) {
    ++row.won;
  } else if (result == kDraw) {
    ++row.drawn;
  } else if (result == kWhiteWins || result == kBlackWins || result == kBothLose) {
    ++row.lost;
  } else {
    ++row.without_result;
  }
}

std::vector<EngineRow> RowsOf(const Tourney& tourney) {
  std::vector<EngineRow> rows;
  for (const Player& player : tourney.Participants()) {
    rows.emplace_back();
    rows.back().name = player.texts.name;
    rows.back().is_bye = IsBye(player);
  }
  const auto row_of = [&rows](int number) {
    const bool is_there = number >= 1 && static_cast<std::size_t>(number) <= rows.size();
    return is_there ? &rows[static_cast<std::size_t>(number) - 1] : nullptr;
  };
  for (const Game& game : tourney.Games()) {
    if (!game.IsReady()) continue;
    if (EngineRow* row = row_of(game.white)) CountGame(*row, game.result, kWhiteWins);
    if (EngineRow* row = row_of(game.black)) CountGame(*row, game.result, kBlackWins);
  }
  std::erase_if(rows, [](const EngineRow& row) { return row.is_bye; });
  std::stable_sort(rows.begin(), rows.end(), [](const EngineRow& a, const EngineRow& b) {
    return a.HalfPoints() > b.HalfPoints();
  });
  return rows;
}

std::string ResultLines(const std::vector<EngineRow>& rows) {
  std::size_t width = kShortestName;
  for (const EngineRow& row : rows)
    width = std::max(width, row.name.size());
  const int columns = static_cast<int>(width);
  std::string lines = Format("%-*s  Games   Won Drawn  Lost  None  Points\n", columns, "Engine");
  for (const EngineRow& row : rows) {
    lines += Format("%-*s  %5d %5d %5d %5d %5d %7.1f\n", columns, row.name.c_str(), row.Games(),
                    row.won, row.drawn, row.lost, row.without_result, row.HalfPoints() / 2.0);
  }
  return lines;
}

/// What an engine or a program has written, fit for a terminal.
std::string FitForTerminal(std::string text) {
  for (char& character : text) {
    const auto byte = static_cast<unsigned char>(character);
    if (byte < ' ' || byte == 0x7f) character = '?';
  }
  return text.size() > kLongestEnding ? text.substr(0, kLongestEnding) + "..." : text;
}

std::string EndingLines(const std::map<std::string, int>& endings) {
  std::vector<std::pair<std::string, int>> frequent(endings.begin(), endings.end());
  std::stable_sort(frequent.begin(), frequent.end(),
                   [](const auto& a, const auto& b) { return a.second > b.second; });
  std::string lines = "How the games ended:\n";
  int others = 0;
  for (std::size_t i = 0; i < frequent.size(); ++i) {
    if (i >= kMostEndings) {
      others += frequent[i].second;
    } else {
      lines += Format("%7d  ", frequent[i].second) + frequent[i].first + "\n";
    }
  }
  return others == 0 ? lines : lines + Format("%7d  in other ways\n", others);
}

std::string LongestLine(const Game& game, int plies) {
  return Format("The longest: game %d, %s - %s, %d moves, %s\n", game.number,
                game.white_player.c_str(), game.black_player.c_str(), (plies + 1) / 2,
                ResultText(game.result));
}

}  // namespace

std::string RunSummary(const Tourney& tourney,
                       const std::function<RecordedEnd(const Game&)>& end_of) {
  std::map<std::string, int> endings;
  const Game* longest = nullptr;
  int most_plies = 0;
  for (const Game& game : tourney.Games()) {
    if (!game.IsReady()) continue;
    const RecordedEnd end = end_of(game);
    ++endings[end.how.empty() ? "(not told)" : FitForTerminal(end.how)];
    if (end.plies <= most_plies) continue;
    most_plies = end.plies;
    longest = &game;
  }
  if (endings.empty()) return "";
  return ResultLines(RowsOf(tourney)) + EndingLines(endings) +
         (longest == nullptr ? "" : LongestLine(*longest, most_plies));
}

}  // namespace tarvendo
