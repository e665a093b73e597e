#include "publish/report_model.h"

#include <gtest/gtest.h>

#include "publish/report_fixture.h"

namespace tarvendo {
namespace {

TEST(ReportModel, CountsTheGamesOfEachParticipant) {
  ReportedTourney made({"Ada", "Ben", "Cyd"});
  made.Play(1, 2, kWhiteWins);
  made.Play(2, 1, kDraw);
  made.Play(3, 1, kBlackWins);
  made.Play(2, 3, kBothLose);
  made.Play(2, 3, kUnfinished);
  made.Add(1, 3);
  const Report report = made.Made();
  const ReportParticipant& ada = report.participants[0];
  EXPECT_EQ(ada.games, 3);
  EXPECT_EQ(ada.wins, 2);
  EXPECT_EQ(ada.draws, 1);
  EXPECT_EQ(ada.points, 10);
  EXPECT_NEAR(*ada.Percent(), 83.33, 0.01);
  EXPECT_EQ(report.participants[1].losses, 2) << "both may lose";
  EXPECT_EQ(report.participants[2].games, 2) << "a game without a result is none";
  EXPECT_EQ(report.counts.all, 6);
  EXPECT_EQ(report.counts.played, 5);
  EXPECT_EQ(report.counts.without_result, 1);
  EXPECT_EQ(report.counts.Left(), 1);
}

TEST(ReportModel, LeavesByesOutOfRanksRatingsAndCounts) {
  ReportedTourney made({"BYE", "Ada", "Ben"}, kSwiss);
  made.tourney.ChangeSettings()->rounds = 2;
  made.Play(2, 1, kWhiteWins);
  made.Play(3, 2, kDraw, 2);
  const Report report = made.Made();
  EXPECT_TRUE(report.participants[0].is_bye);
  EXPECT_EQ(report.participants[0].rank, 0);
  EXPECT_EQ(report.participants[1].rank, 1);
  EXPECT_EQ(report.participants[2].rank, 2);
  EXPECT_EQ(report.order, (std::vector<std::size_t>{1, 2, 0}));
  EXPECT_EQ(report.participants[1].points, 6) << "the point of the bye counts";
  EXPECT_EQ(report.participants[1].games, 1) << "but it is no game";
  EXPECT_EQ(report.counts.participants, 2);
  EXPECT_EQ(report.counts.all, 1);
  EXPECT_EQ(report.elo.Of(0).kind, EloKind::kNone);
  EXPECT_EQ(report.elo.Of(1).kind, EloKind::kRated);
  EXPECT_EQ(std::string(StateOfGame(report.games[0])), "bye");
}

TEST(ReportModel, SharesRanksAsTheProgramsTablesDo) {
  ReportedTourney made({"Ada", "Ben", "Cyd", "BYE"}, kSwiss);
  made.Play(1, 2, kDraw);
  const Report report = made.Made();
  EXPECT_EQ(report.participants[0].rank, 1);
  EXPECT_EQ(report.participants[1].rank, 1);
  EXPECT_EQ(report.participants[2].rank, 3);
}

TEST(ReportModel, ExpectsTheGamesOfSwissRoundsToCome) {
  ReportedTourney made({"Ada", "Ben", "Cyd", "Dan"}, kSwiss);
  made.tourney.ChangeSettings()->rounds = 3;
  made.Play(1, 2, kDraw);
  made.Play(3, 4, kDraw);
  EXPECT_EQ(made.Made().counts.all, 6);
  made.tourney.ChangeSettings()->sub_rounds = 2;
  EXPECT_EQ(made.Made().counts.all, 10);
}

TEST(ReportModel, TellsTheRoundsOfARoundRobinByItsGames) {
  ReportedTourney made({"Ada", "Ben", "Cyd", "Dan"});
  EXPECT_EQ(made.Made().round, 1);
  EXPECT_EQ(made.Made().rounds, 3);
  made.Play(1, 2, kDraw, 1);
  made.Add(1, 3, 2);
  made.Add(1, 4, 3);
  EXPECT_EQ(made.Made().round, 2);
  made.tourney.ChangeGames()[1].status = kReady;
  made.tourney.ChangeGames()[2].status = kReady;
  EXPECT_EQ(made.Made().round, 3);
  EXPECT_EQ(made.Made().rounds, 3);
}

TEST(ReportModel, KnowsWhatIsBeingPlayed) {
  ReportedTourney made({"Ada", "Ben"});
  made.Add(1, 2);
  made.Add(2, 1);
  const Report report = made.Made({2, 77});
  EXPECT_EQ(report.games[0].state, ReportGameState::kToBePlayed);
  EXPECT_EQ(report.games[1].state, ReportGameState::kPlaying);
  EXPECT_EQ(report.counts.playing, 1);
}

TEST(ReportModel, TakesEndingLengthAndDurationFromTheRecords) {
  ReportedTourney made({"Ada", "Ben"});
  made.Play(1, 2, kWhiteWins);
  made.Record("1. e4 {+0.1/9 3} e5 {+0.1/9 4}\n{White mates} 1-0");
  made.Play(2, 1, kDraw);
  const Report report = made.Made();
  EXPECT_EQ(report.games[0].ending, "White mates");
  EXPECT_EQ(report.games[0].plies, 2);
  EXPECT_EQ(report.games[0].seconds, 7);
  EXPECT_EQ(report.games[0].termination, "normal");
  EXPECT_EQ(report.games[1].plies, std::nullopt) << "there is no record";
}

TEST(ReportModel, BearsGamesOfPlayersThatAreNotThere) {
  ReportedTourney made({"Ada", "Ben"});
  made.Play(1, 2, kWhiteWins);
  made.tourney.ChangeGames()[0].black = 9;
  made.tourney.ChangeGames()[0].black_player = "Gone";
  const Report report = made.Made();
  EXPECT_EQ(report.games[0].black, -1);
  EXPECT_EQ(report.games[0].black_name, "Gone");
  EXPECT_EQ(report.participants[0].wins, 1);
  EXPECT_EQ(report.elo.Of(0).kind, EloKind::kNone);
}

TEST(ReportModel, DescribesTheTimeControl) {
  ReportedTourney made({"Ada"});
  made.tourney.ChangeSettings()->time_control = {150, 2, 40};
  EXPECT_EQ(made.Made().time_control_text, "40 moves in 2:30 min + 2 s a move");
  made.tourney.ChangeSettings()->time_control = {60, 0, 0};
  EXPECT_EQ(made.Made().time_control_text, "1:00 min a game");
}

TEST(ReportModel, OfNothingIsEmpty) {
  ReportedTourney made({});
  const Report report = made.Made();
  EXPECT_TRUE(report.participants.empty());
  EXPECT_EQ(report.counts.all, 0);
}

}  // namespace
}  // namespace tarvendo
