#include "publish/elo.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace tarvendo {
namespace {

const double kUnit = 400 / std::log(10.0);
constexpr double kErrors = 1.959963984540054;

double Expected(double elo) {
  return 1 / (1 + std::pow(10.0, -elo / 400));
}

TEST(Elo, TwoPlayersStandWhereTheClosedFormulaPutsThem) {
  for (const auto& [score, games] : {std::pair{7.5, 10.0}, {0.5, 100.0}, {64.0, 100.0}}) {
    const EloTable elo(2, {{0, 1, score, games}});
    const double share = score / games;
    const double difference = 400 * std::log10(share / (1 - share));
    EXPECT_NEAR(elo.Of(0).elo, difference / 2, 1e-7);
    EXPECT_NEAR(elo.Of(1).elo, -difference / 2, 1e-7);
    const double error = kUnit / std::sqrt(games * share * (1 - share));
    ASSERT_TRUE(elo.Of(0).margin);
    EXPECT_NEAR(*elo.Of(0).margin, kErrors * error / 2, 1e-7);
    EXPECT_NEAR(*elo.Of(1).margin, kErrors * error / 2, 1e-7);
    const double chance = 0.5 * std::erfc(-difference / error / std::sqrt(2.0));
    EXPECT_NEAR(*elo.ChanceOfSuperiority(0, 1), chance, 1e-9);
    EXPECT_NEAR(*elo.ChanceOfSuperiority(1, 0), 1 - chance, 1e-9);
  }
}

// Computed with tests/publish/elo_check.py, which has nothing in common with the program.
TEST(Elo, ATableAgreesWithOneComputedByOtherMeans) {
  const std::vector<PairScore> pairs = {{0, 1, 3.5, 6}, {0, 2, 4, 5},   {0, 3, 4.5, 5},
                                        {1, 2, 2, 4},   {1, 3, 3.5, 5}, {2, 3, 3, 8}};
  const EloTable elo(4, pairs);
  const double expected[4] = {150.67, 30.67, -100.68, -80.66};
  const double margins[4] = {150.35, 140.42, 137.92, 131.54};
  double sum = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_NEAR(elo.Of(i).elo, expected[i], 0.01) << i;
    EXPECT_NEAR(*elo.Of(i).margin, margins[i], 0.01) << i;
    sum += elo.Of(i).elo;
  }
  EXPECT_NEAR(sum, 0, 1e-7);
}

TEST(Elo, WhoeverWonEverythingGetsALowerBoundAndNoNumber) {
  const EloTable elo(3, {{0, 1, 4, 4}, {0, 2, 4, 4}, {1, 2, 2, 4}});
  EXPECT_EQ(elo.Of(0).kind, EloKind::kAtLeast);
  EXPECT_FALSE(elo.Of(0).margin);
  EXPECT_EQ(elo.Of(0).group, 1);
  // Eight wins against players of 0 have a chance of 5 % there.
  EXPECT_NEAR(std::pow(Expected(elo.Of(0).elo), 8), 0.05, 1e-9);
  EXPECT_EQ(elo.Of(1).kind, EloKind::kRated);
  EXPECT_NEAR(elo.Of(1).elo, 0, 1e-7);
  EXPECT_FALSE(elo.ChanceOfSuperiority(0, 1));
}

TEST(Elo, WhoeverLostEverythingGetsAnUpperBound) {
  const EloTable elo(3, {{0, 1, 2, 4}, {0, 2, 4, 4}, {1, 2, 4, 4}});
  EXPECT_EQ(elo.Of(2).kind, EloKind::kAtMost);
  EXPECT_NEAR(std::pow(Expected(-elo.Of(2).elo), 8), 0.05, 1e-9);
}

TEST(Elo, InAMatchWithoutAnyPointForOneTheBoundsOfBothStandAroundZero) {
  const EloTable elo(2, {{0, 1, 5, 5}});
  EXPECT_EQ(elo.Of(0).kind, EloKind::kAtLeast);
  EXPECT_EQ(elo.Of(1).kind, EloKind::kAtMost);
  EXPECT_NEAR(std::pow(Expected(2 * elo.Of(0).elo), 5), 0.05, 1e-9);
  EXPECT_NEAR(elo.Of(0).elo, -elo.Of(1).elo, 1e-6);
}

TEST(Elo, WhoWonAgainstSomeAndLostToTheOthersWithoutABridgeHasNothing) {
  const EloTable elo(3, {{0, 1, 1, 1}, {1, 2, 1, 1}});
  EXPECT_EQ(elo.Of(0).kind, EloKind::kAtLeast);
  EXPECT_EQ(elo.Of(1).kind, EloKind::kNone);
  EXPECT_EQ(elo.Of(2).kind, EloKind::kAtMost);
}

TEST(Elo, PartsOfTheFieldThatNeverMetAreToldApart) {
  const EloTable elo(6, {{0, 1, 3, 4}, {1, 2, 2, 4}, {3, 4, 1, 2}});
  EXPECT_EQ(elo.Groups(), 2);
  EXPECT_EQ(elo.Of(0).group, 1);
  EXPECT_EQ(elo.Of(2).group, 1);
  EXPECT_EQ(elo.Of(3).group, 2);
  EXPECT_NEAR(elo.Of(3).elo + elo.Of(4).elo, 0, 1e-7);
  EXPECT_FALSE(elo.ChanceOfSuperiority(0, 3));
  EXPECT_TRUE(elo.ChanceOfSuperiority(0, 2));
  EXPECT_EQ(elo.Of(5).kind, EloKind::kNone) << "no games";
  EXPECT_EQ(elo.Of(5).group, 0);
}

