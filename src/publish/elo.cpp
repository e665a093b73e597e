#include "publish/elo.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "publish/information_matrix.h"
#include "publish/likelihood.h"

namespace tarvendo {
namespace {

/// Natural units (Bradley and Terry's logarithms) in Elo.
const double kEloPerUnit = 400 / std::log(10.0);

/// 95 % of a normal distribution lie within so many standard errors.
constexpr double kErrorsOf95Percent = 1.959963984540054;

/// The chance that a clean score still has at a bound.
constexpr double kChanceAtBound = 0.05;

/// One opponent of a player with a clean score.
struct Opponent {
  double games;
  double elo;
  bool is_rated;
};

/// What a player has scored in all its games, and whom that is measured against when it is clean.
struct WholeScore {
  double score = 0;
  double games = 0;
  std::vector<std::pair<int, double>> games_by_group;  ///< the opponents' group, and the games
  int measured_in = 0;                                 ///< the group of these opponents:
  std::vector<Opponent> opponents;

  void Add(double points, double count, const EloRating& opponent) {
    score += points;
    games += count;
    games_by_group.emplace_back(opponent.group, count);
  }

  bool IsClean() const { return games > 0 && (score == 0 || score == games); }
};

double ScoreAbove(double elo) {
  return ExpectedScore(elo / kEloPerUnit);
}

/// The logarithm of the chance to win everything. Opponents without a number stand where the mean
/// of them and the player is 0.
double LogOfWinningAll(double elo, const std::vector<Opponent>& opponents) {
  const double mirrored = -elo / static_cast<double>(opponents.size());
  double sum = 0;
  for (const Opponent& opponent : opponents)
    sum +=
        opponent.games * std::log(ScoreAbove(elo - (opponent.is_rated ? opponent.elo : mirrored)));
  return sum;
}

/// Where the chance to win everything against them is 5 %.
double LowerBound(const std::vector<Opponent>& opponents) {
  double low = -20000;
  double high = 20000;
  for (int step = 0; step < 60; ++step) {
    const double middle = (low + high) / 2;
    const bool is_too_low = LogOfWinningAll(middle, opponents) < std::log(kChanceAtBound);
    (is_too_low ? low : high) = middle;
  }
  return (low + high) / 2;
}

double UpperBound(std::vector<Opponent> opponents) {
  for (Opponent& opponent : opponents)
    opponent.elo = -opponent.elo;
  return -LowerBound(opponents);
}

/// Of a rating with an interval, in natural units.
double VarianceOf(const EloRating& rating) {
  const double error = rating.margin.value_or(0) / kErrorsOf95Percent / kEloPerUnit;
  return error * error;
}

/// The group that most of the games against rated opponents were played against; 0 for none.
int GroupPlayedMost(const std::vector<std::pair<int, double>>& games_by_group) {
  std::vector<double> games;
  for (const auto& [group, count] : games_by_group) {
    const auto index = static_cast<std::size_t>(group);
    if (games.size() <= index) games.resize(index + 1, 0.0);
    if (group > 0) games[index] += count;
  }
  const auto most = std::max_element(games.begin(), games.end());
  return most == games.end() || *most == 0 ? 0 : static_cast<int>(most - games.begin());
}

/// The scores of all players. Only those have opponents that have a clean score and no rating.
std::vector<WholeScore> ScoresToBound(const std::vector<EloRating>& ratings,
                                      const std::vector<PairScore>& pairs) {
  std::vector<WholeScore> scores(ratings.size());
  for (const PairScore& pair : pairs) {
    scores[pair.first].Add(pair.score, pair.games, ratings[pair.second]);
    scores[pair.second].Add(pair.games - pair.score, pair.games, ratings[pair.first]);
  }
  const auto has_bound = [&](std::size_t player) {
    return ratings[player].kind == EloKind::kNone && scores[player].IsClean();
  };
  for (std::size_t i = 0; i < scores.size(); ++i) {
    if (has_bound(i)) scores[i].measured_in = GroupPlayedMost(scores[i].games_by_group);
  }
  const auto note = [&](std::size_t player, std::size_t other, double games) {
    const EloRating& rating = ratings[other];
    if (!has_bound(player) || rating.group != scores[player].measured_in) return;
    scores[player].opponents.push_back({games, rating.elo, rating.group != 0});
  };
  for (const PairScore& pair : pairs) {
    note(pair.first, pair.second, pair.games);
    note(pair.second, pair.first, pair.games);
  }
  return scores;
}

}  // namespace

EloTable::~EloTable() = default;
EloTable::EloTable(EloTable&&) noexcept = default;
EloTable& EloTable::operator=(EloTable&&) noexcept = default;

EloTable::EloTable(std::size_t players, std::vector<PairScore> pairs)
    : ratings_(players), index_in_group_(players, 0) {
  const auto groups = EloGroups(players, pairs);
  for (const auto& group : groups) {
    if (group.size() < 2) break;
    covariances_.emplace_back();
    for (std::size_t index = 0; index < group.size(); ++index) {
      index_in_group_[group[index]] = index;
      ratings_[group[index]].group = Groups();
      ratings_[group[index]].kind = EloKind::kRated;
    }
  }
  std::vector<std::vector<PairScore>> pairs_of_group(covariances_.size());
  for (const PairScore& pair : pairs) {
    const int group = ratings_[pair.first].group;
    if (group == 0 || ratings_[pair.second].group != group) continue;
    pairs_of_group[static_cast<std::size_t>(group) - 1].push_back(
        {index_in_group_[pair.first], index_in_group_[pair.second], pair.score, pair.games});
  }
  for (std::size_t i = 0; i < covariances_.size(); ++i)
    RateGroup(groups[i], std::move(pairs_of_group[i]));
  SetBounds(pairs);
}

void EloTable::RateGroup(const std::vector<std::size_t>& group, std::vector<PairScore> pairs) {
  const std::vector<double> natural = LikeliestRatings(group.size(), pairs);
  for (std::size_t index = 0; index < group.size(); ++index)
    ratings_[group[index]].elo = natural[index] * kEloPerUnit;
  if (group.size() > kMostForIntervals) return;
  std::vector<PairInformation> information;
  information.reserve(pairs.size());
  for (const PairScore& pair : pairs) {
    const double expected = ExpectedScore(natural[pair.first] - natural[pair.second]);
    information.push_back({pair.first, pair.second, pair.games * expected * (1 - expected)});
  }
  auto covariances = std::make_unique<RatingCovariances>(group.size(), information);
  for (std::size_t index = 0; index < group.size(); ++index) {
    const double variance = std::max(covariances->Variance(index), 0.0);
    ratings_[group[index]].margin = kErrorsOf95Percent * kEloPerUnit * std::sqrt(variance);
  }
  covariances_[static_cast<std::size_t>(ratings_[group.front()].group) - 1] =
      std::move(covariances);
}

void EloTable::SetBounds(const std::vector<PairScore>& pairs) {
  const std::vector<WholeScore> scores = ScoresToBound(ratings_, pairs);
  for (std::size_t i = 0; i < ratings_.size(); ++i) {
    const WholeScore& whole = scores[i];
    if (whole.opponents.empty()) continue;
    const bool has_won = whole.score > 0;
    ratings_[i].kind = has_won ? EloKind::kAtLeast : EloKind::kAtMost;
    ratings_[i].elo = has_won ? LowerBound(whole.opponents) : UpperBound(whole.opponents);
    ratings_[i].group = whole.measured_in;
  }
}

std::optional<double> EloTable::ChanceOfSuperiority(std::size_t a, std::size_t b) const {
  const EloRating& first = ratings_[a];
  const EloRating& second = ratings_[b];
  if (a == b || first.kind != EloKind::kRated || second.kind != EloKind::kRated) return {};
  if (first.group != second.group) return {};
  const auto& covariances = covariances_[static_cast<std::size_t>(first.group) - 1];
  if (!covariances) return {};
  const double variance = VarianceOf(first) + VarianceOf(second) -
                          2 * covariances->Covariance(index_in_group_[a], index_in_group_[b]);
  if (variance <= 0) return {};
  const double errors = (first.elo - second.elo) / (kEloPerUnit * std::sqrt(variance));
  return 0.5 * std::erfc(-errors / std::sqrt(2.0));
}

}  // namespace tarvendo
