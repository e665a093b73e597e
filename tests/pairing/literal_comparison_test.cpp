// The quick search against the literal one, on seeded random cases. TARVENDO_PAIRING_CASES sets the
// number of random chains for a long run by hand, TARVENDO_PAIRING_SEED the first seed.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include "pairing/bracket_creation.h"
#include "pairing/bracket_list.h"
#include "pairing/bracket_pairing.h"
#include "pairing/chain_search.h"
#include "pairing/literal_search.h"
#include "pairing/random_chains.h"

namespace tarvendo {
namespace {

constexpr std::int64_t kBudget = 400'000;

std::int64_t FromEnvironment(const char* name, std::int64_t otherwise) {
  const char* text = std::getenv(name);
  return text == nullptr ? otherwise : std::atoll(text);
}

std::string Describe(const BracketEntry& entry) {
  std::ostringstream text;
  text << ' ' << entry.number << '-' << entry.partner << '/' << entry.colour_state;
  if (entry.absent) text << 'a';
  return text.str();
}

std::string Describe(const literal::Entry& entry) {
  BracketEntry same;
  same.number = entry.number;
  same.partner = entry.partner;
  same.absent = entry.absent;
  same.colour_state = entry.colour_state;
  return Describe(same);
}

template <typename Entries>
std::string DescribeEntries(int number, const Entries& entries) {
  std::ostringstream text;
  text << number << ':';
  for (const auto& entry : entries)
    text << Describe(entry);
  text << '\n';
  return text.str();
}

std::string Describe(const std::vector<Bracket>& chain) {
  std::string text;
  for (const Bracket& bracket : chain)
    text += DescribeEntries(bracket.number, bracket.Entries());
  return text;
}

std::string Describe(const literal::BracketList& list) {
  std::string text;
  for (const literal::Bracket* bracket : list.Chain()) {
    text += DescribeEntries(bracket->number, bracket->entries);
  }
  return text;
}

std::string Describe(const std::vector<std::pair<int, int>>& games) {
  std::ostringstream text;
  for (const auto& [white, black] : games)
    text << white << '-' << black << ' ';
  return text.str();
}

/// Both searches side by side, and how many comparisons there were.
class Comparison {
 public:
  /// Makes brackets both ways; false when there are none.
  bool Create(const PairingField& field, literal::BracketList& list, int width, int mode) {
    const bool made = list.CreateBrackets(width, mode);
    chain_ = MakeBrackets(field, BracketWidth{width}, static_cast<BracketMode>(mode));
    EXPECT_EQ(made, !chain_.empty());
    EXPECT_EQ(Describe(list), Describe(chain_));
    return made;
  }

  /// The same brackets both ways, made by hand.
  void Create(const PairingField& field, literal::BracketList& list,
              const std::vector<std::vector<int>>& split) {
    chain_.clear();
    for (const std::vector<int>& numbers : split) {
      list.AppendBracket(numbers);
      chain_.emplace_back(field.Size());
      chain_.back().number = static_cast<int>(chain_.size());
      for (const int number : numbers)
        chain_.back().Add(number, field.Get(number).colour_state);
    }
  }

  /// Pairs the chain both ways. True when it was paired; `games` then are its games.
  bool PairAll(const PairingField& field, literal::BracketList& list,
               std::vector<std::pair<int, int>>& games) {
    ++cases_;
    int code = list.PairAll();
    if (list.GaveUp()) {
      code = list.PairAllWithoutRepetitions();
      ++without_repetitions_;
    }
    const PairingCode quick = PairBracketChain(field, chain_, clock_);
    EXPECT_NE(quick, PairingCode::kTimeOut);
    if (list.GaveUp()) {
      ++dropped_;
    } else {
      EXPECT_EQ(code == 0, quick == PairingCode::kPaired);
      EXPECT_EQ(Describe(list), Describe(chain_));
    }
    if (quick != PairingCode::kPaired) return false;
    ++paired_;
    games = TakeGames(list);
    return true;
  }

  void PairSingle(const PairingField& field, literal::BracketList& list, int number) {
    const bool done = list.PairSingle(number);
    Bracket& bracket = chain_[static_cast<std::size_t>(number - 1)];
    const bool quick = PairSingleBracket(field, bracket, clock_);
    if (list.GaveUp()) return;
    EXPECT_EQ(done, quick);
    EXPECT_EQ(Describe(list), Describe(chain_));
  }

