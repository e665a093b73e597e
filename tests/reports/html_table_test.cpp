#include "reports/html_table.h"

#include <gtest/gtest.h>

#include "reports/cross_table.h"
#include "tourney/standings.h"
#include "tourney/table_tourney.h"

namespace tarvendo {
namespace {

class HtmlTableTest : public TableTourney {
 protected:
  std::string Page() { return Page(HtmlTableDefaults(tourney)); }

  std::string Page(const TableOptions& options) {
    UpdateStandingsAndRound(tourney);
    return HtmlTable(BuildCrossTable(tourney, options), tourney.Settings());
  }

  /// What stands between two texts, the first of each.
  static std::string Between(const std::string& page, const std::string& from,
                             const std::string& to) {
    const std::size_t begin = page.find(from);
    if (begin == std::string::npos) return "(no " + from + ")";
    const std::size_t end = page.find(to, begin + from.size());
    if (end == std::string::npos) return "(no " + to + ")";
    return page.substr(begin + from.size(), end - begin - from.size());
  }

  std::string TimeControlPiece(const char* text) {
    tourney.ChangeSettings()->time_control = ParseTimeControl(text);
    return Between(Page(), "Time control: ", "Ponder");
  }

  std::string BarPiece(QuarterPoints points) {
    TableOptions options = HtmlTableDefaults(tourney);
    options.cross = options.points = options.tie_breaks = false;
    tourney.ChangeParticipants().clear();
    AddPlayer("Al");
    P(1).points = points;
    return Between(HtmlTable(BuildCrossTable(tourney, options), tourney.Settings()),
                   "Al</p></td>\n", "</tr>");
  }
};

TEST_F(HtmlTableTest, AWholePageLooksLikeThis) {
  MakeRoundRobin();
  AddPlayer("Bishop");
  AddPlayer("Rook");
  Play(1, 2, kBlackWins);
  tourney.ChangeSettings()->name = "Spring Cup";
  tourney.ChangeSettings()->computer = "It's a PC.";
  tourney.ChangeSettings()->hash_tables = "64 MB";
  tourney.ChangeSettings()->tablebases = "none";
  tourney.ChangeSettings()->time_control = ParseTimeControl("40 5 2");
  tourney.ChangeSettings()->ponder = 1;
  EXPECT_EQ(Page(),
            "<html>\n\n<head>\n"
            "<meta http-equiv=\"Content-Type\"\n"
            "content=\"text/html; charset=iso-8859-1\">\n"
            "<title>Spring Cup</title\n\n<body>\n"
            "<p><font size=\"6\">Spring Cup</font></p>"
            "<p>Computer: It's a PC.<br>\n"
            "Hashtables: 64 MB<br>\n"
            "Tablebases: none<br>\n"
            "Time control: 5 min with 2 sec increment for 40 moves<br>"
            "Ponder: On</p>"
            "<table border=\"1\">\n"
            "<tr>\n<td>Rank</td>\n<td>Number</td>\n<td>Name</td>\n"
            "<td><center>1</center></td>\n<td><center>2</center></td>\n"
            "<td>Points</td>\n<td>S-B</td>\n</tr>\n"
            "<tr>\n<td><p align=\"center\">1.</p></td>\n<td><p align=\"center\">2.</p></td>\n"
            "<td><p align=\"left\">Rook</p></td>\n"
            "<td><p align=\"center\">+</p></td>\n<td><p align=\"center\">X</p></td>\n"
            "<td><p align=\"center\"> 1.0</p></td>\n<td><p align=\"center\"> 0.00</p></td>\n"
            "<td><font color=\"#0000FF\">|</font><font color=\"#FF0000\">#</font>"
            "<font color=\"#0000FF\">|</font></td>\n</tr>\n"
            "<tr>\n<td><p align=\"center\">2.</p></td>\n<td><p align=\"center\">1.</p></td>\n"
            "<td><p align=\"left\">Bishop</p></td>\n"
            "<td><p align=\"center\">X</p></td>\n<td><p align=\"center\">-</p></td>\n"
            "<td><p align=\"center\"> 0.0</p></td>\n<td><p align=\"center\"> 0.00</p></td>\n"
            "<td><font color=\"#0000FF\">|</font><font color=\"#0000FF\">|</font></td>\n</tr>\n"
            "</table>\n</font>\n"
            "<hr><p><font color=\"#000000\" size=\"2\">This tourney was arranged with </font>"
            "<a href=\"https://tarvendo.example.org/\"><font size=\"2\">Tarvendo</font></a>"
            "<font color=\"#000000\" size=\"2\">, a tournament manager for chess engines."
            "</font></p></body<\n</html>\n");
}

TEST_F(HtmlTableTest, TimeControlsAreToldInPieces) {
  EXPECT_EQ(TimeControlPiece("40 1:30 0"), "1 min 30 sec for 40 moves<br>");
  EXPECT_EQ(TimeControlPiece("0 5 0"), "5 min for the whole game.<br>");
  EXPECT_EQ(TimeControlPiece("0 0:10 1"),
            "0 min 10 sec with 1 sec increment for the whole game.<br>");
}

TEST_F(HtmlTableTest, PonderIsOnForAnyNumberButZero) {
  EXPECT_NE(Page().find("Ponder: Off</p>"), std::string::npos);
  tourney.ChangeSettings()->ponder = 7;
  EXPECT_NE(Page().find("Ponder: On</p>"), std::string::npos);
}

TEST_F(HtmlTableTest, UnsetTextsAreEmpty) {
  tourney.ChangeSettings()->name = tourney.ChangeSettings()->computer = "";
  tourney.ChangeSettings()->hash_tables = tourney.ChangeSettings()->tablebases = "";
  const std::string page = Page();
  EXPECT_NE(page.find("<title></title\n\n<body>\n<p><font size=\"6\"></font></p>"
                      "<p>Computer: <br>\nHashtables: <br>\nTablebases: <br>\n"),
            std::string::npos);
}

TEST_F(HtmlTableTest, ASwissHasItsRoundsAndBuchholz) {
  AddPlayers(4);
  tourney.ChangeSettings()->rounds = 2;
  Play(1, 2, kDraw, 1);
  const std::string page = Page();
  EXPECT_EQ(Between(page, "<table border=\"1\">\n", "</tr>\n"),
            "<tr>\n<td>Rank</td>\n<td>Number</td>\n<td>Name</td>\n"
            "<td><center>1</center></td>\n<td><center>2</center></td>\n"
            "<td>Points</td>\n<td>Buch</td>\n<td>S-B</td>\n");
  EXPECT_EQ(Between(page, "<td><p align=\"left\">P1</p></td>\n", "<td><font"),
            "<td><p align=\"center\">=W2 </p></td>\n<td><p align=\"center\">    </p></td>\n"
            "<td><p align=\"center\"> 0.5</p></td>\n<td><p align=\"center\"> 0.5</p></td>\n"
            "<td><p align=\"center\"> 0.25</p></td>\n");
}

TEST_F(HtmlTableTest, EverySwitchTakesItsCellsAway) {
  AddPlayers(2);
  tourney.ChangeSettings()->rounds = 1;
  TableOptions options = HtmlTableDefaults(tourney);
  for (const TableSwitch& one : kTableSwitches)
    options.*one.option = false;
  const std::string page = Page(options);
  EXPECT_EQ(Between(page, "<table border=\"1\">\n", "</table>"),
            "<tr>\n<td>Name</td>\n</tr>\n"
            "<tr>\n<td><p align=\"left\">P1</p></td>\n</tr>\n"
            "<tr>\n<td><p align=\"left\">P2</p></td>\n</tr>\n");
}

TEST_F(HtmlTableTest, TheBarWithoutPicturesIsMadeOfColouredCharacters) {
  EXPECT_EQ(BarPiece(10),
            "<td><font color=\"#0000FF\">|</font>"
            "<font color=\"#FF0000\">#</font><font color=\"#FF0000\">#</font>"
            "<font color=\"#FF0000\">\\</font>"
            "<font color=\"#0000FF\">|</font></td>\n");
  EXPECT_EQ(BarPiece(0),
            "<td><font color=\"#0000FF\">|</font><font color=\"#0000FF\">|</font></td>\n");
}

TEST_F(HtmlTableTest, TheBarWithPicturesIsMadeOfImages) {
  tourney.ChangeSettings()->pics_dir = "pics/";
  EXPECT_EQ(BarPiece(10),
            "<td><img src=\"pics/break.gif\"><img src=\"pics/full.gif\"><img src=\"pics/full.gif\">"
            "<img src=\"pics/half.gif\"><img src=\"pics/break.gif\"></td>\n");
}

TEST_F(HtmlTableTest, WhatTheUserTypesIsTextInThePage) {
  const std::string evil = "<script>document.title='x'</script>&\"";
  const std::string safe = "&lt;script&gt;document.title='x'&lt;/script&gt;&amp;&quot;";
  tourney.ChangeSettings()->name = tourney.ChangeSettings()->computer = evil;
  tourney.ChangeSettings()->hash_tables = tourney.ChangeSettings()->tablebases = evil;
  tourney.ChangeSettings()->pics_dir = "\"><script>alert(1)</script>";
  AddPlayer(evil);
  const std::string page = Page();
  EXPECT_EQ(page.find("<script"), std::string::npos);
  for (const std::string& where :
       {"<title>" + safe + "</title\n", "<font size=\"6\">" + safe + "</font>",
        "Computer: " + safe + "<br>", "Hashtables: " + safe + "<br>",
        "Tablebases: " + safe + "<br>", "<p align=\"left\">" + safe + "</p>",
        std::string("<img src=\"&quot;&gt;&lt;script&gt;alert(1)&lt;/script&gt;break.gif\">")}) {
    EXPECT_NE(page.find(where), std::string::npos) << where;
  }
}

TEST_F(HtmlTableTest, CellsHoldWhatTheTextTableHolds) {
  MakeRoundRobin();
  AddPlayers(3);
  tourney.ChangeSettings()->sub_rounds = 2;
  Play(1, 2, kWhiteWins, 1, 1);
  Play(2, 1, kUnknown, 1, 2);
  TableOptions options = HtmlTableDefaults(tourney);
  options.games = true;
  const std::string page = Page(options);
  EXPECT_EQ(Between(page, "<td><p align=\"left\">P1</p></td>\n", "<td><font"),
            "<td><p align=\"center\">XX</p></td>\n<td><p align=\"center\">+*</p></td>\n"
            "<td><p align=\"center\">  </p></td>\n"
            "<td><p align=\"center\">*1.0 / 2</p></td>\n<td><p align=\"center\">*0.00</p></td>\n");
}

TEST(EscapeHtml, TurnsTheFourCharactersIntoEntitiesAndLeavesTheRest) {
  EXPECT_EQ(EscapeHtml("a&b<c>d\"e'f\\g\xE4%"), "a&amp;b&lt;c&gt;d&quot;e'f\\g\xE4%");
  EXPECT_EQ(EscapeHtml(""), "");
}

}  // namespace
}  // namespace tarvendo
