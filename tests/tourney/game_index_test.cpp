#include "tourney/game_index.h"

#include <algorithm>
#include <random>
#include <vector>

#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

/// Games found by looking through the whole list.
class LookedThrough {
 public:
  explicit LookedThrough(const std::vector<Game>& games) : games_(games) {}

  const Game* Find(int number) const {
    return Lowest([&](const Game& game) { return game.number == number; },
                  [](const Game&) { return 0; });
  }
  const Game* ToSpool() const {
    return Lowest([](const Game& game) { return game.status == kNothingDone; },
                  [](const Game& game) { return game.round; });
  }
  const Game* Spooled() const {
    return Lowest([](const Game& game) { return game.status == kSpooled && game.number % 3 != 0; },
                  [](const Game& game) { return static_cast<unsigned>(game.spool_index); });
  }

 private:
  template <typename Is, typename Rank>
  const Game* Lowest(const Is& is, const Rank& rank) const {
    const Game* lowest = nullptr;
    for (const Game& game : games_) {
      if (is(game) && (lowest == nullptr || rank(game) < rank(*lowest))) lowest = &game;
    }
    return lowest;
  }

  const std::vector<Game>& games_;
};

class GameIndexTest : public TourneyTest {
 protected:
  GameIndexTest() {
    Enter({"Alpha", "Beta"});
    for (int round = 1; round <= 30; ++round)
      Add(1, 2, round % 7);
  }

  void ExpectTheSame() {
    const LookedThrough list(tourney.Games());
    EXPECT_EQ(tourney.FirstGameToSpool(), list.ToSpool());
    EXPECT_EQ(Spooled(tourney), list.Spooled());
    for (int number = -1; number <= 34; ++number)
      EXPECT_EQ(tourney.FindGame(number), list.Find(number)) << number;
  }

  static const Game* Spooled(const Tourney& of) {
    return of.FirstSpooledGame([](const Game& game) { return game.number % 3 != 0; });
  }

  int Some(int least, int most) { return std::uniform_int_distribution(least, most)(dice_); }

  std::mt19937 dice_{7};
};

TEST_F(GameIndexTest, FindsWhatALookThroughTheListFindsWhateverChanges) {
  for (int step = 0; step < 3000 && !HasFailure(); ++step) {
    const auto place =
        static_cast<std::size_t>(Some(0, static_cast<int>(tourney.Games().size()) - 1));
    {
      const auto change = tourney.Change(tourney.Games()[place]);
      change->status =
          std::vector{kNothingDone, kSpooled, kReady}[static_cast<std::size_t>(Some(0, 2))];
      change->spool_index = Some(-3, 20);
      if (Some(1, 5) == 1) change->round = Some(-2, 9);
    }
    if (Some(1, 3) > 1) continue;
    ExpectTheSame();
  }
}

TEST_F(GameIndexTest, FindsTheFirstOfSeveralWithOneNumberAndNumbersInAnyOrder) {
  ExpectTheSame();
  tourney.Change(tourney.Games()[9])->number = 3;
  ExpectTheSame();
  tourney.Change(tourney.Games()[0])->number = 3;
  ExpectTheSame();
  std::reverse(tourney.ChangeGames().begin(), tourney.ChangeGames().end());
  ExpectTheSame();
}

TEST_F(GameIndexTest, FollowsGamesThatAreAddedTakenOutAndReset) {
  ExpectTheSame();
  Add(1, 2, 0);
  ExpectTheSame();
  tourney.EraseGames({0, 7, 30});
  ExpectTheSame();
  tourney.EraseAllGames();
  ExpectTheSame();
  Add(2, 1, 1);
  ExpectTheSame();
  tourney.Reset();
  ExpectTheSame();
}

TEST_F(GameIndexTest, OfACopyTellsTheGamesOfTheCopy) {
  tourney.Change(tourney.Games()[4])->status = kSpooled;
  ExpectTheSame();
  Tourney copy = tourney;
  EXPECT_EQ(Spooled(copy), &copy.Games()[4]);
  EXPECT_EQ(copy.FindGame(5), &copy.Games()[4]);
  copy.Change(copy.Games()[4])->status = kReady;
  EXPECT_EQ(Spooled(copy), nullptr);
  ExpectTheSame();
  copy.EraseAllGames();
  tourney = copy;
  ExpectTheSame();
}

TEST_F(GameIndexTest, FollowsALoad) {
  tourney.Change(tourney.Games()[0])->status = kReady;
  ASSERT_TRUE(file.Save(tourney, "/home/t.ini"));
  tourney.EraseAllGames();
  ExpectTheSame();
  ASSERT_TRUE(file.Load(tourney, "/home/t.ini"));
  ExpectTheSame();
  EXPECT_NE(tourney.FirstGameToSpool(), nullptr);
}

}  // namespace
}  // namespace tarvendo