  int Brackets() const { return static_cast<int>(chain_.size()); }
  std::int64_t Cases() const { return cases_; }
  std::int64_t Paired() const { return paired_; }
  std::int64_t Dropped() const { return dropped_; }

  void Report() const {
    std::printf("%lld cases, %lld paired, %lld dropped, %lld without repetitions\n",
                static_cast<long long>(cases_), static_cast<long long>(paired_),
                static_cast<long long>(dropped_), static_cast<long long>(without_repetitions_));
  }

 private:
  std::vector<std::pair<int, int>> TakeGames(literal::BracketList& list) {
    bool literal_toggle = paired_ % 2 == 0;
    ColourToggle toggle;
    if (literal_toggle) toggle.FirstGetsWhite();
    std::vector<std::pair<int, int>> games;
    for (Bracket& bracket : chain_) {
      for (const ColouredPair& pair : TakePairs(bracket, toggle)) {
        games.emplace_back(pair.white, pair.black);
      }
    }
    if (list.GaveUp()) return games;
    EXPECT_EQ(Describe(list.TakeGames(literal_toggle)), Describe(games));
    return games;
  }

  std::vector<Bracket> chain_;
  PairingClock clock_{[] { return std::int64_t{0}; }};
  std::int64_t cases_ = 0;
  std::int64_t paired_ = 0;
  std::int64_t dropped_ = 0;
  std::int64_t without_repetitions_ = 0;
};

void CompareRandomChain(Comparison& comparison, std::uint64_t seed) {
  SCOPED_TRACE("seed " + std::to_string(seed));
  Dice dice(seed);
  const RandomChain random = MakeRandomChain(dice);
  const PairingField& field = random.field;
  literal::BracketList list(field, kBudget);
  if (!random.by_hand.empty()) {
    comparison.Create(field, list, random.by_hand);
  } else if (!comparison.Create(field, list, random.width, random.mode)) {
    return;
  }
  std::vector<std::pair<int, int>> games;
  if (!comparison.PairAll(field, list, games) && !list.GaveUp()) {
    comparison.PairSingle(field, list, dice.Between(1, comparison.Brackets()));
  }
}

TEST(LiteralComparison, RandomChainsArePairedAsByTheLiteralSearch) {
  Comparison comparison;
  const std::int64_t seed = FromEnvironment("TARVENDO_PAIRING_SEED", 1);
  const std::int64_t cases = FromEnvironment("TARVENDO_PAIRING_CASES", 20'000);
  for (std::int64_t i = 0; i < cases && !HasFailure(); ++i) {
    CompareRandomChain(comparison, static_cast<std::uint64_t>(seed + i));
  }
  comparison.Report();
  EXPECT_LE(comparison.Dropped() * 50, comparison.Cases());
}

/// One round in the order of the driver: down and up with wider and wider brackets, then one big
/// one.
bool PairRound(Comparison& comparison, RandomTourney& tourney) {
  const PairingField field = tourney.Field();
  std::vector<std::pair<int, int>> games;
  for (int width = 0; width < 2 * tourney.Round(); width += 2) {
    for (const int mode : {2, 1}) {
      literal::BracketList list(field, kBudget);
      EXPECT_TRUE(comparison.Create(field, list, width, mode));
      if (comparison.PairAll(field, list, games)) {
        tourney.Play(games);
        return true;
      }
    }
  }
  return false;
}

void CompareTourney(Comparison& comparison, std::uint64_t seed) {
  SCOPED_TRACE("seed " + std::to_string(seed));
  Dice dice(seed);
  const int players = 2 * dice.Between(2, 8);
  const int rounds = dice.Between(2, players - 1);
  RandomTourney tourney(dice, players, rounds, dice.Percent(85) ? 1 : 2);
  while (!tourney.IsOver() && PairRound(comparison, tourney))
    continue;
}

TEST(LiteralComparison, RandomTourneysArePairedAsByTheLiteralSearch) {
  Comparison comparison;
  const std::int64_t seed = FromEnvironment("TARVENDO_PAIRING_SEED", 1);
  const std::int64_t tourneys = FromEnvironment("TARVENDO_PAIRING_CASES", 20'000) / 20;
  for (std::int64_t i = 0; i < tourneys && !HasFailure(); ++i) {
    CompareTourney(comparison, static_cast<std::uint64_t>(seed + i));
  }
  comparison.Report();
  EXPECT_LE(comparison.Dropped() * 50, comparison.Cases());
}

}  // namespace
}  // namespace tarvendo
