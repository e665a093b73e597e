#include "pairing/floater_limits.h"

#include <algorithm>

namespace tarvendo {
namespace {

/// Whether no larger count of floaters is tried behind this one.
bool IsLastCount(std::size_t count, std::size_t entries) {
  return count >= entries || 2 * count > entries;
}

/// The most floaters that leave a bracket of so many entries, whatever is asked for.
std::size_t MostFrom(std::size_t entries) {
  std::size_t count = entries % 2;
  while (!IsLastCount(count, entries))
    count += 2;
  return count;
}

}  // namespace

FloaterLimits::FloaterLimits(const std::vector<Bracket>& brackets, std::size_t first,
                             std::size_t most)
    : first_(first) {
  std::size_t players = 0;
  std::size_t handed_on = most;
  std::size_t coming = 0;
  for (std::size_t place = first_; place < brackets.size(); ++place) {
    players += brackets[place].Size();
    const std::size_t parity = players % 2;
    if (handed_on % 2 != parity && handed_on > 0) --handed_on;
    const std::size_t asked_for = std::max(handed_on, parity);
    coming = std::min(asked_for, MostFrom(brackets[place].Size() + coming));
    limits_.push_back(coming);
  }
}

std::vector<std::size_t> FloaterCounts(std::size_t entries, std::size_t first, std::size_t most) {
  std::vector<std::size_t> counts;
  for (std::size_t count = first; count <= most; count += 2) {
    counts.push_back(count);
    if (IsLastCount(count, entries)) break;
  }
  return counts;
}

}  // namespace tarvendo
