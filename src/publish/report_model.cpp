#include "publish/report_model.h"

#include <algorithm>
#include <limits>
#include <unordered_set>

#include "base/text.h"
#include "platform/clock.h"
#include "publish/pgn_records.h"
#include "publish/utf8.h"
#include "tourney/game_score.h"
#include "tourney/participant_indices.h"
#include "tourney/rounds.h"
#include "tourney/standings.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

std::string MinutesAndSeconds(int seconds) {
  return Format("%d:%02d", seconds / 60, seconds % 60);
}

std::string DescribeTimeControl(const TimeControl& time) {
  std::string text = MinutesAndSeconds(std::max(time.seconds, 0)) + " min";
  text = time.mps > 0 ? Format("%d moves in ", time.mps) + text : text + " a game";
  if (time.inc != 0) text += Format(" + %d s a move", time.inc);
  return text;
}

std::string MomentText(std::int64_t seconds) {
  const CalendarTime time = LocalCalendar(seconds);
  return Format("%04d-%02d-%02d %02d:%02d", time.year, time.month, time.day, time.hour,
                time.minute);
}

void FillHead(Report& report, const Tourney& tourney) {
  const TourneySettings& settings = tourney.Settings();
  report.name = ToUtf8(settings.name);
  report.is_swiss = tourney.IsSwiss();
  report.sub_rounds = EffectiveSubRounds(tourney);
  report.time_control = settings.time_control;
  report.time_control_text = DescribeTimeControl(settings.time_control);
  report.computer = ToUtf8(settings.computer);
  report.hash_tables = ToUtf8(settings.hash_tables);
  report.tablebases = ToUtf8(settings.tablebases);
  report.ponder = settings.ponder != 0;
}

void FillParticipants(Report& report, const Tourney& tourney) {
  const std::vector<ComputedStanding> standings = ComputeStandings(tourney);
  std::vector<int> ranks(standings.size());
  for (std::size_t index = 0; index < standings.size(); ++index) {
    const Player& player = tourney.Participants()[index];
    ReportParticipant shown;
    shown.number = player.number;
    shown.name = ToUtf8(player.texts.name);
    shown.is_bye = IsBye(player);
    shown.points = standings[index].points;
    shown.buchholz = standings[index].buchholz;
    shown.sonneborn_berger = standings[index].sonneborn_berger;
    ranks[index] = standings[index].rank;
    report.participants.push_back(std::move(shown));
    report.order.push_back(index);
  }
  std::stable_sort(report.order.begin(), report.order.end(), [&](std::size_t a, std::size_t b) {
    const bool is_bye = report.participants[a].is_bye;
    if (is_bye != report.participants[b].is_bye) return !is_bye;
    return ranks[a] < ranks[b];
  });
  int counted = 0;
  for (std::size_t i = 0; i < report.order.size(); ++i) {
    ReportParticipant& shown = report.participants[report.order[i]];
    if (shown.is_bye) break;
    ++counted;
    const bool shares = i > 0 && ranks[report.order[i]] == ranks[report.order[i - 1]];
    shown.rank = shares ? report.participants[report.order[i - 1]].rank : counted;
  }
  report.counts.participants = counted;
}

void AddRecord(ReportGame& shown, const Game& game, const PgnRecords& records) {
  const auto* record = records.Find({game.number, game.white_player, game.black_player});
  if (record == nullptr) return;
  shown.ending = ToUtf8(record->facts.ending);
  shown.plies = record->facts.plies;
  shown.seconds = record->facts.seconds;
  shown.termination = record->facts.termination.empty()
                          ? TerminationOf(record->facts.ending, !game.LacksResult())
                          : ToUtf8(record->facts.termination);
  shown.pgn_offset = record->offset;
  shown.pgn_size = record->size;
}

void FillGames(Report& report, const Tourney& tourney, const PgnRecords& records,
               const std::vector<int>& playing) {
  const ParticipantIndices indices(tourney.Participants());
  const std::unordered_set<int> under_way(playing.begin(), playing.end());
  const auto name = [&](int index, const std::string& own) {
    return index < 0 ? ToUtf8(own) : report.participants[static_cast<std::size_t>(index)].name;
  };
  const auto is_bye = [&](int index) {
    return index >= 0 && report.participants[static_cast<std::size_t>(index)].is_bye;
  };
  report.games.reserve(tourney.Games().size());
  for (const Game& game : tourney.Games()) {
    ReportGame shown;
    shown.number = game.number;
    shown.round = game.round;
    shown.sub_round = game.sub_round;
    shown.white = indices.Of(game.white);
    shown.black = indices.Of(game.black);
    shown.white_name = name(shown.white, game.white_player);
    shown.black_name = name(shown.black, game.black_player);
    shown.result = game.result;
    shown.is_bye = is_bye(shown.white) || is_bye(shown.black);
    if (game.IsReady()) {
      shown.state = ReportGameState::kPlayed;
      AddRecord(shown, game, records);
    } else if (under_way.contains(game.number)) {
      shown.state = ReportGameState::kPlaying;
    }
    report.games.push_back(std::move(shown));
  }
}

