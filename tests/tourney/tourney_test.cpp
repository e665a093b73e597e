#include "tourney/tourney.h"

#include <random>

#include "tourney/small_tourney.h"

namespace tarvendo {
namespace {

TEST_F(TourneyTest, ANewTourneyHasTheDefaultsOfAProgramJustStarted) {
  EXPECT_EQ(tourney.Settings().name, "My Own Winboard Tourney");
  EXPECT_EQ(tourney.Settings().type, kSwiss);
  EXPECT_EQ(tourney.Settings().rounds, 10);
  EXPECT_EQ(tourney.Settings().sub_rounds, 1);
  EXPECT_EQ(tourney.Settings().time_control.seconds, 60);
  EXPECT_EQ(tourney.Settings().time_control.inc, 0);
  EXPECT_EQ(tourney.Settings().time_control.mps, 0);
  EXPECT_EQ(tourney.Settings().ponder, 0);
  EXPECT_EQ(tourney.Settings().auto_run, 0);
  EXPECT_EQ(tourney.Settings().auto_save, 0);
  EXPECT_EQ(tourney.Settings().save_debug_files, kSaveNever);
  EXPECT_EQ(tourney.Settings().pgn_file, "default.pgn");
  EXPECT_EQ(tourney.Settings().winboard_path, "winboard.exe");
  EXPECT_EQ(tourney.Settings().hash_tables, "Hashtables, what are those?");
  EXPECT_EQ(tourney.Settings().tablebases, "I don't know. Are they related to Excel sheets?");
  EXPECT_EQ(tourney.State().round, 1);
  EXPECT_EQ(tourney.State().games_state, 1);
  EXPECT_EQ(tourney.State().last_game_number, 0);
  EXPECT_EQ(tourney.spool_counter, 0);
  EXPECT_EQ(tourney.name_width, 0);
  EXPECT_FALSE(tourney.Switch().IsRunning());
}

TEST_F(TourneyTest, ANewTourneyHasEmptyTextsAndLists) {
  for (const std::string* text :
       {&tourney.Settings().files_path, &tourney.Settings().report_path,
        &tourney.Settings().pics_dir, &tourney.Settings().white_options,
        &tourney.Settings().black_options, &tourney.Settings().computer}) {
    EXPECT_EQ(*text, "");
  }
  EXPECT_TRUE(tourney.Games().empty());
  EXPECT_TRUE(tourney.Participants().empty());
}

TEST_F(TourneyTest, ResetGivesTheDefaultsOfANewTourney) {
  const auto edit = tourney.ChangeSettings();
  *edit = TourneySettings{"n",   1,   5,     2,   {1, 2, 3}, 1,    1,   1,   0,  "f\\",
                          "r\\", "p", "d\\", "w", "wo",      "bo", "c", "h", "t"};
  tourney.ChangeState()->round = 4;
  tourney.ChangeState()->games_state = 3;
  Enter({"A", "B"});
  Add(1, 2);
  tourney.Reset();
  EXPECT_EQ(tourney.Settings().save_debug_files, kSaveAutomatically);
  EXPECT_EQ(tourney.Settings().time_control.seconds, 300);
  EXPECT_EQ(tourney.Settings().time_control.mps, 0);
  EXPECT_EQ(tourney.Settings().time_control.inc, 0);
  EXPECT_EQ(tourney.Settings().computer, "It's a PC.");
  EXPECT_EQ(tourney.Settings().name, "My Own Winboard Tourney");
  EXPECT_EQ(tourney.Settings().pgn_file, "default.pgn");
  EXPECT_EQ(tourney.Settings().hash_tables, "Hashtables, what are those?");
  EXPECT_EQ(tourney.Settings().tablebases, "I don't know. Are they related to Excel sheets?");
  for (const std::string* text :
       {&tourney.Settings().white_options, &tourney.Settings().black_options,
        &tourney.Settings().files_path, &tourney.Settings().report_path}) {
    EXPECT_EQ(*text, "");
  }
  for (const int number : {tourney.Settings().type, tourney.Settings().ponder,
                           tourney.Settings().auto_run, tourney.Settings().auto_save}) {
    EXPECT_EQ(number, 0);
  }
  EXPECT_EQ(tourney.Settings().rounds, 10);
  EXPECT_EQ(tourney.Settings().sub_rounds, 1);
  EXPECT_EQ(tourney.State().round, 1);
  EXPECT_EQ(tourney.State().games_state, 1);
  EXPECT_EQ(tourney.State().last_game_number, 0);
  EXPECT_TRUE(tourney.Games().empty());
  EXPECT_TRUE(tourney.Participants().empty());
}

TEST_F(TourneyTest, ResetKeepsWhatBelongsToTheMachine) {
  tourney.ChangeSettings()->winboard_path = "c:\\wb\\winboard.exe";
  tourney.ChangeSettings()->pics_dir = "pics/";
  tourney.spool_counter = 7;
  tourney.name_width = 12;
  tourney.ChangeSwitch()->Set({5, 6, 1});
  tourney.Reset();
  EXPECT_EQ(tourney.Settings().winboard_path, "c:\\wb\\winboard.exe");
  EXPECT_EQ(tourney.Settings().pics_dir, "pics/");
  EXPECT_EQ(tourney.spool_counter, 7);
  EXPECT_EQ(tourney.name_width, 12);
  EXPECT_TRUE(tourney.Switch().IsRunning());
  EXPECT_EQ(tourney.Switch().Get().start_time, 5);
}

TEST_F(TourneyTest, AddedGamesAreNumberedOnAndEnteredInTheHistories) {
  Enter({"Alpha", "100%s"});
  tourney.ChangeState()->last_game_number = 41;
  tourney.AddGame(1, 2, 3, 2);
  EXPECT_EQ(Output(), "Adding game  1 Alpha        -  2 100%s       \n");
  ASSERT_EQ(tourney.Games().size(), 1U);
  const Game& game = tourney.Games()[0];
  EXPECT_EQ(game.number, 42);
  EXPECT_EQ(tourney.State().last_game_number, 42);
  EXPECT_EQ(game.white_player, "Alpha");
  EXPECT_EQ(game.black_player, "100%s");
  EXPECT_EQ(game.round, 3);
  EXPECT_EQ(game.sub_round, 2);
  EXPECT_EQ(game.status, kNothingDone);
  EXPECT_EQ(game.result, kUnknown);
  EXPECT_EQ(History(1), std::vector<int>{0});
  EXPECT_EQ(History(2), std::vector<int>{0});
}

TEST_F(TourneyTest, AGameOfUnknownParticipantsHurtsNobody) {
  tourney.AddGame(5, -1, 1, 1);
  EXPECT_EQ(Output(), "Adding game  5 WhitePlayer  - -1 BlackPlayer \n");
}

TEST_F(TourneyTest, TheLargestGameNumberIsFollowedByTheSmallest) {
  tourney.ChangeState()->last_game_number = 2147483647;
  EXPECT_EQ(Add(0, 0).number, -2147483647 - 1);
}

TEST_F(TourneyTest, GamesAreFoundByTheirNumbersAlsoAcrossGaps) {
  for (int i = 0; i < 6; ++i)
    Add(0, 0);
  tourney.EraseGames({0, 3});
  EXPECT_EQ(GameNumbers(), " 2 3 5 6");
  for (const int number : {2, 3, 5, 6}) {
    ASSERT_NE(tourney.FindGame(number), nullptr);
    EXPECT_EQ(tourney.FindGame(number)->number, number);
  }
  for (const int number : {0, 1, 4, 7, -1})
    EXPECT_EQ(tourney.FindGame(number), nullptr);
}

TEST_F(TourneyTest, GamesOutOfOrderAreFoundToo) {
  for (int i = 0; i < 5; ++i)
    Add(0, 0);
  const std::vector<int> numbers = {9, 2, 7, 1, 4};
  for (std::size_t i = 0; i < 5; ++i)
    tourney.ChangeGames()[i].number = numbers[i];
  for (const int number : numbers) {
    ASSERT_NE(tourney.FindGame(number), nullptr) << number;
    EXPECT_EQ(tourney.FindGame(number)->number, number);
  }
  EXPECT_EQ(tourney.FindGame(3), nullptr);
}

TEST_F(TourneyTest, OfTwoGamesWithOneNumberTheFirstIsFound) {
  for (int i = 0; i < 3; ++i)
    Add(0, 0);
  for (Game& game : tourney.ChangeGames())
    game.number = 2;
  EXPECT_EQ(tourney.FindGame(2), &tourney.Games()[0]);
}

TEST_F(TourneyTest, OnlyPlacesOfTheListHaveAGame) {
  Add(0, 0);
  EXPECT_EQ(tourney.GameAt(0), &tourney.Games()[0]);
  for (const int index : {1, -1, 2147483647, -2147483647}) {
    EXPECT_EQ(tourney.GameAt(index), nullptr);
  }
}

TEST_F(TourneyTest, ParticipantsAreFoundByNumber) {
  Enter({"A", "B"});
  EXPECT_EQ(tourney.FindParticipant(2), &tourney.Participants()[1]);
  for (const int number : {0, 3, -1})
    EXPECT_EQ(tourney.FindParticipant(number), nullptr);
}

TEST_F(TourneyTest, TheGamesStateTellsHowFarTheGamesAre) {
  tourney.RecomputeGamesState();
  EXPECT_EQ(tourney.State().games_state, 0);
  Add(0, 0);
  EXPECT_EQ(tourney.State().games_state, 1);
  tourney.ChangeGames()[0].status = kSpooled;
  tourney.RecomputeGamesState();
  EXPECT_EQ(tourney.State().games_state, 1);
  AddReady(0, 0, kDraw);
  tourney.ChangeGames()[0].status = kReady;
  for (const int result : {kUnknown, kUnfinished}) {
    tourney.ChangeGames()[0].result = result;
    tourney.RecomputeGamesState();
    EXPECT_EQ(tourney.State().games_state, 2) << result;
  }
  tourney.ChangeGames()[0].result = kBothLose;
  tourney.RecomputeGamesState();
  EXPECT_EQ(tourney.State().games_state, 3);
}

TEST_F(TourneyTest, RemovingGamesRecomputesTheirState) {
  AddReady(0, 0, kDraw);
  Add(0, 0);
  tourney.EraseGames({1});
  EXPECT_EQ(tourney.State().games_state, 3);
  tourney.EraseAllGames();
  EXPECT_EQ(tourney.State().games_state, 0);
}

TEST_F(TourneyTest, ErasingAllGamesEmptiesTheHistories) {
  Enter({"A", "B"});
  Add(1, 2);
  tourney.EraseAllGames();
  EXPECT_TRUE(History(1).empty());
  EXPECT_EQ(tourney.State().last_game_number, 1);
}

TEST_F(TourneyTest, ErasingDropsPlacesThatNoGameHas) {
  Enter({"A", "B"});
  Add(1, 2);
  Add(1, 2);
  tourney.Change(*tourney.FindParticipant(1))->games = {-5, 0, 99, 1, 2147483647};
  tourney.EraseGames({0});
  EXPECT_EQ(History(1), std::vector<int>{0});
}

/// Takes one index out of a history, as the list takes out one game.
void RemoveGameIndex(std::vector<int>& history, int index) {
  std::erase(history, index);
  for (int& other : history) {
    if (other > index) --other;
  }
}

/// The slow way: one game after the other, from the last to the first.
void EraseOneByOne(std::vector<int>& numbers, std::vector<std::vector<int>>& histories,
                   std::vector<std::size_t> places) {
  std::sort(places.rbegin(), places.rend());
  for (const std::size_t place : places) {
    numbers.erase(numbers.begin() + static_cast<std::ptrdiff_t>(place));
    for (auto& history : histories)
      RemoveGameIndex(history, static_cast<int>(place));
  }
}

class RandomErasing : public TourneyTest {
 protected:
  int Random(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }

