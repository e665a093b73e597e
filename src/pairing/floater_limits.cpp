#include "pairing/floater_limits.h"

#include <algorithm>

namespace tarvendo {

FloaterLimits::FloaterLimits(const std::vector<Bracket>& brackets, std::size_t first,
                             std::size_t most)
    : first_(first) {
  SetLimits(brackets, most);
  SetFarthest(brackets);
}

void FloaterLimits::SetLimits(const std::vector<Bracket>& brackets, std::size_t most) {
  std::size_t players = 0;
  std::size_t handed_on = most;
  for (std::size_t place = first_; place < brackets.size(); ++place) {
    players += brackets[place].Size();
    const std::size_t parity = players % 2;
    if (handed_on % 2 == parity) {
      limits_.push_back(handed_on);
    } else {
      handed_on = handed_on == 0 ? 0 : handed_on - 1;
      limits_.push_back(std::max(handed_on, parity));
    }
  }
}

void FloaterLimits::SetFarthest(const std::vector<Bracket>& brackets) {
  farthest_.assign(limits_.size(), brackets.size() - 1);
  for (std::size_t place = brackets.size() - 1; place-- > first_;) {
    const bool moves_on = Of(place) > 0 && CanPassThrough(brackets, place);
    farthest_[place - first_] = moves_on ? FarthestFrom(place + 1) : place;
  }
}

bool FloaterLimits::CanPassThrough(const std::vector<Bracket>& brackets, std::size_t place) const {
  const Bracket& bracket = brackets[place];
  const std::size_t arrived = bracket.FloatersIn().size();
  const std::size_t own_players = bracket.Size() - arrived;
  const std::size_t coming = place == first_ ? arrived : Of(place - 1);
  return own_players <= coming + Of(place);
}

bool FloaterLimits::ReachEverything() const {
  const bool all_cross =
      std::all_of(limits_.begin(), limits_.end() - 1, [](std::size_t limit) { return limit > 0; });
  return all_cross && std::all_of(farthest_.begin(), farthest_.end(),
                                  [&](std::size_t place) { return place == farthest_.back(); });
}

std::vector<std::size_t> FloaterCounts(std::size_t entries, std::size_t first, std::size_t most) {
  std::vector<std::size_t> counts;
  for (std::size_t count = first; count <= most; count += 2) {
    counts.push_back(count);
    if (count >= entries || 2 * count > entries) break;
  }
  return counts;
}

}  // namespace tarvendo
