#include "pairing/bracket_creation.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/faults.h"

namespace tarvendo {
namespace {

/// Wider than any difference of scores.
constexpr QuarterPoints kWidest = 1'000'000'000;

int LastNumber(const PairingField& field) {
  return static_cast<int>(field.Size());
}

void AddContender(const PairingField& field, int number, Bracket& bracket) {
  bracket.Add(number, field.Get(number).colour_state);
}

Bracket OneBigBracket(const PairingField& field) {
  Bracket bracket(field.Size());
  for (int number = 1; number <= LastNumber(field); ++number) {
    if (!field.Get(number).has_game_in_round) AddContender(field, number, bracket);
  }
  return bracket;
}

/// The highest points of those without a game in the round; nothing when there is nobody.
std::optional<QuarterPoints> HighestFreePoints(const PairingField& field) {
  std::optional<QuarterPoints> highest;
  for (int number = 1; number <= LastNumber(field); ++number) {
    const Contender& contender = field.Get(number);
    if (!contender.has_game_in_round) {
      highest = std::max(highest.value_or(contender.points), contender.points);
    }
  }
  return highest;
}

QuarterPoints LowestPoints(const PairingField& field) {
  QuarterPoints lowest = 2'000'000'000;
  for (int number = 1; number <= LastNumber(field); ++number) {
    lowest = std::min(lowest, field.Get(number).points);
  }
  return lowest;
}

/// Sorts players into bands of scores, band 0 first; `band_of` gives nothing for those left out.
template <typename BandOf>
std::vector<Bracket> SortIntoBands(const PairingField& field, std::size_t bands, BandOf band_of) {
  std::vector<Bracket> brackets(bands, Bracket(field.Size()));
  for (int number = 1; number <= LastNumber(field); ++number) {
    const std::optional<int> band = band_of(field.Get(number));
    if (band) AddContender(field, number, brackets[static_cast<std::size_t>(*band)]);
  }
  return brackets;
}

void RemoveEmptyBrackets(std::vector<Bracket>& brackets) {
  std::erase_if(brackets, [](const Bracket& bracket) { return bracket.Size() == 0; });
}

/// A band takes in `step` different scores, and so does each of the bands below it.
std::vector<Bracket> PairDownBands(const PairingField& field, QuarterPoints highest, int step) {
  const auto bands = static_cast<std::size_t>(highest / step) + 1;
  auto band_of = [&](const Contender& contender) -> std::optional<int> {
    if (contender.has_game_in_round) return std::nullopt;
    return (highest - contender.points) / step;
  };
  std::vector<Bracket> brackets = SortIntoBands(field, bands, band_of);
  RemoveEmptyBrackets(brackets);
  return brackets;
}

/// The same from the lowest score up.
std::vector<Bracket> PairUpBands(const PairingField& field, QuarterPoints highest, int step) {
  const QuarterPoints lowest = LowestPoints(field);
  const int bands = (highest - lowest) / step + 1;
  return SortIntoBands(field, static_cast<std::size_t>(bands),
                       [&](const Contender& contender) -> std::optional<int> {
                         const int band = (contender.points - lowest) / step;
                         return band < bands ? std::optional<int>(band) : std::nullopt;
                       });
}

/// Moves everybody who has met all others of the bracket into the next one. They have all met each
/// other too, so nobody loses a possible partner by it and one look at each is enough.
void MoveLonePlayers(const PairingField& field, Bracket& bracket, Bracket& next) {
  std::vector<std::size_t> lone;
  for (std::size_t index = 0; index < bracket.Size(); ++index) {
    EndWhenAsked();
    if (!HasPossiblePartner(field, bracket, index)) lone.push_back(index);
  }
  for (std::size_t moved = 0; moved < lone.size(); ++moved) {
    const std::size_t index = lone[moved] - moved;
    const BracketEntry entry = bracket.Entries()[index];
    bracket.Remove(index);
    next.Add(entry.number, entry.colour_state);
  }
}

bool HasLonePlayer(const PairingField& field, const Bracket& bracket) {
  for (std::size_t index = 0; index < bracket.Size(); ++index) {
    EndWhenAsked();
    if (!HasPossiblePartner(field, bracket, index)) return true;
  }
  return false;
}

void MergeFromBottom(const PairingField& field, std::vector<Bracket>& brackets) {
  while (brackets.size() > 1 && HasLonePlayer(field, brackets.back())) {
    const Bracket last = std::move(brackets.back());
    brackets.pop_back();
    brackets.back().Absorb(last);
  }
}

void Number(std::vector<Bracket>& brackets) {
  int number = 0;
  for (Bracket& bracket : brackets)
    bracket.number = ++number;
}

}  // namespace

BracketWidth WidthOf(BracketSize size) {
  return BracketWidth{std::clamp(size.half_points, 0, kWidest / 2) * 2};
}

std::vector<Bracket> MakeBrackets(const PairingField& field, BracketWidth width, BracketMode mode) {
  std::vector<Bracket> brackets;
  if (mode == BracketMode::kOneBig) {
    brackets.push_back(OneBigBracket(field));
    Number(brackets);
    return brackets;
  }
  const std::optional<QuarterPoints> highest = HighestFreePoints(field);
  if (!highest) return brackets;
  const int step = std::clamp(width.quarter_points, 0, kWidest) + 1;
  brackets = mode == BracketMode::kPairDown ? PairDownBands(field, *highest, step)
                                            : PairUpBands(field, *highest, step);
  for (std::size_t i = 0; i + 1 < brackets.size(); ++i) {
    MoveLonePlayers(field, brackets[i], brackets[i + 1]);
  }
  RemoveEmptyBrackets(brackets);
  MergeFromBottom(field, brackets);
  Number(brackets);
  return brackets;
}

}  // namespace tarvendo
