#include "tourney/round_robin.h"

#include <cstdlib>
#include <map>
#include <set>

#include "base/text.h"
#include "tourney/rounds.h"
#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

/// "white-black in round" for every pairing.
std::vector<std::string> InWords(const std::vector<Pairing>& schedule) {
  std::vector<std::string> words;
  for (const Pairing& pairing : schedule) {
    words.push_back(Format("%d-%d in %d", pairing.first, pairing.second, pairing.round));
  }
  return words;
}

using Words = std::vector<std::string>;

TEST(RoundRobinSchedule, NobodyAndOneAloneHaveNoGames) {
  EXPECT_TRUE(RoundRobinSchedule(0).empty());
  EXPECT_TRUE(RoundRobinSchedule(1).empty());
  EXPECT_TRUE(RoundRobinSchedule(-1).empty());
}

TEST(RoundRobinSchedule, TwoMeetOnce) {
  EXPECT_EQ(InWords(RoundRobinSchedule(2)), Words{"1-2 in 1"});
}

TEST(RoundRobinSchedule, FourMeetInThreeRounds) {
  EXPECT_EQ(InWords(RoundRobinSchedule(4)),
            (Words{"1-2 in 2", "3-1 in 3", "2-3 in 1", "1-4 in 1", "2-4 in 3", "4-3 in 2"}));
}

TEST(RoundRobinSchedule, ThreeMeetAsFourWithoutTheLast) {
  EXPECT_EQ(InWords(RoundRobinSchedule(3)), (Words{"1-2 in 2", "3-1 in 3", "2-3 in 1"}));
}

TEST(RoundRobinSchedule, TheLastOfEightMeetsTheOthersInTheFreeRounds) {
  std::vector<int> rounds;
  for (const Pairing& pairing : RoundRobinSchedule(8)) {
    if (pairing.first == 8 || pairing.second == 8) rounds.push_back(pairing.round);
  }
  EXPECT_EQ(rounds, (std::vector<int>{1, 3, 5, 7, 2, 4, 6}));
}

class EveryField : public testing::TestWithParam<int> {
 protected:
  int participants = GetParam();
  int rounds = RoundRobinRounds(participants);
  std::vector<Pairing> schedule = RoundRobinSchedule(participants);
};

TEST_P(EveryField, EveryPairMeetsOnce) {
  std::set<std::pair<int, int>> pairs;
  for (const Pairing& pairing : schedule) {
    EXPECT_NE(pairing.first, pairing.second);
    const auto pair = std::minmax(pairing.first, pairing.second);
    EXPECT_GE(pair.first, 1);
    EXPECT_LE(pair.second, participants);
    EXPECT_TRUE(pairs.insert(pair).second);
  }
  EXPECT_EQ(pairs.size(), static_cast<std::size_t>(participants * (participants - 1) / 2));
}

TEST_P(EveryField, NobodyPlaysTwiceInARoundAndInOddFieldsEverybodyRestsOnce) {
  std::map<int, std::set<int>> rounds_of;
  for (const Pairing& pairing : schedule) {
    EXPECT_GE(pairing.round, 1);
    EXPECT_LE(pairing.round, rounds);
    EXPECT_TRUE(rounds_of[pairing.first].insert(pairing.round).second);
    EXPECT_TRUE(rounds_of[pairing.second].insert(pairing.round).second);
  }
  const std::size_t expected = static_cast<std::size_t>(participants) - 1;
  for (int i = 1; i <= participants; ++i)
    EXPECT_EQ(rounds_of[i].size(), expected) << i;
  EXPECT_EQ(rounds, participants % 2 == 0 ? participants - 1 : participants);
}

TEST_P(EveryField, ColoursAreBalancedWithinOne) {
  std::map<int, int> more_white;
  for (const Pairing& pairing : schedule) {
    ++more_white[pairing.first];
    --more_white[pairing.second];
  }
  for (int i = 1; i <= participants; ++i)
    EXPECT_LE(std::abs(more_white[i]), 1) << i;
}

INSTANTIATE_TEST_SUITE_P(From2To64, EveryField, testing::Range(2, 65));

class CreateRRGamesTest : public TourneyTest {};

TEST_F(CreateRRGamesTest, MoreGamesThanATourneyCanHoldAreNotMade) {
  const std::vector<Game> before = tourney.Games();
  tourney.ChangeParticipants().resize(2001);
  machine.TakeOutput();
  EXPECT_FALSE(CreateRRGames(tourney, machine.files));
  EXPECT_EQ(machine.TakeOutput(),
            "2001 players have more games to play than the 2000000 that a tourney can hold.\n");
  EXPECT_EQ(tourney.Games().size(), before.size());
}

