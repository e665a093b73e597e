#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <vector>

#include "publish/elo_groups.h"

namespace tarvendo {

class RatingCovariances;

/// What can be told of a player's strength.
enum class EloKind {
  kNone,     ///< nothing: no games, or none that say anything
  kRated,    ///< a number with its interval
  kAtLeast,  ///< everything was won: a lower bound
  kAtMost,   ///< everything was lost: an upper bound
};

struct EloRating {
  EloKind kind = EloKind::kNone;
  double elo = 0;                ///< the rating or the bound; the mean of a group is 0
  std::optional<double> margin;  ///< half of the 95 % interval of a rating
  int group = 0;  ///< 1-based; only ratings of one group compare, 0 where there is none
};

/// Ratings of the logistic model, in which a player who stands d Elo above another one scores
/// 1 / (1 + 10^(-d/400)) against him (R. A. Bradley and M. E. Terry, "Rank analysis of incomplete
/// block designs", Biometrika 39, 1952; D. R. Hunter, "MM algorithms for generalized Bradley-Terry
/// models", Annals of Statistics 32, 2004). Draws count as half a win. The ratings are those under
/// which the results were likeliest, found by Newton's method with conjugate gradients, which
/// arrives where Hunter's steps arrive, sooner; their mean is 0 in each group (elo_groups.h). The
/// 95 % intervals come from the inverse of the information matrix restricted to mean 0. Who has
/// won or lost everything has no likeliest rating: the bound is where such a score still has a
/// chance of 5 %, the opponents' ratings taken as they are.
class EloTable {
 public:
  /// The most players of a group for whom intervals and chances are computed: their time grows
  /// with the cube of it.
  static constexpr std::size_t kMostForIntervals = 2000;

  /// `pairs` has every pair of players at most once, with at least one game.
  EloTable(std::size_t players, std::vector<PairScore> pairs);
  ~EloTable();
  EloTable(EloTable&&) noexcept;
  EloTable& operator=(EloTable&&) noexcept;

  const EloRating& Of(std::size_t player) const { return ratings_[player]; }

  /// How many groups have ratings.
  int Groups() const { return static_cast<int>(covariances_.size()); }

  /// The chance that player `a` is the stronger of the two, from the difference of the ratings and
  /// its standard error. Nothing where the two do not compare.
  std::optional<double> ChanceOfSuperiority(std::size_t a, std::size_t b) const;

 private:
  void RateGroup(const std::vector<std::size_t>& group, std::vector<PairScore> pairs);
  void SetBounds(const std::vector<PairScore>& pairs);

  std::vector<EloRating> ratings_;
  std::vector<std::size_t> index_in_group_;                      ///< of each player in its group
  std::vector<std::unique_ptr<RatingCovariances>> covariances_;  ///< of each group
};

}  // namespace tarvendo
