// The logarithm of the likelihood, sum of score x log(e) + (games - score) x log(1 - e) over the
// pairs, is concave in the ratings. Newton's method: at the present ratings take the gradient g and
// the information matrix L (as in information_matrix.cpp, but never written down: only its product
// with a vector is needed), find d with L d = g by conjugate gradients with the diagonal as
// preconditioner, and go by d, or by less when the likelihood would fall.

#include "publish/likelihood.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tarvendo {
namespace {

using Vector = std::vector<double>;

double Product(const Vector& a, const Vector& b) {
  return std::inner_product(a.begin(), a.end(), b.begin(), 0.0);
}

void TakeOffMean(Vector& values) {
  const double mean = std::accumulate(values.begin(), values.end(), 0.0) /
                      static_cast<double>(std::max<std::size_t>(values.size(), 1));
  for (double& value : values)
    value -= mean;
}

/// log(1 / (1 + exp(-x))), for any x.
double LogOfExpected(double x) {
  return x > 0 ? -std::log1p(std::exp(-x)) : x - std::log1p(std::exp(x));
}

class Newton {
 public:
  Newton(std::size_t players, const std::vector<PairScore>& pairs)
      : pairs_(pairs),
        ratings_(players, 0.0),
        weights_(pairs.size(), 0.0),
        gradient_(players, 0.0),
        diagonal_(players, 0.0) {}

  Vector Solve() {
    double likelihood = Likelihood(ratings_);
    for (int step = 0; step < kMostSteps; ++step) {
      Look();
      const Vector direction = SolveLinear();
      const double largest = LargestOf(direction);
      if (largest < kClose) break;
      const double gained = Go(direction, likelihood);
      if (gained <= 0) break;
      likelihood += gained;
    }
    TakeOffMean(ratings_);
    return ratings_;
  }

 private:
  static constexpr int kMostSteps = 200;
  static constexpr double kClose = 1e-10;

  double Likelihood(const Vector& ratings) const {
    double sum = 0;
    for (const PairScore& pair : pairs_) {
      const double difference = ratings[pair.first] - ratings[pair.second];
      sum += pair.score * LogOfExpected(difference) +
             (pair.games - pair.score) * LogOfExpected(-difference);
    }
    return sum;
  }

  /// Gradient and information at the present ratings.
  void Look() {
    std::fill(gradient_.begin(), gradient_.end(), 0.0);
    std::fill(diagonal_.begin(), diagonal_.end(), 0.0);
    for (std::size_t i = 0; i < pairs_.size(); ++i) {
      const PairScore& pair = pairs_[i];
      const double expected = ExpectedScore(ratings_[pair.first] - ratings_[pair.second]);
      const double surplus = pair.score - pair.games * expected;
      gradient_[pair.first] += surplus;
      gradient_[pair.second] -= surplus;
      weights_[i] = pair.games * expected * (1 - expected);
      diagonal_[pair.first] += weights_[i];
      diagonal_[pair.second] += weights_[i];
    }
  }

  void Multiply(const Vector& by, Vector& result) const {
    for (std::size_t i = 0; i < by.size(); ++i)
      result[i] = diagonal_[i] * by[i];
    for (std::size_t i = 0; i < pairs_.size(); ++i) {
      const PairScore& pair = pairs_[i];
      result[pair.first] -= weights_[i] * by[pair.second];
      result[pair.second] -= weights_[i] * by[pair.first];
    }
  }

  Vector Preconditioned(const Vector& rest) const {
    Vector result(rest.size());
    for (std::size_t i = 0; i < rest.size(); ++i)
      result[i] = diagonal_[i] > 0 ? rest[i] / diagonal_[i] : 0;
    return result;
  }

  Vector SolveLinear() const {
    Vector solution(gradient_.size(), 0.0);
    Vector rest = gradient_;
    Vector product(rest.size());
    Vector direction = Preconditioned(rest);
    double size = Product(rest, direction);
    const double enough = size * 1e-16;
    const std::size_t most = 4 * rest.size() + 50;
    for (std::size_t step = 0; step < most && size > enough; ++step) {
      Multiply(direction, product);
      const double curvature = Product(direction, product);
      if (curvature <= 0) break;
      const double length = size / curvature;
      for (std::size_t i = 0; i < rest.size(); ++i) {
        solution[i] += length * direction[i];
        rest[i] -= length * product[i];
      }
      const Vector next = Preconditioned(rest);
      const double next_size = Product(rest, next);
      for (std::size_t i = 0; i < rest.size(); ++i)
        direction[i] = next[i] + next_size / size * direction[i];
      size = next_size;
    }
    TakeOffMean(solution);
    return solution;
  }

  static double LargestOf(const Vector& values) {
    double largest = 0;
    for (const double value : values)
      largest = std::max(largest, std::abs(value));
    return largest;
  }

  /// Goes along the direction as far as the likelihood rises; gives by how much, 0 when it does
  /// not.
  double Go(const Vector& direction, double likelihood) {
    Vector tried(ratings_.size());
    for (double length = 1; length > 1e-6; length /= 2) {
      for (std::size_t i = 0; i < tried.size(); ++i)
        tried[i] = ratings_[i] + length * direction[i];
      const double gained = Likelihood(tried) - likelihood;
      if (gained <= 0 && length > 0.9 && LargestOf(direction) < 1e-6) {
        // So near to the top the sum's last digits tell nothing; the step itself does.
        ratings_ = tried;
        return 0;
      }
      if (gained <= 0) continue;
      ratings_ = tried;
      return gained;
    }
    return 0;
  }

  const std::vector<PairScore>& pairs_;
  Vector ratings_;
  Vector weights_;  ///< of the pairs
  Vector gradient_;
  Vector diagonal_;
};

}  // namespace

double ExpectedScore(double difference) {
  return 1 / (1 + std::exp(-difference));
}

std::vector<double> LikeliestRatings(std::size_t players, const std::vector<PairScore>& pairs) {
  return Newton(players, pairs).Solve();
}

}  // namespace tarvendo
