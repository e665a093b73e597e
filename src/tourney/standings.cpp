// The standings in one pass over the games.
//
// A tie-break asks for each pair of participants what they scored against each other. Going over
// the games for every pair costs participants x participants x games. Instead each game is put down
// twice, with its two players (how many games each has is counted first, so that all of them fit
// into one array, player behind player). Then the games of one player at a time are summed up per
// opponent, in an array that has an entry for every opponent and is told to be fresh by a stamp
// rather than by clearing it:
//
//   Ada beats Ben, draws with Ben, loses to Cyd, who has 3 points; Ben has 2
//   Ada's games:  Ben +4, Ben +2, Cyd +0    ->   Ben 6 quarters, Cyd 0
//   Buchholz      2 + 3 = 5,  Sonneborn-Berger  1.5 x 2 + 0 x 3 = 3

#include "tourney/standings.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <vector>

#include "tourney/game_score.h"
#include "tourney/participant_indices.h"
#include "tourney/rounds.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// One game of a participant: against whom, and what it scored in it.
struct Meeting {
  std::size_t opponent;  ///< 0-based index
  QuarterPoints score;
};

/// A game that has both its players in the list and counts for the tie-breaks.
struct CountedGame {
  std::size_t white;  ///< 0-based index, as `black`
  std::size_t black;
  const Game* game;
};

/// The meetings of all participants, those of one behind those of the other.
struct Meetings {
  std::vector<Meeting> list;
  std::vector<std::size_t> begin;  ///< of each participant, and the end of the last
};

QuarterPoints Saturated(std::int64_t sum) {
  return static_cast<QuarterPoints>(
      std::min<std::int64_t>(sum, std::numeric_limits<QuarterPoints>::max()));
}

/// Of all participants, in list order.
using Standings = std::vector<ComputedStanding>;

void AddGameScore(ComputedStanding& standing, QuarterPoints score) {
  ++standing.games_played;
  standing.points += score;
}

/// Adds up points and games played, and picks the games that the tie-breaks count.
std::vector<CountedGame> AddUpPoints(const Tourney& tourney, Standings& standings) {
  const ParticipantIndices indices(tourney.Participants());
  std::vector<CountedGame> counted;
  counted.reserve(tourney.Games().size());
  for (const Game& game : tourney.Games()) {
    if (!game.IsReady()) continue;
    const int white = indices.Of(game.white);
    const int black = indices.Of(game.black);
    const auto white_index = static_cast<std::size_t>(white);
    const auto black_index = static_cast<std::size_t>(black);
    if (white >= 0) AddGameScore(standings[white_index], WhiteScore(game));
    if (black >= 0) AddGameScore(standings[black_index], BlackScore(game));
    const bool have_met = white >= 0 && black >= 0 && white != black && IsDecidedOnBoard(game);
    if (have_met) counted.push_back({white_index, black_index, &game});
  }
  return counted;
}

/// Where each participant's meetings begin, from how many it has.
std::vector<std::size_t> CountMeetings(std::size_t participants,
                                       const std::vector<CountedGame>& games) {
  std::vector<std::size_t> begin(participants + 1, 0);
  for (const CountedGame& counted : games) {
    ++begin[counted.white + 1];
    ++begin[counted.black + 1];
  }
  for (std::size_t i = 1; i < begin.size(); ++i)
    begin[i] += begin[i - 1];
  return begin;
}

Meetings SortMeetings(std::size_t participants, const std::vector<CountedGame>& games) {
  Meetings meetings{std::vector<Meeting>(games.size() * 2), CountMeetings(participants, games)};
  std::vector<std::size_t> next = meetings.begin;
  for (const CountedGame& counted : games) {
    meetings.list[next[counted.white]++] = {counted.black, WhiteScore(*counted.game)};
    meetings.list[next[counted.black]++] = {counted.white, BlackScore(*counted.game)};
  }
  return meetings;
}

