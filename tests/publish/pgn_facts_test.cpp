#include "publish/pgn_facts.h"

#include <gtest/gtest.h>

namespace tarvendo {
namespace {

constexpr const char* kTags =
    "[Event \"Cup\"]\n[Round \"3\"]\n[Number \"7\"]\n[White \"Ada 1\"]\n[Black \"Ben \"the\" 2\"]\n"
    "[Result \"1-0\"]\n\n";

PgnFacts Facts(const std::string& moves) {
  return ReadPgnGame(kTags + moves);
}

TEST(PgnFacts, TellNumberAndNamesOfTheGame) {
  const PgnFacts facts = Facts("1. e4 e5 1-0\n\n");
  EXPECT_EQ(facts.number, 7);
  EXPECT_EQ(facts.white, "Ada 1");
  EXPECT_EQ(facts.black, "Ben \"the\" 2");
}

TEST(PgnFacts, CountTheMovesAndNothingElse) {
  EXPECT_EQ(Facts("1. e4 e5 2. Nf3 Nc6 3. O-O 0-0-0 1-0\n").plies, 6);
  EXPECT_EQ(Facts("1.e4 e5 2.Nf3 {a comment with e4} Nc6 $3 (2. d4 {)} exd4) 3... a6 *\n").plies,
            5);
  EXPECT_EQ(Facts("12. e8=Q+ N@f3# ; the rest e4 e5\n0-1\n").plies, 2);
  EXPECT_EQ(Facts("1-0\n").plies, 0);
  EXPECT_EQ(Facts("").plies, 0);
}

TEST(PgnFacts, TheCommentBeforeTheResultTellsTheEnding) {
  EXPECT_EQ(Facts("1. e4 e5\n{White mates} 1-0\n").ending, "White mates");
  EXPECT_EQ(Facts("1. e4 {a good\nmove} e5 1-0\n").ending, "") << "a comment on a move";
  EXPECT_EQ(Facts("1. e4 {+0.31/12 1.5}\n{Xboard adjudication:\nCheckmate} 1-0\n").ending,
            "Xboard adjudication: Checkmate");
  EXPECT_EQ(Facts("1. e4 e5 {+0.31/12 1.5} 1-0\n").ending, "");
}

TEST(PgnFacts, TheTimesBehindTheMovesMakeTheDuration) {
  EXPECT_EQ(Facts("1. e4 {+0.31/12 1.5} e5 {-0.10/9 0:45} 2. d4 {(d5) +0.2/8 2s} 1-0\n").seconds,
            49);
  EXPECT_EQ(Facts("1. e4 {[%emt 0:00:20]} e5 {[%emt 0:01:05][%eval 3]} 1-0\n").seconds, 85);
  EXPECT_EQ(Facts("1. e4 {+0.31/12} e5 1-0\n").seconds, std::nullopt) << "without times";
  EXPECT_EQ(Facts("1. e4 e5 1-0\n").seconds, std::nullopt);
}

TEST(PgnFacts, ATagTellsTheDurationBetter) {
  EXPECT_EQ(ReadPgnGame("[GameDuration \"00:03:20\"]\n\n1. e4 {+0.31/12 1.5} 1-0\n").seconds, 200);
  EXPECT_EQ(ReadPgnGame("[GameDuration \"long\"]\n\n1. e4 {+0.31/12 1.6} 1-0\n").seconds, 2);
}

TEST(PgnFacts, BrokenRecordsAreReadAsFarAsTheyGo) {
  EXPECT_EQ(Facts("1. e4 {never closed").plies, 1);
  EXPECT_EQ(Facts("1. e4 (never closed {").plies, 1);
  EXPECT_EQ(Facts(") } 1. e4 )").plies, 1);
  EXPECT_EQ(ReadPgnGame("[White \"half").white, "");
  EXPECT_EQ(ReadPgnGame("[Number \"many\"]\n").number, 0);
  EXPECT_EQ(ReadPgnGame("{").plies, 0);
}

TEST(PgnFacts, TheNextGameBeginsWithItsTags) {
  const std::string game = std::string(kTags) + "1. e4\n{a\n[b] comment} 1-0\n\n";
  EXPECT_EQ(NextPgnGame(game + game), game.size());
  EXPECT_EQ(NextPgnGame(game), std::string::npos);
  EXPECT_EQ(NextPgnGame(""), std::string::npos);
  const std::string broken = std::string(kTags) + "1. e4 {never closed\n";
  EXPECT_EQ(NextPgnGame(broken + game), broken.size()) << "an Event tag ends everything";
}

TEST(PgnFacts, TheTerminationFollowsFromTheEnding) {
  EXPECT_EQ(TerminationOf("White mates", true), "normal");
  EXPECT_EQ(TerminationOf("Black forfeits on time", true), "time forfeit");
  EXPECT_EQ(TerminationOf("White wins on time", true), "time forfeit");
  EXPECT_EQ(TerminationOf("Xboard adjudication: Checkmate", true), "adjudication");
  EXPECT_EQ(TerminationOf("Xboard: Forfeit due to illegal move: e1g1", true), "rules infraction");
  EXPECT_EQ(TerminationOf("first engine exited unexpectedly", true), "abandoned");
  EXPECT_EQ(TerminationOf("something else", true), "");
  EXPECT_EQ(TerminationOf("", true), "");
  EXPECT_EQ(TerminationOf("White mates", false), "unterminated");
}

}  // namespace
}  // namespace tarvendo
