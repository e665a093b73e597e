#include "play/debug_watch.h"

#include <gtest/gtest.h>

#include "fakes/memory_file_system.h"

namespace tarvendo {
namespace {

constexpr const char* kFirstLines = "one\ntwo\nthree\nfour\nfive\n";
constexpr const char* kPath = "/t\\winboard.debug";

class DebugFile : public ::testing::Test {
 protected:
  DebugFile() { watch_.Begin(kPath); }

  DebugNews Look() { return watch_.Look(files_); }

  /// The look at a file that holds only the header and `text`.
  DebugNews NewsOf(const std::string& text) {
    files_.Put(kPath, kFirstLines + text);
    watch_.Begin(kPath);
    return Look();
  }

  MemoryFileSystem files_;
  DebugWatch watch_;
};

TEST_F(DebugFile, AFileThatIsNotThereIsReported) {
  EXPECT_EQ(Look(), DebugNews::kNoFile);
}

TEST_F(DebugFile, TheSixthLineCanEndTheGameInAnyCase) {
  EXPECT_EQ(NewsOf("GameEnds(27, Black mates, 6)\n"), DebugNews::kGameOver);
  EXPECT_EQ(NewsOf("GAMEENDS\n"), DebugNews::kGameOver);
  EXPECT_EQ(NewsOf("gameends\n"), DebugNews::kGameOver);
}

TEST_F(DebugFile, OnlyTheStartOfALineCounts) {
  EXPECT_EQ(NewsOf(" gameends\nxgameends\ngameend\n"), DebugNews::kStillOpen);
}

TEST_F(DebugFile, TheFirstFiveLinesAreAHeaderAndEndNothing) {
  files_.Put(kPath, "gameends\ngameends\ngameends\ngameends\ngameends\nsixth\n");
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
}

TEST_F(DebugFile, AHeaderThatIsStillBeingWrittenIsReadOnce) {
  files_.Put(kPath, "one\ntwo\n");
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
  files_.PutMore(kPath, "GameEnds(1, x, 2)\n");
  EXPECT_EQ(Look(), DebugNews::kGameOver);
}

TEST_F(DebugFile, AnEmptyFileStillHasItsHeaderToCome) {
  files_.Put(kPath, "");
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
  files_.PutMore(kPath, "gameends\n2\n3\n4\n5\n");
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
}

TEST_F(DebugFile, SettingUpTheBoardEndsNoGame) {
  EXPECT_EQ(NewsOf("GameEnds(0, (null), 2)\n"), DebugNews::kStillOpen);
  EXPECT_EQ(NewsOf("GAMEENDS(0,\n"), DebugNews::kStillOpen);
  EXPECT_EQ(NewsOf("GameEnds(0, (null), 2)\nmore\nGameEnds(27, Black mates, 6)\n"),
            DebugNews::kGameOver);
}

TEST_F(DebugFile, EveryOtherNumberEndsTheGame) {
  EXPECT_EQ(NewsOf("GameEnds(05, x, 2)\n"), DebugNews::kGameOver);
  EXPECT_EQ(NewsOf("GameEnds(0)\n"), DebugNews::kGameOver);
  EXPECT_EQ(NewsOf("GameEnds (0, x, 2)\n"), DebugNews::kGameOver);
}

TEST_F(DebugFile, OnlyWhatIsNewIsRead) {
  EXPECT_EQ(NewsOf("nothing yet\n"), DebugNews::kStillOpen);
  // What has been read is changed behind the watch's back, to the same length.
  files_.Put(kPath, std::string(kFirstLines) + "gameends!!!\n");
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
  files_.PutMore(kPath, "gameends\n");
  EXPECT_EQ(Look(), DebugNews::kGameOver);
}

TEST_F(DebugFile, AfterTheEndTheSameLineIsFoundAgain) {
  EXPECT_EQ(NewsOf("x\ngameends\ny\n"), DebugNews::kGameOver);
  EXPECT_EQ(Look(), DebugNews::kGameOver);
}

TEST_F(DebugFile, ALineIsRecognisedAlthoughItArrivesInPieces) {
  EXPECT_EQ(NewsOf("Game"), DebugNews::kStillOpen);
  files_.PutMore(kPath, "Ends(2");
  EXPECT_EQ(Look(), DebugNews::kStillOpen) << "what is still being written is looked at again";
  files_.PutMore(kPath, "7, Black mates, 6)\n");
  EXPECT_EQ(Look(), DebugNews::kGameOver);
}

TEST_F(DebugFile, TheEndOfAGameThatIsLoadedFromAFileEndsNoGame) {
  EXPECT_EQ(NewsOf("GameEnds(28, , 3)\n"), DebugNews::kStillOpen);
  EXPECT_EQ(NewsOf("gameends(26, White resigns, 3)\r\n"), DebugNews::kStillOpen);
  EXPECT_EQ(NewsOf("GameEnds(26, x, 3)\nmore\nGameEnds(27, Black mates, 6)\n"),
            DebugNews::kGameOver);
}

TEST_F(DebugFile, OnlyTheLastNumberTellsThatALineComesFromAFile) {
  for (const char* line : {"GameEnds(3, x, 2)\n", "GameEnds(27, x, 3), 6)\n",
                           "GameEnds(27, x, 13)\n", "GameEnds(27, x, 3) \n", "gameends3)\n"})
    EXPECT_EQ(NewsOf(line), DebugNews::kGameOver) << line;
}

TEST_F(DebugFile, ALoadedGameMayEndWithALongComment) {
  for (std::size_t length = 230; length < 520; ++length) {
    const std::string comment(length, 'c');
    EXPECT_EQ(NewsOf("GameEnds(26, " + comment + ", 3)\n"), DebugNews::kStillOpen) << length;
    EXPECT_EQ(NewsOf("GameEnds(26, " + comment + ", 6)\n"), DebugNews::kGameOver) << length;
  }
}

TEST_F(DebugFile, ALoadedGameIsKnownHoweverItArrives) {
  const std::string line = "GameEnds(29, , 3)\n";
  for (std::size_t length = 1; length < line.size(); ++length) {
    EXPECT_EQ(NewsOf(line.substr(0, length)), DebugNews::kStillOpen) << length;
    files_.PutMore(kPath, line.substr(length));
    EXPECT_EQ(Look(), DebugNews::kStillOpen) << length;
    EXPECT_EQ(Look(), DebugNews::kStillOpen) << length;
  }
  EXPECT_EQ(NewsOf("GameEnds(29, , 3)"), DebugNews::kStillOpen);
  EXPECT_EQ(Look(), DebugNews::kStillOpen) << "it has stopped growing, and is whole";
}

TEST_F(DebugFile, AHalfWrittenSetUpOfTheBoardEndsNoGame) {
  EXPECT_EQ(NewsOf("GameEnds"), DebugNews::kStillOpen);
  files_.PutMore(kPath, "(0");
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
  files_.PutMore(kPath, ", (null), 2)\n");
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
}

TEST_F(DebugFile, TheEndOfALineThatWasReadInPiecesIsNoLine) {
  EXPECT_EQ(NewsOf("say "), DebugNews::kStillOpen);
  files_.PutMore(kPath, "gameends\n");
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
}

TEST_F(DebugFile, ALastLineWithoutLineFeedCountsWhenItHasStoppedGrowing) {
  EXPECT_EQ(NewsOf("gameends"), DebugNews::kStillOpen);
  EXPECT_EQ(Look(), DebugNews::kGameOver);
}

TEST_F(DebugFile, OnlyTheBeginningOfALongLineCanEndTheGame) {
  for (const std::size_t length : {254U, 255U, 256U, 509U, 510U, 511U})
    EXPECT_EQ(NewsOf(std::string(length, 'x') + "GameEnds(9, x, 1)\n"), DebugNews::kStillOpen);
  EXPECT_EQ(NewsOf("gameends" + std::string(500, 'x') + "\n"), DebugNews::kGameOver);
  EXPECT_EQ(NewsOf(std::string(100000, 'x') + "\ngameends\n"), DebugNews::kGameOver);
}

TEST_F(DebugFile, ALongHeaderLineCountsAsSeveral) {
  files_.Put(kPath, std::string(4 * 255, 'x') + "\ngameends\n");
  EXPECT_EQ(Look(), DebugNews::kGameOver);
}

TEST_F(DebugFile, AnEndOfALongHeaderLineIsNoLineOfItsOwn) {
  files_.Put(kPath, std::string(5 * 255, 'x') + "gameends\n");
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
  files_.Put(kPath, "1\n2\n3\n4\nfi");
  watch_.Begin(kPath);
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
  files_.PutMore(kPath, "gameends\n");
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
}

/// Gives a debug file without an end, and remembers the most that was read at once.
class EndlessFile : public MemoryFileSystem {
 public:
  std::optional<std::string> ReadPart(const std::string& /*path*/, std::uint64_t /*offset*/,
                                      std::size_t most) override {
    most_ = std::max(most_, most);
    ++reads_;
    return std::string(most, 'x');
  }

