#include <algorithm>
#include <map>

#include "base/text.h"
#include "publish/html_text.h"
#include "publish/page.h"
#include "publish/page_parts.h"
#include "publish/report_model.h"
#include "tourney/game.h"

namespace tarvendo {
namespace {

const char* ResultForPeople(const ReportGame& game) {
  switch (game.state) {
    case ReportGameState::kToBePlayed:
      return "–";
    case ReportGameState::kPlaying:
      return "•";
    case ReportGameState::kPlayed:
      break;
  }
  switch (game.result) {
    case kWhiteWins:
      return "1–0";
    case kBlackWins:
      return "0–1";
    case kDraw:
      return "½–½";
    case kBothLose:
      return "0–0";
    default:
      return "*";
  }
}

std::string EndingForPeople(const ReportGame& game) {
  if (game.state == ReportGameState::kPlaying) return "being played";
  if (game.state == ReportGameState::kToBePlayed) return "to be played";
  if (game.is_bye) return "bye";
  return game.ending.empty() && !game.HasResult() ? "no result" : game.ending;
}

/// Browsers that know text fragments go to the game; others to the beginning of the file.
void AddPgnLink(std::string& html, const ReportGame& game, const PageSurroundings& surroundings) {
  if (!game.pgn_offset || *game.pgn_offset >= surroundings.pgn_until) return;
  html += Format("<a href='games.pgn#:~:text=Number%%20%%22%d%%22'>PGN</a>", game.number);
}

void AddGameRow(std::string& html, const ReportGame& game, const PageSurroundings& surroundings) {
  html += "<tr><td>" + std::to_string(game.number) + "<th scope=row>";
  AddName(html, game.white_name);
  html += "<td class=result>";
  html += ResultForPeople(game);
  html += "<td class=text>";
  AddName(html, game.black_name);
  html += "<td class=text>";
  AddText(html, EndingForPeople(game));
  html += game.plies ? "<td>" + std::to_string(*game.plies) : "<td>";
  html += game.seconds ? "<td>" + DurationForPeople(*game.seconds) : "<td>";
  html += "<td>";
  AddPgnLink(html, game, surroundings);
  html += '\n';
}

/// The same in a line.
void AddGameLine(std::string& html, const ReportGame& game, const PageSurroundings& surroundings) {
  html += "<li>" + std::to_string(game.number) + ". ";
  AddName(html, game.white_name);
  html += " – ";
  AddName(html, game.black_name);
  html += "  ";
  html += ResultForPeople(game);
  const std::string ending = EndingForPeople(game);
  if (!ending.empty()) {
    html += ", ";
    AddText(html, ending);
  }
  if (game.plies) html += ", " + std::to_string(*game.plies) + " plies";
  if (game.seconds) html += ", " + DurationForPeople(*game.seconds);
  html += ' ';
  AddPgnLink(html, game, surroundings);
  html += '\n';
}

using GamesOfRounds = std::map<int, std::vector<const ReportGame*>>;

/// The round that is being played, or the last one that was.
int RoundToShow(const GamesOfRounds& rounds) {
  int shown = rounds.begin()->first;
  for (const auto& [round, games] : rounds) {
    const bool has_begun = std::any_of(games.begin(), games.end(), [](const ReportGame* game) {
      return game->state != ReportGameState::kToBePlayed;
    });
    if (has_begun) shown = round;
  }
  return shown;
}

void AddGameTable(std::string& html, int round, const std::vector<const ReportGame*>& games,
                  const PageSurroundings& surroundings) {
  html += Format(
      "<div class=scroll tabindex=0 role=region aria-label=\"Games of round %d\"><table "
      "class=games>"
      "<thead><tr><th scope=col>Game<th scope=col class=text>White<th scope=col>Result"
      "<th scope=col class=text>Black<th scope=col class=text>How it ended<th scope=col>Plies"
      "<th scope=col>Duration<th scope=col>Record\n<tbody>\n",
      round);
  for (const ReportGame* game : games)
    AddGameRow(html, *game, surroundings);
  html += "</table></div>";
}

void AddGameLines(std::string& html, const std::vector<const ReportGame*>& games,
                  const PageSurroundings& surroundings) {
  html += "<ul class=games>\n";
  for (const ReportGame* game : games)
    AddGameLine(html, *game, surroundings);
  html += "</ul>";
}

/// How the rounds are shown.
struct RoundsView {
  int open_round;  ///< unfolded at first
  bool all_open;
  bool in_tables;
};

void AddRound(std::string& html, int round, const std::vector<const ReportGame*>& games,
              const RoundsView& view, const PageSurroundings& surroundings) {
  const auto played = std::count_if(games.begin(), games.end(), [](const ReportGame* game) {
    return game->state == ReportGameState::kPlayed;
  });
  html += Format(
      "<details class=round id=r%d%s><summary>Round %d <small>%d of %d played</small>"
      "</summary>\n",
      round, view.all_open || round == view.open_round ? " open" : "", round,
      static_cast<int>(played), AsInt(games.size()));
  if (view.in_tables) {
    AddGameTable(html, round, games, surroundings);
  } else {
    AddGameLines(html, games, surroundings);
  }
  html += "</details>\n";
}

}  // namespace

void AddGames(std::string& html, const Report& report, const PageSurroundings& surroundings) {
  BeginSection(html, "games", "Games", "");
  GamesOfRounds rounds;
  for (const ReportGame& game : report.games)
    rounds[game.round].push_back(&game);
  if (rounds.empty()) {
    html += "<p>There are no games yet.</p>\n";
    EndSection(html);
    return;
  }
  const RoundsView view{RoundToShow(rounds), report.games.size() <= kPageLimits.open_games,
                        report.games.size() <= kPageLimits.games_in_tables};
  // The page's script unfolds them.
  if (!view.all_open) {
    html +=
        "<noscript><p class=\"note paper\">Rounds that are folded on the screen are not printed."
        "</p></noscript>\n";
  }
  for (const auto& [round, games] : rounds)
    AddRound(html, round, games, view, surroundings);
  EndSection(html);
}

}  // namespace tarvendo
