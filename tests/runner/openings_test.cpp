#include "runner/openings.h"

#include <gtest/gtest.h>

#include "fakes/memory_file_system.h"

namespace tarvendo {
namespace {

constexpr const char* kPosition = "4k3/8/8/8/8/8/4P3/4K3 w - - 0 1";
constexpr const char* kTwoGames = "[Event \"A\"]\n1. e4 *\n[Event \"B\"]\n1. d4 *\n";

class AnOpeningsFile : public ::testing::Test {
 protected:
  std::optional<Openings> Read(const std::string& text) {
    files_.Put("/o/book", text);
    error_.clear();
    return Openings::Read(files_, "/o/book", error_);
  }

  std::string ErrorOf(const std::string& text) {
    EXPECT_FALSE(Read(text));
    const std::string head = "The openings file '/o/book' ";
    EXPECT_EQ(error_.substr(0, head.size()), head);
    return error_.substr(std::min(error_.size(), head.size()));
  }

  MemoryFileSystem files_;
  std::string error_;
};

TEST_F(AnOpeningsFile, OfPgnHasItsGamesForLines) {
  const auto openings = Read(kTwoGames);
  ASSERT_TRUE(openings) << error_;
  EXPECT_EQ(openings->Lines(), 2U);
  EXPECT_EQ(openings->WordsFor(0), "/lgf=\"/o/book\" /lgi=1 ");
  EXPECT_EQ(openings->WordsFor(1), "/lgf=\"/o/book\" /lgi=2 ");
}

TEST_F(AnOpeningsFile, BeginsAnewBehindItsLastLine) {
  const auto openings = Read(kTwoGames);
  ASSERT_TRUE(openings);
  EXPECT_EQ(openings->WordsFor(2), openings->WordsFor(0));
  EXPECT_EQ(openings->WordsFor(10001), openings->WordsFor(1));
}

TEST_F(AnOpeningsFile, OfEpdHasItsPositionsForLinesAndBlankOnesCountForWinBoard) {
  const auto openings = Read(std::string(kPosition) + " bm e4;\n\n  \n" + kPosition + "\n\n");
  ASSERT_TRUE(openings) << error_;
  EXPECT_EQ(openings->Lines(), 2U);
  EXPECT_EQ(openings->WordsFor(0), "/lpf=\"/o/book\" /lpi=1 ");
  EXPECT_EQ(openings->WordsFor(1), "/lpf=\"/o/book\" /lpi=4 ");
}

TEST_F(AnOpeningsFile, MayEndWithoutALineFeedAndHaveCrLf) {
  EXPECT_TRUE(Read(kPosition));
  const auto openings = Read(std::string(kPosition) + "\r\n" + kPosition + "\r\n");
  ASSERT_TRUE(openings) << error_;
  EXPECT_EQ(openings->Lines(), 2U);
}

TEST_F(AnOpeningsFile, ThatIsMissingOrEmptyIsRefused) {
  EXPECT_FALSE(Openings::Read(files_, "/o/none", error_));
  EXPECT_EQ(error_, "The openings file '/o/none' cannot be read.");
  EXPECT_EQ(ErrorOf(""), "is empty.");
  EXPECT_EQ(ErrorOf("\n \t\r\n"), "is empty.");
  EXPECT_EQ(ErrorOf("; only a remark\n"), "has no game.");
}

TEST_F(AnOpeningsFile, ThatIsNeitherPgnNorEpdIsRefused) {
  EXPECT_EQ(ErrorOf("1. e4 e5 *\n"), "is neither PGN nor EPD: line 1 has a game without tags.");
  EXPECT_EQ(ErrorOf(std::string("\n") + kPosition),
            "is neither PGN nor EPD: line 2 has a game without tags.")
      << "WinBoard wants the first position on the first line";
}

TEST_F(AnOpeningsFile, OfEpdWithALineThatIsNoneIsRefused) {
  for (const char* line : {"# remark", "4k3/8/8/8/8/8/4P3/4K3", "4k3/8/8/8/8/8/4P3/4K3 x - -",
                           " 4k3/8/8/8/8/8/4P3/4K3 w - -", "[Event \"A\"]", "rnbqkbnr w"})
    EXPECT_EQ(ErrorOf(std::string(kPosition) + "\n" + line + "\n"),
              "is no EPD: line 2 has no position.");
  const std::string longest = std::string(kPosition) + " c0 \"";
  EXPECT_TRUE(Read(longest + std::string(500 - longest.size(), 'x')));
  EXPECT_EQ(ErrorOf(longest + std::string(501 - longest.size(), 'x')),
            "is no EPD: line 1 has more than 500 bytes.");
}

TEST_F(AnOpeningsFile, WhoseNameCannotBeHandedOnIsRefused) {
  files_.Put("/o/a \"b\"", kTwoGames);
  EXPECT_FALSE(Openings::Read(files_, "/o/a \"b\"", error_));
  EXPECT_EQ(error_, "The openings file '/o/a \"b\"' has a name that WinBoard cannot be told.");
}

TEST_F(AnOpeningsFile, HasAChecksumOfItsContentAndNotOfItsName) {
  const auto one = Read(kTwoGames);
  ASSERT_TRUE(one);
  EXPECT_EQ(one->Checksum().size(), 16U);
  files_.Put("/o/copy", kTwoGames);
  EXPECT_EQ(Openings::Read(files_, "/o/copy", error_)->Checksum(), one->Checksum());
  EXPECT_NE(Read(std::string(kTwoGames) + "\n")->Checksum(), one->Checksum());
}

TEST_F(AnOpeningsFile, KnowsWhetherItIsAsItWas) {
  auto openings = Read(kTwoGames);
  ASSERT_TRUE(openings);
  EXPECT_TRUE(openings->IsAsItWas(files_));
  files_.Put("/o/book", kTwoGames);
  EXPECT_TRUE(openings->IsAsItWas(files_)) << "written again, with the same content";
  files_.Put("/o/book", std::string(kTwoGames) + " ");
  EXPECT_FALSE(openings->IsAsItWas(files_));
  files_.Remove("/o/book");
  EXPECT_FALSE(openings->IsAsItWas(files_));
}

}  // namespace
}  // namespace tarvendo