  std::size_t most_ = 0;
  int reads_ = 0;
};

TEST_F(DebugFile, ARunawayFileIsReadInPartsAndNotWithoutEnd) {
  EndlessFile files;
  EXPECT_EQ(watch_.Look(files), DebugNews::kStillOpen);
  EXPECT_LE(files.most_, std::size_t{1} << 20U);
  EXPECT_LE(files.reads_, 256);
  EXPECT_EQ(watch_.Seen(), files.most_ * static_cast<std::size_t>(files.reads_));
}

TEST_F(DebugFile, AnEndIsFoundWhereverThePartsAreCut) {
  constexpr std::size_t kPart = std::size_t{1} << 20U;
  for (std::size_t before = kPart - 40; before < kPart + 3; ++before) {
    const std::string filler(before - std::string(kFirstLines).size() - 1, 'x');
    EXPECT_EQ(NewsOf(filler + "\nGameEnds(27, Black mates, 6)\n"), DebugNews::kGameOver);
    EXPECT_EQ(NewsOf(filler + "\nGameEnds(0, (null), 2)\n"), DebugNews::kStillOpen) << before;
  }
}

TEST_F(DebugFile, NulBytesHideTheRestOfTheirLineOnly) {
  EXPECT_EQ(NewsOf(std::string("x\0gameends\ngameends\n", 20)), DebugNews::kGameOver);
  EXPECT_EQ(NewsOf(std::string("\0gameends\nx\n", 12)), DebugNews::kStillOpen);
}

TEST_F(DebugFile, LinesThatEndInCrLfAreReadLikeOthers) {
  EXPECT_EQ(NewsOf("x\r\nGameEnds(27, Black mates, 6)\r\n"), DebugNews::kGameOver);
  EXPECT_EQ(NewsOf("GameEnds(0, (null), 2)\r\n"), DebugNews::kStillOpen);
}

TEST_F(DebugFile, AFileThatHasBecomeShorterHasNothingNew) {
  EXPECT_EQ(NewsOf("x\n"), DebugNews::kStillOpen);
  files_.Put(kPath, "gameends\n");
  EXPECT_EQ(Look(), DebugNews::kStillOpen);
}

}  // namespace
}  // namespace tarvendo
