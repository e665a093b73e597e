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

void AddEnding(std::string& html, const ReportGame& game) {
  html += "<td class=text>";
  if (game.state == ReportGameState::kPlaying) {
    html += "being played";
  } else if (game.state == ReportGameState::kToBePlayed) {
    html += "to be played";
  } else if (game.is_bye) {
    html += "bye";
  } else if (!game.ending.empty()) {
    AddText(html, game.ending);
  } else if (!game.HasResult()) {
    html += "no result";
  }
}

/// Browsers that know text fragments go to the game; others to the beginning of the file.
void AddPgnLink(std::string& html, const ReportGame& game, const PageSurroundings& surroundings) {
  if (!game.pgn_offset || *game.pgn_offset >= surroundings.pgn_until) {
    html += "<td>";
    return;
  }
  html += Format("<td><a href='games.pgn#:~:text=Number%%20%%22%d%%22'>PGN</a>", game.number);
}

void AddGame(std::string& html, const ReportGame& game, const PageSurroundings& surroundings) {
  html += "<tr><td>" + std::to_string(game.number) + "<th scope=row>";
  AddName(html, game.white_name);
  html += "<td class=result>";
  html += ResultForPeople(game);
  html += "<td class=text>";
  AddName(html, game.black_name);
  AddEnding(html, game);
  html += game.plies ? "<td>" + std::to_string(*game.plies) : "<td>";
  html += game.seconds ? "<td>" + DurationForPeople(*game.seconds) : "<td>";
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

void AddRound(std::string& html, int round, const std::vector<const ReportGame*>& games,
              bool is_open, const PageSurroundings& surroundings) {
  const auto played = std::count_if(games.begin(), games.end(), [](const ReportGame* game) {
    return game->state == ReportGameState::kPlayed;
  });
  html += Format(
      "<details class=round id=r%d%s><summary>Round %d <small>%d of %zu played</small>"
      "</summary>\n<div class=scroll tabindex=0 role=region aria-label=\"Games of round "
      "%d\"><table class=games><thead><tr><th scope=col>Game<th scope=col class=text>White"
      "<th scope=col>Result<th scope=col class=text>Black<th scope=col class=text>How it "
      "ended<th scope=col>Plies<th scope=col>Duration<th scope=col>Record\n<tbody>\n",
      round, is_open ? " open" : "", round, static_cast<int>(played), games.size(), round);
  for (const ReportGame* game : games)
    AddGame(html, *game, surroundings);
  html += "</table></div></details>\n";
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
  const bool all_open = report.games.size() <= kPageLimits.open_games;
  const int shown = RoundToShow(rounds);
  for (const auto& [round, games] : rounds)
    AddRound(html, round, games, all_open || round == shown, surroundings);
  EndSection(html);
}

}  // namespace tarvendo
