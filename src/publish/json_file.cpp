#include "publish/json_file.h"

#include <cmath>
#include <nlohmann/json.hpp>

#include "publish/report_model.h"

namespace tarvendo {
namespace {

using Json = nlohmann::ordered_json;

/// More participants have no table of chances: it would be the largest part of the file.
constexpr int kMostForChances = 300;

/// Never "-0.0".
double Rounded(double value, double steps) {
  return std::round(value * steps) / steps + 0.0;
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

Json ParticipantJson(const Report& report, std::size_t index) {
  const ReportParticipant& shown = report.participants[index];
  Json json;
  json["number"] = shown.number;
  json["name"] = shown.name;
  json["bye"] = shown.is_bye;
  json["rank"] = shown.is_bye ? Json(nullptr) : Json(shown.rank);
  json["points"] = InPoints(shown.points);
  json["games"] = shown.games;
  json["won"] = shown.wins;
  json["drawn"] = shown.draws;
  json["lost"] = shown.losses;
  const auto percent = shown.Percent();
  json["percent"] = percent ? Json(Rounded(*percent, 100)) : Json(nullptr);
  json["rating"] = RatingJson(report.elo.Of(index));
  json["buchholz"] = InPoints(shown.buchholz);
  json["sonnebornBerger"] = InPoints(shown.sonneborn_berger);
  return json;
}

Json NumberOf(const Report& report, int index) {
  if (index < 0) return nullptr;
  return report.participants[static_cast<std::size_t>(index)].number;
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

/// The row of a participant: one entry for each participant, in list order.
Json ChancesJson(const Report& report, std::size_t a) {
  Json row = Json::array();
  for (std::size_t b = 0; b < report.participants.size(); ++b) {
    const auto chance = report.elo.ChanceOfSuperiority(a, b);
    row.push_back(chance ? Json(Rounded(*chance, 10000)) : Json(nullptr));
  }
  return row;
}

/// Adds a list to the object that is being written, one thing a line.
template <typename Make>
void AddList(std::string& text, const char* name, std::size_t count, const Make& make) {
  text.append(",\n\"").append(name).append("\": [");
  for (std::size_t i = 0; i < count; ++i)
    text += (i == 0 ? "\n" : ",\n") + make(i).dump();
  text += "\n]";
}

}  // namespace

std::string ReportJson(const Report& report) {
  // Object by object: all of them together would take many times the memory of the text.
  const Json head = HeadJson(report);
  std::string text = "{";
  for (const auto& [name, value] : head.items())
    text += (text.size() == 1 ? "\n\"" : ",\n\"") + name + "\": " + value.dump();
  AddList(text, "participants", report.participants.size(),
          [&](std::size_t index) { return ParticipantJson(report, index); });
  AddList(text, "games", report.games.size(),
          [&](std::size_t game) { return GameJson(report, report.games[game]); });
  if (report.counts.participants <= kMostForChances) {
    AddList(text, "superiority", report.participants.size(),
            [&](std::size_t index) { return ChancesJson(report, index); });
  }
  return text + "\n}\n";
}

}  // namespace tarvendo
