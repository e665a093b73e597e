#include "publish/pgn_records.h"

#include <gtest/gtest.h>

#include "fakes/memory_file_system.h"

namespace tarvendo {
namespace {

class Records : public ::testing::Test {
 protected:
  static std::string Game(int number, const std::string& moves) {
    return "[Event \"Cup\"]\n[Number \"" + std::to_string(number) +
           "\"]\n[White \"Ada\"]\n[Black \"Ben\"]\n[Result \"1-0\"]\n\n" + moves + " 1-0\n\n";
  }

  void Put(const std::string& text) { files_.Put("/t.pgn", text); }

  /// -1: there is no such record.
  int Plies(int number) {
    records_.Look("/t.pgn");
    const auto* record = records_.Find({number, "Ada", "Ben"});
    return record == nullptr ? -1 : record->facts.plies;
  }

  MemoryFileSystem files_;
  PgnRecords records_{files_};
};

TEST_F(Records, AreThoseOfTheFile) {
  Put(Game(1, "1. e4") + Game(2, "1. e4 e5"));
  EXPECT_EQ(Plies(1), 1);
  EXPECT_EQ(Plies(2), 2);
  EXPECT_EQ(Plies(3), -1);
  EXPECT_EQ(records_.Find({1, "Ada", "Cyd"}), nullptr) << "another game of that number";
  const auto* second = records_.Find({2, "Ada", "Ben"});
  EXPECT_EQ(files_.ReadPart("/t.pgn", second->offset, second->size), Game(2, "1. e4 e5"));
}

TEST_F(Records, GrowWithTheFile) {
  std::string text;
  for (int number = 1; number <= 20; ++number) {
    text += Game(number, "1. e4");
    Put(text);
    ASSERT_EQ(Plies(number), 1) << number;
  }
  EXPECT_EQ(Plies(1), 1);
}

TEST_F(Records, OfAGameThatWasHalfWrittenAreReadAgain) {
  const std::string game = Game(2, "1. e4 e5 2. d4 d5");
  Put(Game(1, "1. e4") + game.substr(0, game.size() - 12));
  EXPECT_LT(Plies(2), 4);
  Put(Game(1, "1. e4") + game);
  EXPECT_EQ(Plies(2), 4);
}

TEST_F(Records, OfAFileThatWasCutAndGrewAgainAreThoseOfNow) {
  Put(Game(1, "1. e4") + Game(2, "1. e4") + Game(3, "1. e4"));
  EXPECT_EQ(Plies(2), 1);
  files_.CutTo("/t.pgn", Game(1, "1. e4").size());
  EXPECT_EQ(Plies(2), -1);
  Put(Game(1, "1. e4 e5") + Game(2, "1. d4 d5 2. c4") + Game(3, "1. e4 e5"));
  EXPECT_EQ(Plies(1), 2);
  EXPECT_EQ(Plies(2), 3);
}

TEST_F(Records, OfNoFileAreNone) {
  EXPECT_EQ(Plies(1), -1);
  Put(Game(1, "1. e4"));
  EXPECT_EQ(Plies(1), 1);
  files_.Remove("/t.pgn");
  EXPECT_EQ(Plies(1), -1);
}

TEST_F(Records, OfAnUnreadableFileAreNone) {
  Put(Game(1, "1. e4"));
  files_.FailFrom(FileOperation::kRead, 1);
  EXPECT_EQ(Plies(1), -1);
}

TEST_F(Records, WithoutANumberAreNone) {
  Put("[White \"Ada\"]\n[Black \"Ben\"]\n\n1. e4 1-0\n\nnothing of PGN\n");
  EXPECT_EQ(Plies(0), -1);
}

TEST_F(Records, WithLineEndsOfBothKindsAreTheSame) {
  std::string text = Game(1, "1. e4 e5\n{White mates}");
  for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 2))
    text.insert(at, "\r");
  Put(text + text);
  EXPECT_EQ(Plies(1), 2);
  EXPECT_EQ(records_.Find({1, "Ada", "Ben"})->facts.ending, "White mates");
}

}  // namespace
}  // namespace tarvendo
