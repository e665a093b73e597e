#pragma once

#include <cstddef>
#include <vector>

namespace tarvendo {

/// How much the games between two players tell about their difference.
struct PairInformation {
  std::size_t first;  ///< 0-based indices of the players
  std::size_t second;
  double weight;  ///< games x expected score x expected score of the other; above 0
};

/// The inverse of the information matrix of paired comparisons, restricted to ratings whose mean is
/// 0: variances and covariances of the ratings. The matrix is the Laplacian of the graph whose
/// edges are the pairs, so only differences are told by it; on the ratings of mean 0 it has an
/// inverse when the players are connected.
class RatingCovariances {
 public:
  /// For `players` players, connected by the pairs. Takes time with the cube of the number, and
  /// memory with its square.
  RatingCovariances(std::size_t players, const std::vector<PairInformation>& pairs);

  double Covariance(std::size_t a, std::size_t b) const;
  double Variance(std::size_t player) const { return Covariance(player, player); }

 private:
  std::size_t size_;
  double shift_ = 0;             ///< what every covariance has too much
  std::vector<double> columns_;  ///< those of the inverse of the triangular factor, one per row
};

}  // namespace tarvendo