  void AddSomeGames() {
    for (int i = Random(0, 12); i > 0; --i) {
      const int white = Random(1, 5);
      Add(white, white % 5 + 1, Random(1, 4));
    }
  }

  std::vector<std::size_t> SomePlaces() {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < tourney.Games().size(); ++i) {
      if (Random(0, 2) == 0) places.push_back(i);
    }
    std::shuffle(places.begin(), places.end(), random_);
    return places;
  }

  std::vector<int> Numbers() {
    std::vector<int> numbers;
    for (const Game& game : tourney.Games())
      numbers.push_back(game.number);
    return numbers;
  }

  std::vector<std::vector<int>> Histories() {
    std::vector<std::vector<int>> histories;
    for (const Player& player : tourney.Participants())
      histories.push_back(player.games);
    return histories;
  }

 private:
  std::mt19937 random_{20240229};
};

TEST_F(RandomErasing, HistoriesStayRightAsIfGamesWentOneByOne) {
  EnterMany(5);
  for (int i = 0; i < 500; ++i) {
    AddSomeGames();
    std::vector<int> numbers = Numbers();
    std::vector<std::vector<int>> histories = Histories();
    const std::vector<std::size_t> places = SomePlaces();
    EraseOneByOne(numbers, histories, places);
    tourney.EraseGames(places);
    ASSERT_EQ(Numbers(), numbers) << i;
    ASSERT_EQ(Histories(), histories) << i;
  }
}

}  // namespace
}  // namespace tarvendo