void CountFor(Report& report, int index, QuarterPoints score) {
  if (index < 0) return;
  ReportParticipant& shown = report.participants[static_cast<std::size_t>(index)];
  ++shown.games;
  if (score == kWinPoints) {
    ++shown.wins;
  } else if (score == kDrawPoints) {
    ++shown.draws;
  } else {
    ++shown.losses;
  }
}

/// In a round robin the games tell the rounds, for Rounds is brought up to date by tables only.
void FillRounds(Report& report, const Tourney& tourney) {
  report.round = tourney.State().round;
  report.rounds = tourney.Settings().rounds;
  if (report.is_swiss) return;
  report.rounds =
      report.games.empty() ? RoundRobinRounds(static_cast<int>(report.order.size())) : 0;
  int first_left = std::numeric_limits<int>::max();
  for (const ReportGame& game : report.games) {
    report.rounds = std::max(report.rounds, game.round);
    if (game.state != ReportGameState::kPlayed) first_left = std::min(first_left, game.round);
  }
  report.round = std::min(report.games.empty() ? 1 : first_left, report.rounds);
}

/// The games of the rounds that are still to be paired.
int GamesToCome(const Report& report) {
  if (!report.is_swiss) return 0;
  int last_round = 0;
  for (const ReportGame& game : report.games)
    last_round = std::max(last_round, game.round);
  const long long rounds = std::max(report.rounds - last_round, 0);
  const long long games = rounds * (report.counts.participants / 2) * report.sub_rounds;
  return static_cast<int>(std::min<long long>(games, 1000000000));
}

void Count(Report& report) {
  for (const ReportGame& game : report.games) {
    if (game.is_bye) continue;
    ++report.counts.all;
    if (game.state == ReportGameState::kPlaying) ++report.counts.playing;
    if (game.state != ReportGameState::kPlayed) continue;
    ++report.counts.played;
    if (!game.HasResult()) {
      ++report.counts.without_result;
      continue;
    }
    CountFor(report, game.white, WhiteScore(game.result));
    CountFor(report, game.black, BlackScore(game.result));
  }
  report.counts.all += GamesToCome(report);
}

/// The scores of all pairs that have fought a game out.
std::vector<PairScore> ScoresOf(const Report& report) {
  std::vector<PairScore> scores;
  for (const ReportGame& game : report.games) {
    const bool is_played = game.state == ReportGameState::kPlayed && !game.is_bye;
    if (!is_played || !IsDecidedOnBoard(game.result)) continue;
    if (game.white < 0 || game.black < 0 || game.white == game.black) continue;
    const double white = InPoints(WhiteScore(game.result));
    const auto first = static_cast<std::size_t>(std::min(game.white, game.black));
    const auto second = static_cast<std::size_t>(std::max(game.white, game.black));
    scores.push_back({first, second, game.white < game.black ? white : 1 - white, 1});
  }
  std::sort(scores.begin(), scores.end(), [](const PairScore& a, const PairScore& b) {
    return a.first != b.first ? a.first < b.first : a.second < b.second;
  });
  std::size_t last = 0;
  for (std::size_t i = 1; i < scores.size(); ++i) {
    if (scores[i].first == scores[last].first && scores[i].second == scores[last].second) {
      scores[last].score += scores[i].score;
      scores[last].games += 1;
    } else {
      scores[++last] = scores[i];
    }
  }
  if (!scores.empty()) scores.resize(last + 1);
  return scores;
}

}  // namespace

bool ReportGame::HasResult() const {
  return result != kUnknown && result != kUnfinished;
}

std::optional<double> ReportParticipant::Percent() const {
  if (games == 0) return std::nullopt;
  return 100.0 * (wins + 0.5 * draws) / games;
}

Report MakeReport(const Tourney& tourney, const PgnRecords& records,
                  const std::vector<int>& playing, std::int64_t changed_at) {
  Report report;
  FillHead(report, tourney);
  FillParticipants(report, tourney);
  FillGames(report, tourney, records, playing);
  FillRounds(report, tourney);
  Count(report);
  report.changed_at = changed_at;
  report.changed_at_text = MomentText(changed_at);
  report.elo = EloTable(report.participants.size(), ScoresOf(report));
  return report;
}

const char* StateOfGame(const ReportGame& game) {
  if (game.is_bye) return "bye";
  switch (game.state) {
    case ReportGameState::kToBePlayed:
      return "to be played";
    case ReportGameState::kPlaying:
      return "being played";
    case ReportGameState::kPlayed:
      break;
  }
  return "played";
}

const char* PgnResult(const ReportGame& game) {
  switch (game.result) {
    case kWhiteWins:
      return "1-0";
    case kBlackWins:
      return "0-1";
    case kDraw:
      return "1/2-1/2";
    case kBothLose:
      return "0-0";
    default:
      return "*";
  }
}

}  // namespace tarvendo