TEST_F(CreateRRGamesTest, GamesAreNumberedInTheOrderOfThePairs) {
  Enter({"Alpha", "Beta", "100%s", "A name of more than twelve"});
  CreateRRGames(tourney, machine.files);
  EXPECT_EQ(Output(),
            "Creating Round Robin games..."
            "Adding game  1 Alpha        -  2 Beta        \n"
            "Adding game  3 100%s        -  1 Alpha       \n"
            "Adding game  2 Beta         -  3 100%s       \n"
            "Adding game  1 Alpha        -  4 A name of more than twelve\n"
            "Adding game  2 Beta         -  4 A name of more than twelve\n"
            "Adding game  4 A name of more than twelve -  3 100%s       \n"
            "ready.\n");
  EXPECT_EQ(GameNumbers(), " 1 2 3 4 5 6");
  EXPECT_EQ(tourney.Settings().rounds, 3);
  EXPECT_EQ(tourney.Games()[2].round, 1);
  EXPECT_EQ(tourney.Games()[2].sub_round, 1);
  EXPECT_EQ(History(4), (std::vector<int>{3, 4, 5}));
}

TEST_F(CreateRRGamesTest, FiveParticipantsPlayTenGamesInFiveRounds) {
  EnterMany(5);
  CreateRRGames(tourney, machine.files);
  EXPECT_EQ(tourney.Games().size(), 10U);
  EXPECT_EQ(tourney.Settings().rounds, 5);
  for (int i = 1; i <= 5; ++i)
    EXPECT_EQ(History(i).size(), 4U);
}

TEST_F(CreateRRGamesTest, EvenSubRoundsHaveTheColoursReversed) {
  EnterMany(4);
  tourney.ChangeSettings()->sub_rounds = 2;
  CreateRRGames(tourney, machine.files);
  ASSERT_EQ(tourney.Games().size(), 12U);
  for (std::size_t i = 0; i < 12; i += 2) {
    const Game& first = tourney.Games()[i];
    const Game& second = tourney.Games()[i + 1];
    EXPECT_EQ(first.white, second.black);
    EXPECT_EQ(first.black, second.white);
    EXPECT_EQ(first.round, second.round);
    EXPECT_EQ(first.sub_round, 1);
    EXPECT_EQ(second.sub_round, 2);
  }
}

TEST_F(CreateRRGamesTest, NoSubRoundsCountAsOne) {
  EnterMany(2);
  for (const int sub_rounds : {0, 1, -1}) {
    tourney.ChangeSettings()->sub_rounds = sub_rounds;
    CreateRRGames(tourney, machine.files);
    ASSERT_EQ(tourney.Games().size(), 1U);
    EXPECT_EQ(tourney.Games()[0].sub_round, 1);
  }
}

TEST_F(CreateRRGamesTest, NobodyAndOneAloneLoseTheOldGames) {
  Enter({"A"});
  tourney.AddGame(1, 1, 1, 1);
  tourney.ChangeGames()[0].bat_file = "g1.BAT";
  machine.files.Put("g1.BAT", "");
  Output();
  CreateRRGames(tourney, machine.files);
  EXPECT_EQ(Output(), "Creating Round Robin games...ready.\n");
  EXPECT_TRUE(tourney.Games().empty());
  EXPECT_FALSE(machine.files.Has("g1.BAT"));
  EXPECT_EQ(tourney.Settings().rounds, 1);
  EXPECT_EQ(tourney.State().games_state, 0);
  tourney.ChangeParticipants().clear();
  CreateRRGames(tourney, machine.files);
  EXPECT_EQ(tourney.Settings().rounds, -1);
}

TEST_F(CreateRRGamesTest, ASecondCallDeletesTheFirstGamesAndNumbersOn) {
  EnterMany(4);
  CreateRRGames(tourney, machine.files);
  for (Game& game : tourney.ChangeGames()) {
    game.bat_file = Format("g%d.BAT", game.number);
    game.pgn_file = Format("g%d.PGN", game.number);
    machine.files.Put(game.bat_file, "");
    machine.files.Put(game.pgn_file, "");
  }
  CreateRRGames(tourney, machine.files);
  EXPECT_TRUE(machine.files.FileNames().empty());
  EXPECT_EQ(GameNumbers(), " 7 8 9 10 11 12");
  EXPECT_EQ(History(1), (std::vector<int>{0, 1, 3}));
  EXPECT_EQ(tourney.State().games_state, 1);
}

TEST_F(CreateRRGamesTest, TheTypeOfTheTourneyDoesNotMatter) {
  EnterMany(3);
  for (const int type : {kSwiss, kRoundRobin}) {
    tourney.ChangeSettings()->type = type;
    CreateRRGames(tourney, machine.files);
    EXPECT_EQ(tourney.Games().size(), 3U);
    EXPECT_EQ(tourney.Settings().type, type);
  }
}

}  // namespace
}  // namespace tarvendo
