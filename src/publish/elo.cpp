#include "publish/elo.h"

#include <algorithm>
#include <cmath>

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

/// A player with a clean score, and whom it is measured against.
struct CleanScore {
  std::vector<Opponent> opponents;
  double score = 0;
  double games = 0;

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
  std::vector<CleanScore> clean(ratings_.size());
  std::vector<std::vector<std::pair<int, double>>> met(ratings_.size());
  for (const PairScore& pair : pairs) {
    clean[pair.first].score += pair.score;
    clean[pair.second].score += pair.games - pair.score;
    clean[pair.first].games += pair.games;
    clean[pair.second].games += pair.games;
    met[pair.first].emplace_back(ratings_[pair.second].group, pair.games);
    met[pair.second].emplace_back(ratings_[pair.first].group, pair.games);
  }
  std::vector<int> measured_in(ratings_.size(), 0);
  for (std::size_t i = 0; i < ratings_.size(); ++i) {
    const bool has_bound = ratings_[i].kind == EloKind::kNone && clean[i].IsClean();
    if (has_bound) measured_in[i] = GroupPlayedMost(met[i]);
  }
  const auto note = [&](std::size_t player, std::size_t other, double games) {
    if (ratings_[player].kind != EloKind::kNone || !clean[player].IsClean()) return;
    const EloRating& rating = ratings_[other];
    if (rating.group != measured_in[player]) return;
    clean[player].opponents.push_back({games, rating.elo, rating.group != 0});
  };
  for (const PairScore& pair : pairs) {
    note(pair.first, pair.second, pair.games);
    note(pair.second, pair.first, pair.games);
  }
  for (std::size_t i = 0; i < ratings_.size(); ++i) {
    if (clean[i].opponents.empty()) continue;
    const bool has_won = clean[i].score > 0;
    ratings_[i].kind = has_won ? EloKind::kAtLeast : EloKind::kAtMost;
    ratings_[i].elo = has_won ? LowerBound(clean[i].opponents) : UpperBound(clean[i].opponents);
    ratings_[i].group = measured_in[i];
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
