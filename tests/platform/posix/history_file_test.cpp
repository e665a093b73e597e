#include "platform/posix/history_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/scratch_directory.h"

namespace tarvendo {
namespace {

using Lines = std::vector<std::string>;

class HistoryFileTest : public testing::Test {
 protected:
  HistoryFile Opened() { return HistoryFile(Path()); }
  std::string Path() { return directory_.Path() + "/state/tarvendo/history"; }
  std::string Bytes() { return directory_.Bytes("state/tarvendo/history"); }

  int ModeOf(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 ? static_cast<int>(status.st_mode & 0777U) : -1;
  }

  ScratchDirectory directory_;
};

TEST_F(HistoryFileTest, WhatWasAddedIsThereAtTheNextStart) {
  HistoryFile first = Opened();
  EXPECT_EQ(first.Load(), Lines());
  first.Add("showgames");
  first.Add("set name J\xc3\xa4ger");
  EXPECT_EQ(Opened().Load(), (Lines{"showgames", "set name J\xc3\xa4ger"}));
}

TEST_F(HistoryFileTest, OnlyTheOwnerReadsIt) {
  Opened().Add("showgames");
  EXPECT_EQ(ModeOf(Path()), 0600);
  EXPECT_EQ(ModeOf(directory_.Path() + "/state/tarvendo"), 0700);
  EXPECT_EQ(ModeOf(directory_.Path() + "/state"), 0700);
}

TEST_F(HistoryFileTest, TheSameLineTwiceInARowIsThereOnce) {
  HistoryFile first = Opened();
  first.Add("get all");
  first.Add("get all");
  HistoryFile second = Opened();
  second.Load();
  second.Add("get all");
  second.Add("run");
  second.Add("get all");
  EXPECT_EQ(Bytes(), "get all\nrun\nget all\n");
}

TEST_F(HistoryFileTest, TwoProgramsAddToOneFile) {
  HistoryFile one = Opened();
  HistoryFile other = Opened();
  one.Add("from one");
  other.Add("from the other");
  one.Add("from one again");
  EXPECT_EQ(Bytes(), "from one\nfrom the other\nfrom one again\n");
}

TEST_F(HistoryFileTest, WhatNobodyCanTypeIsLeftOut) {
  Opened().Add("first");
  directory_.Put("state/tarvendo/history", "one\n\ntwo" + std::string(1, '\0') + "\n" +
                                               std::string(5000, 'x') + "\nthree\nbroken off");
  HistoryFile file = Opened();
  EXPECT_EQ(file.Load(), (Lines{"one", "three"}));
  file.Add("");
  file.Add(std::string(5000, 'y'));
  EXPECT_EQ(Bytes().find('y'), std::string::npos);
}

TEST_F(HistoryFileTest, ALongFileIsCutToTheLatestThousand) {
  Opened().Add("first");
  std::string text;
  for (int i = 1; i <= 2001; ++i)
    text += "line " + std::to_string(i) + "\n";
  directory_.Put("state/tarvendo/history", text);
  const Lines lines = Opened().Load();
  ASSERT_EQ(lines.size(), 1000);
  EXPECT_EQ(lines.front(), "line 1002");
  EXPECT_EQ(lines.back(), "line 2001");
  EXPECT_TRUE(Bytes().starts_with("line 1002\n"));
  EXPECT_EQ(ModeOf(Path()), 0600);
}

TEST_F(HistoryFileTest, WhatIsNoFileIsNoHistory) {
  EXPECT_EQ(HistoryFile("").Load(), Lines());
  HistoryFile("").Add("lost");
  HistoryFile directory(directory_.Path());
  EXPECT_EQ(directory.Load(), Lines());
  directory.Add("lost");
  directory_.Put("file", "");
  HistoryFile below_a_file(directory_.Path() + "/file/history");
  EXPECT_EQ(below_a_file.Load(), Lines());
  below_a_file.Add("lost");
}

}  // namespace
}  // namespace tarvendo