TEST(Elo, TwoGroupsOfWhichOneWonEveryGameAreToldApart) {
  const EloTable elo(4, {{0, 1, 1, 2}, {2, 3, 1, 2}, {0, 2, 2, 2}, {1, 3, 2, 2}});
  EXPECT_EQ(elo.Groups(), 2);
  EXPECT_NE(elo.Of(0).group, elo.Of(2).group);
}

TEST(Elo, NobodyAndNoGamesHaveNoRatings) {
  EXPECT_EQ(EloTable(0, {}).Groups(), 0);
  EXPECT_EQ(EloTable(1, {}).Of(0).kind, EloKind::kNone);
}

TEST(Elo, ALongChainOfPlayersIsRatedToo) {
  constexpr std::size_t kPlayers = 600;
  std::vector<PairScore> pairs;
  for (std::size_t i = 0; i + 1 < kPlayers; ++i)
    pairs.push_back({i, i + 1, i % 3 == 0 ? 3.0 : 2.0, 4});
  const EloTable elo(kPlayers, pairs);
  for (std::size_t i = 0; i + 1 < kPlayers; ++i) {
    const double step = i % 3 == 0 ? 400 * std::log10(3.0) : 0;
    ASSERT_NEAR(elo.Of(i).elo - elo.Of(i + 1).elo, step, 1e-4) << i;
  }
  // Between the ends the errors of all steps add up.
  double variance = 0;
  for (std::size_t i = 0; i + 1 < kPlayers; ++i)
    variance += kUnit * kUnit / (i % 3 == 0 ? 0.75 : 1);
  const double errors = (elo.Of(0).elo - elo.Of(kPlayers - 1).elo) / std::sqrt(variance);
  EXPECT_NEAR(*elo.ChanceOfSuperiority(kPlayers - 1, 0), 0.5 * std::erfc(errors / std::sqrt(2.0)),
              1e-9);
}

TEST(Elo, AVeryOneSidedFieldIsRatedToo) {
  const EloTable elo(3, {{0, 1, 9999.5, 10000}, {1, 2, 9999.5, 10000}});
  EXPECT_NEAR(elo.Of(0).elo - elo.Of(1).elo, 400 * std::log10(9999.5 / 0.5), 1e-4);
  EXPECT_NEAR(elo.Of(1).elo, 0, 1e-4);
}

/// A field that plays, with a share of draws between equals; stronger differences draw less.
class Simulation {
 public:
  Simulation(unsigned seed, double draws) : random_(seed), draws_(draws) {
    std::normal_distribution<double> strength(0, 120);
    double sum = 0;
    for (double& elo : truth_)
      sum += elo = strength(random_);
    for (double& elo : truth_)
      elo -= sum / static_cast<double>(kPlayers);
  }

  /// How many intervals hold the truth, and how many there are.
  void Play(int& held, int& intervals) {
    std::vector<PairScore> pairs;
    for (std::size_t i = 0; i < kPlayers; ++i) {
      for (std::size_t j = i + 1; j < kPlayers; ++j)
        pairs.push_back({i, j, ScoreOf(truth_[i] - truth_[j]), kGames});
    }
    const EloTable elo(kPlayers, pairs);
    for (std::size_t i = 0; i < kPlayers; ++i) {
      if (elo.Of(i).kind != EloKind::kRated) continue;
      ++intervals;
      if (std::abs(elo.Of(i).elo - truth_[i]) <= *elo.Of(i).margin) ++held;
    }
  }

 private:
  static constexpr std::size_t kPlayers = 8;
  static constexpr int kGames = 10;

  double ScoreOf(double difference) {
    const double expected = Expected(difference);
    const double draw = draws_ * 4 * expected * (1 - expected);
    std::uniform_real_distribution<double> dice(0, 1);
    double score = 0;
    for (int game = 0; game < kGames; ++game) {
      const double thrown = dice(random_);
      const double win = expected - draw / 2;
      score += thrown < win ? 1 : thrown < win + draw ? 0.5 : 0;
    }
    return score;
  }

  std::mt19937 random_;
  double draws_;
  double truth_[kPlayers] = {};
};

double ShareOfIntervalsThatHold(double draws) {
  int held = 0;
  int intervals = 0;
  for (unsigned seed = 1; seed <= 1000; ++seed)
    Simulation(seed, draws).Play(held, intervals);
  EXPECT_GT(intervals, 7900);
  return static_cast<double>(held) / intervals;
}

TEST(Elo, TheIntervalsOfAThousandTourneysHoldTheTruthAsOftenAsTheySay) {
  const double share = ShareOfIntervalsThatHold(0);
  EXPECT_GE(share, 0.93);
  EXPECT_LE(share, 0.97);
}

TEST(Elo, WithDrawsTheIntervalsHoldTheTruthAtLeastAsOften) {
  EXPECT_GE(ShareOfIntervalsThatHold(0.4), 0.93);
}

}  // namespace
}  // namespace tarvendo