/// What one participant has scored against each opponent it has met.
class PairScores {
 public:
  explicit PairScores(std::size_t participants)
      : stamp_(participants, 0), score_(participants, 0) {}

  /// Forgets the opponents of the participant before.
  void Begin() {
    ++now_;
    met_.clear();
  }

  void Add(const Meeting& meeting) {
    if (stamp_[meeting.opponent] != now_) {
      stamp_[meeting.opponent] = now_;
      score_[meeting.opponent] = 0;
      met_.push_back(meeting.opponent);
    }
    score_[meeting.opponent] += meeting.score;
  }

  /// The opponents met, each once.
  const std::vector<std::size_t>& Met() const { return met_; }
  std::int64_t Against(std::size_t opponent) const { return score_[opponent]; }

 private:
  std::size_t now_ = 0;
  std::vector<std::size_t> stamp_;
  std::vector<std::int64_t> score_;
  std::vector<std::size_t> met_;
};

void AddTieBreaks(Standings& standings, const Meetings& meetings) {
  PairScores scores(standings.size());
  for (std::size_t i = 0; i < standings.size(); ++i) {
    scores.Begin();
    for (std::size_t m = meetings.begin[i]; m < meetings.begin[i + 1]; ++m) {
      scores.Add(meetings.list[m]);
    }
    std::int64_t buchholz = 0;
    std::int64_t sonneborn_berger = 0;
    for (const std::size_t opponent : scores.Met()) {
      const std::int64_t points = standings[opponent].points;
      buchholz += points;
      sonneborn_berger += scores.Against(opponent) * points / 4;
    }
    standings[i].buchholz = Saturated(buchholz);
    standings[i].sonneborn_berger = Saturated(sonneborn_berger);
  }
}

/// Whether `a` stands ahead of `b`.
bool IsAhead(const ComputedStanding& a, const ComputedStanding& b, bool is_swiss) {
  if (a.points != b.points) return a.points > b.points;
  if (is_swiss && a.buchholz != b.buchholz) return a.buchholz > b.buchholz;
  return a.sonneborn_berger > b.sonneborn_berger;
}

void SetRanks(Standings& standings, bool is_swiss) {
  std::vector<ComputedStanding*> order;
  order.reserve(standings.size());
  for (ComputedStanding& standing : standings)
    order.push_back(&standing);
  std::sort(order.begin(), order.end(), [&](const ComputedStanding* a, const ComputedStanding* b) {
    return IsAhead(*a, *b, is_swiss);
  });
  for (std::size_t i = 0; i < order.size(); ++i) {
    const bool shares_rank = i > 0 && !IsAhead(*order[i - 1], *order[i], is_swiss);
    order[i]->rank = shares_rank ? order[i - 1]->rank : static_cast<int>(i) + 1;
  }
}

/// Enters the standing where it is not the one that is there already.
void Enter(Tourney& tourney, const Player& player, const ComputedStanding& standing) {
  const ComputedStanding before{player.games_played, player.sonneborn_berger, player.buchholz,
                                player.points, player.rank};
  if (before == standing) return;
  const auto change = tourney.Change(player);
  change->games_played = standing.games_played;
  change->sonneborn_berger = standing.sonneborn_berger;
  change->buchholz = standing.buchholz;
  change->points = standing.points;
  change->rank = standing.rank;
}

}  // namespace

std::vector<ComputedStanding> ComputeStandings(const Tourney& tourney) {
  Standings standings(tourney.Participants().size());
  const std::vector<CountedGame> games = AddUpPoints(tourney, standings);
  AddTieBreaks(standings, SortMeetings(standings.size(), games));
  SetRanks(standings, tourney.IsSwiss());
  return standings;
}

void UpdateStandingsAndRound(Tourney& tourney) {
  const std::vector<Player>& participants = tourney.Participants();
  const Standings standings = ComputeStandings(tourney);
  for (std::size_t i = 0; i < participants.size(); ++i)
    Enter(tourney, participants[i], standings[i]);
  AdvanceCurrentRound(tourney);
}

}  // namespace tarvendo
