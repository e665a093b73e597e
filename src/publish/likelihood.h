#pragma once

#include <cstddef>
#include <vector>

#include "publish/elo_groups.h"

namespace tarvendo {

/// The ratings, in natural units (a difference d scores 1 / (1 + exp(-d))) and with the mean 0,
/// under which the scores of the pairs are likeliest. The players must be one group
/// (elo_groups.h), or there are none.
std::vector<double> LikeliestRatings(std::size_t players, const std::vector<PairScore>& pairs);

/// What a player is expected to score in a game when it stands `difference` natural units above.
double ExpectedScore(double difference);

}  // namespace tarvendo
