#include <gtest/gtest.h>

#include "fakes/captured_log.h"
#include "publish/csv_files.h"
#include "publish/html_text.h"
#include "publish/json_file.h"
#include "publish/page.h"
#include "publish/pgn_file.h"
#include "publish/report_files.h"
#include "publish/report_fixture.h"

namespace tarvendo {
namespace {

bool Holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

TEST(HtmlText, WhateverANameHoldsIsTextInThePage) {
  std::string html;
  AddName(html, "<b>\"A\" & 'B'</b>");
  EXPECT_EQ(html, "&lt;b&gt;&quot;A&quot; &amp; &#39;B&#39;&lt;/b&gt;");
}

TEST(HtmlText, NamesThatMayRunFromRightToLeftKeepToThemselves) {
  std::string html;
  AddName(html, "محرك <1>");
  EXPECT_EQ(html, "<bdi>محرك &lt;1&gt;</bdi>");
}

TEST(HtmlText, PointsEloAndDurationsAreForPeople) {
  EXPECT_EQ(PointsForPeople(0), "0");
  EXPECT_EQ(PointsForPeople(2), "½");
  EXPECT_EQ(PointsForPeople(14), "3½");
  EXPECT_EQ(EloForPeople(150.6), "+151");
  EXPECT_EQ(EloForPeople(-0.4), "0");
  EXPECT_EQ(EloForPeople(-81), "−81");
  EXPECT_EQ(DurationForPeople(151), "2:31");
  EXPECT_EQ(DurationForPeople(3723), "1:02:03");
}

TEST(Csv, TextsThatNeedItStandInQuotes) {
  ReportedTourney made({"a,b", "c \"d\"", "=1+1"});
  made.Play(1, 2, kWhiteWins);
  made.Record("1. e4\n{White mates, \"at last\"} 1-0");
  const std::string standings = StandingsCsv(made.Made());
  EXPECT_TRUE(Holds(standings, "1,1,\"a,b\",no,1.0,1,1,0,0,100.0,at least,"));
  EXPECT_TRUE(Holds(standings, ",\"c \"\"d\"\"\","));
  EXPECT_TRUE(Holds(standings, ",=1+1,no,0.0,0,0,0,0,,none,,,,,"));
  EXPECT_TRUE(Holds(
      GamesCsv(made.Made()),
      "\n1,1,1,\"a,b\",\"c \"\"d\"\"\",played,1-0,\"White mates, \"\"at last\"\"\",normal,1,\n"));
}

TEST(Csv, ARatingOfNearlyNothingHasNoSign) {
  ReportedTourney made({"Ada", "Ben", "Cyd"});
  for (const int result : {kDraw, kDraw, kDraw}) {
    made.Play(1, 2, result);
    made.Play(2, 3, result);
    made.Play(3, 1, result);
  }
  EXPECT_FALSE(Holds(StandingsCsv(made.Made()), ",-0.0,"));
  EXPECT_FALSE(Holds(ReportJson(made.Made()), ":-0.0,"));
}

TEST(Json, OfNamesThatAreNoUtf8IsUtf8) {
  ReportedTourney made(
      {"Gr\xF6\xDF"
       "e",
       "\"q\"\\"});
  EXPECT_TRUE(Holds(ReportJson(made.Made()), "\"name\":\"Größe\""));
  EXPECT_TRUE(Holds(ReportJson(made.Made()), "\"name\":\"\\\"q\\\"\\\\\""));
}

TEST(Page, OfNothingIsAPageToo) {
  ReportedTourney made({});
  EXPECT_TRUE(Holds(ReportPage(made.Made(), {0}), "There are no games yet."));
}

TEST(Page, LinksGamesOnlyThatAreInGamesPgn) {
  ReportedTourney made({"Ada", "Ben"});
  made.Play(1, 2, kWhiteWins);
  made.Record("1. e4 1-0");
  const std::uint64_t first = made.pgn.size();
  made.Play(2, 1, kWhiteWins);
  made.Record("1. e4 1-0");
  const std::string page = ReportPage(made.Made(), {first});
  EXPECT_TRUE(Holds(page, "Number%20%221%22"));
  EXPECT_FALSE(Holds(page, "Number%20%222%22"));
  EXPECT_FALSE(Holds(ReportPage(made.Made(), {0}), "games.pgn"));
}

TEST(GamesPgn, HasATerminationWhereItIsKnown) {
  EXPECT_EQ(WithTermination("[White \"A\"]\n[Black \"B\"]\n\n1. e4 1-0", "normal"),
            "[White \"A\"]\n[Black \"B\"]\n[Termination \"normal\"]\n\n1. e4 1-0");
  EXPECT_EQ(WithTermination("[Termination \"x\"]\n\n1. e4", "normal"),
            "[Termination \"x\"]\n\n1. e4");
  EXPECT_EQ(WithTermination("[White \"A\"]\n\n1. e4", ""), "[White \"A\"]\n\n1. e4");
  EXPECT_EQ(WithTermination("1. e4", "normal"), "1. e4");
}

class WrittenReport : public ::testing::Test {
 protected:
  WrittenReport() {
    machine_.files.MakeDirectory("/out");
    made_.Play(1, 2, kDraw);
    machine_.files.Put(
        "/all.pgn",
        "[Event \"Cup\"]\n[Number \"1\"]\n[White \"Ada\"]\n[Black \"Ben\"]\n\n1. e4 e5\n"
        "{Draw agreed} 1/2-1/2\n\n");
  }

  bool Write() { return files_.Write(made_.tourney, {{}, 1000000000, "/all.pgn", true}); }

  CapturedLog machine_;
  ReportedTourney made_{{"Ada", "Ben"}};
  ReportFiles files_{machine_.files, "/out"};
};

TEST_F(WrittenReport, HasAllItsFiles) {
  EXPECT_TRUE(Write());
  for (const char* name : {"index.html", "standings.csv", "games.csv", "tourney.json"})
    EXPECT_TRUE(machine_.files.Exists(std::string("/out/") + name)) << name;
  EXPECT_EQ(machine_.files.ReadText("/out/games.pgn"),
            "[Event \"Cup\"]\n[Number \"1\"]\n[White \"Ada\"]\n[Black \"Ben\"]\n"
            "[Termination \"normal\"]\n\n1. e4 e5\n{Draw agreed} 1/2-1/2\n\n");
}

TEST_F(WrittenReport, ThatCannotBeWrittenIsToldOnceUntilOneWas) {
  machine_.files.FailFrom(FileOperation::kOpen, 1);
  EXPECT_FALSE(Write());
  EXPECT_TRUE(Holds(machine_.TakeErrors(), "The report cannot be written: '/out\\"));
  EXPECT_FALSE(Write());
  EXPECT_EQ(machine_.TakeErrors(), "");
  machine_.files.Mend();
  EXPECT_TRUE(Write());
  machine_.files.FailFrom(FileOperation::kRename, 1);
  EXPECT_FALSE(Write());
  EXPECT_NE(machine_.TakeErrors(), "");
}

TEST_F(WrittenReport, GoesIntoADirectoryThatIsMadeWithThoseAboveIt) {
  EXPECT_TRUE(MakeReportDirectory(machine_.files, "/a/b/c"));
  EXPECT_TRUE(MakeReportDirectory(machine_.files, "/a/b/c"));
  EXPECT_FALSE(MakeReportDirectory(machine_.files, "/all.pgn"));
  EXPECT_FALSE(MakeReportDirectory(machine_.files, "/all.pgn/out"));
}

}  // namespace
}  // namespace tarvendo
