#include "publish/json_file.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "publish/report_model.h"

namespace tarvendo {
namespace {

using Json = nlohmann::ordered_json;

/// More participants have no table of chances: it would be the largest part of the file.
constexpr int kMostForChances = 300;

double Rounded(double value, double steps) {
  return std::round(value * steps) / steps;
}

template <typename Value>
Json OrNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json(nullptr);
}

Json RatingJson(const EloRating& rating) {
  Json json;
  switch (rating.kind) {
    case EloKind::kNone:
      return nullptr;
    case EloKind::kRated:
      json["elo"] = Rounded(rating.elo, 100);
      break;
    case EloKind::kAtLeast:
      json["atLeast"] = Rounded(rating.elo, 100);
      break;
    case EloKind::kAtMost:
      json["atMost"] = Rounded(rating.elo, 100);
      break;
  }
  if (rating.margin) {
    json["low"] = Rounded(rating.elo - *rating.margin, 100);
    json["high"] = Rounded(rating.elo + *rating.margin, 100);
  }
  json["group"] = rating.group;
  return json;
}

Json ParticipantJson(const Report& report, std::size_t place) {
  const ReportParticipant& shown = report.participants[place];
  Json json;
  json["number"] = shown.number;
  json["name"] = shown.name;
  json["bye"] = shown.is_bye;
  json["rank"] = shown.is_bye ? Json(nullptr) : Json(shown.rank);
  json["points"] = shown.points / 4.0;
  json["games"] = shown.games;
  json["won"] = shown.wins;
  json["drawn"] = shown.draws;
  json["lost"] = shown.losses;
  const auto percent = shown.Percent();
  json["percent"] = percent ? Json(Rounded(*percent, 100)) : Json(nullptr);
  json["rating"] = RatingJson(report.elo.Of(place));
  json["buchholz"] = shown.buchholz / 4.0;
  json["sonnebornBerger"] = shown.sonneborn_berger / 4.0;
  return json;
}

Json NumberOf(const Report& report, int place) {
  if (place < 0) return nullptr;
  return report.participants[static_cast<std::size_t>(place)].number;
}

Json GameJson(const Report& report, const ReportGame& game) {
  Json json;
  json["number"] = game.number;
  json["round"] = game.round;
  json["subRound"] = game.sub_round;
  json["white"] = NumberOf(report, game.white);
  json["black"] = NumberOf(report, game.black);
  json["state"] = StateOfGame(game);
  if (game.state != ReportGameState::kPlayed) return json;
  json["result"] = PgnResult(game);
  if (!game.ending.empty()) json["ending"] = game.ending;
  if (!game.termination.empty()) json["termination"] = game.termination;
  if (game.plies) json["plies"] = *game.plies;
  if (game.seconds) json["seconds"] = *game.seconds;
  return json;
}

Json HeadJson(const Report& report) {
  Json json;
  json["format"] = "tarvendo report";
  json["version"] = 1;
  json["name"] = report.name;
  json["type"] = report.is_swiss ? "swiss" : "round robin";
  json["round"] = report.round;
  json["rounds"] = report.rounds;
  json["subRounds"] = report.sub_rounds;
  json["timeControl"] = {{"moves", report.time_control.mps},
                         {"seconds", report.time_control.seconds},
                         {"increment", report.time_control.inc}};
  json["computer"] = report.computer;
  json["hashTables"] = report.hash_tables;
  json["tablebases"] = report.tablebases;
  json["ponder"] = report.ponder;
  json["changedAt"] = report.changed_at;
  json["counts"] = {{"participants", report.counts.participants},
                    {"games", report.counts.all},
                    {"played", report.counts.played},
                    {"beingPlayed", report.counts.playing},
                    {"withoutResult", report.counts.without_result}};
  return json;
}

/// A row for each participant, a place in it for each participant, in list order.
Json ChancesJson(const Report& report) {
  Json rows = Json::array();
  for (std::size_t a = 0; a < report.participants.size(); ++a) {
    Json row = Json::array();
    for (std::size_t b = 0; b < report.participants.size(); ++b) {
      const auto chance = report.elo.ChanceOfSuperiority(a, b);
      row.push_back(chance ? Json(Rounded(*chance, 10000)) : Json(nullptr));
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

}  // namespace

std::string ReportJson(const Report& report) {
  Json json = HeadJson(report);
  json["participants"] = Json::array();
  for (std::size_t place = 0; place < report.participants.size(); ++place)
    json["participants"].push_back(ParticipantJson(report, place));
  json["games"] = Json::array();
  for (const ReportGame& game : report.games)
    json["games"].push_back(GameJson(report, game));
  if (report.counts.participants <= kMostForChances) json["superiority"] = ChancesJson(report);
  return json.dump(1, ' ') + "\n";
}

}  // namespace tarvendo
