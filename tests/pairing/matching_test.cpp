#include "pairing/matching.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "pairing/random_chains.h"

namespace tarvendo {
namespace {

PlayerSet Everybody(std::size_t seats) {
  PlayerSet set(seats);
  for (Seat seat = 0; seat < seats; ++seat)
    set.Insert(seat);
  return set;
}

void Allow(PairGraph& graph, Seat seat, Seat other) {
  graph.PartnersOf(seat).Insert(other);
  graph.PartnersOf(other).Insert(seat);
}

PairGraph RandomGraph(Dice& dice, std::size_t seats) {
  PairGraph graph(seats);
  const int density = dice.Between(5, 60);
  for (Seat seat = 0; seat < seats; ++seat) {
    for (Seat other = seat + 1; other < seats; ++other) {
      if (dice.Percent(density)) Allow(graph, seat, other);
    }
  }
  return graph;
}

/// The fewest players left single, by trying all pairs.
std::size_t FewestSingles(const MatchProblem& problem, PlayerSet left) {
  const Seat first = FirstCommonSeat(left);
  if (first == kNoSeat) return 0;
  left.Erase(first);
  std::size_t fewest = 1 + FewestSingles(problem, left);
  left.ForEach([&](Seat other) {
    if (!problem.MayPair(first, other)) return;
    PlayerSet rest = left;
    rest.Erase(other);
    fewest = std::min(fewest, FewestSingles(problem, rest));
  });
  return fewest;
}

void ExpectFits(const Matching& matching, const MatchProblem& problem, std::size_t singles) {
  std::size_t alone = 0;
  problem.Players().ForEach([&](Seat seat) {
    const Seat partner = matching.PartnerOf(seat);
    if (partner == kNoSeat) {
      ++alone;
    } else {
      EXPECT_EQ(matching.PartnerOf(partner), seat);
      EXPECT_TRUE(problem.MayPair(seat, partner));
    }
  });
  EXPECT_EQ(alone, singles);
}

TEST(Matching, ARingOfFiveWithATailIsPairedThroughTheBlossom) {
  PairGraph graph(6);
  for (Seat seat = 0; seat < 5; ++seat)
    Allow(graph, seat, (seat + 1) % 5);
  Allow(graph, 2, 5);
  const MatchProblem problem(graph, Everybody(6));
  Matching matching(6);
  matching.Join(0, 1);
  matching.Join(2, 3);
  EXPECT_TRUE(matching.MakePerfect(problem));
  EXPECT_EQ(matching.PartnerOf(5), 2U);
}

TEST(Matching, APathThatCannotBeFoundChangesNothing) {
  PairGraph graph(4);
  Allow(graph, 0, 1);
  Allow(graph, 0, 2);
  const MatchProblem problem(graph, Everybody(4));
  Matching matching(4);
  matching.Join(0, 1);
  EXPECT_FALSE(matching.Augment(problem, 2));
  EXPECT_EQ(matching.PartnerOf(0), 1U);
  EXPECT_EQ(matching.PartnerOf(2), kNoSeat);
}

TEST(Matching, RandomGraphsArePairedAsWellAsByTryingEverything) {
  for (std::uint64_t seed = 1; seed <= 2000; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    const auto seats = static_cast<std::size_t>(dice.Between(1, 11));
    const PairGraph graph = RandomGraph(dice, seats);
    const MatchProblem problem(graph, Everybody(seats));
    const std::size_t fewest = FewestSingles(problem, Everybody(seats));
    Matching matching(seats);
    EXPECT_EQ(matching.MakeLargest(problem), fewest);
    ExpectFits(matching, problem, fewest);
    EXPECT_EQ(matching.MakePerfect(problem), fewest == 0);
  }
}

/// Three groups, of which the first and the last do not reach each other.
MatchProblem ThreeGroups(Dice& dice, const PairGraph& graph) {
  std::vector<PlayerSet> members(3, PlayerSet(graph.SeatCount()));
  for (Seat seat = 0; seat < graph.SeatCount(); ++seat) {
    members[static_cast<std::size_t>(dice.Below(3))].Insert(seat);
  }
  MatchProblem problem(graph);
  for (const PlayerSet& group : members)
    problem.AddGroup(group);
  problem.Connect(0, 0);
  problem.Connect(0, 1);
  problem.Connect(1, 2);
  return problem;
}

TEST(Matching, IsCarriedOverToAProblemWithOtherGroups) {
  for (std::uint64_t seed = 1; seed <= 1000; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Dice dice(seed);
    const PairGraph graph = RandomGraph(dice, 10);
    Matching matching(10);
    matching.MakeLargest(MatchProblem(graph, Everybody(10)));
    MatchProblem problem = ThreeGroups(dice, graph);
    const Seat taken_out = static_cast<Seat>(dice.Below(10));
    problem.Erase(taken_out);
    const std::size_t fewest = FewestSingles(problem, problem.Players());
    EXPECT_EQ(matching.MakeLargest(problem), fewest);
    ExpectFits(matching, problem, fewest);
    EXPECT_EQ(matching.PartnerOf(taken_out), kNoSeat);
  }
}

}  // namespace
}  // namespace tarvendo
