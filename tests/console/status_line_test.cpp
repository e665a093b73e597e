#include "console/status_line.h"

#include <gtest/gtest.h>

#include <vector>

namespace tarvendo {
namespace {

/// What stands on a terminal after all that was written to it: carriage returns and line feeds are
/// followed, and what is written over is gone.
std::string Screen(const std::string& written) {
  std::vector<std::string> lines(1);
  std::size_t column = 0;
  for (const char character : written) {
    if (character == '\n') {
      lines.emplace_back();
      column = 0;
    } else if (character == '\r') {
      column = 0;
    } else {
      std::string& line = lines.back();
      if (line.size() <= column) line.resize(column + 1, ' ');
      line[column++] = character;
    }
  }
  std::string screen;
  for (std::string& line : lines)
    screen += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
  return screen;
}

class StatusLines : public ::testing::Test {
 protected:
  void Print(const std::string& text) {
    line_.Above(text, [&] { written_ += text; });
  }

  std::string written_;
  StatusLine line_{[this](const std::string& text) { written_ += text; }};
};

TEST_F(StatusLines, AreDrawnInPlaceOfTheOneBefore) {
  line_.Draw("10/12 played, long", 80);
  line_.Draw("11/12 played", 80);
  EXPECT_EQ(Screen(written_), "11/12 played\n");
}

TEST_F(StatusLines, StayBelowTheMessagesThatComeMeanwhile) {
  Print("Game 1 spooled.\n");
  line_.Draw("0/12 played", 80);
  Print("Game 2 spooled.\n");
  EXPECT_EQ(Screen(written_), "Game 1 spooled.\nGame 2 spooled.\n0/12 played\n");
}

TEST_F(StatusLines, LeaveAPromptWhereItStands) {
  Print("Runner started.\n> ");
  line_.Draw("0/12 played", 80);
  Print("\nGame 1\n> ");
  EXPECT_EQ(Screen(written_), "Runner started.\n>\n\nGame 1\n>\n0/12 played\n");
}

TEST_F(StatusLines, WaitForTheRestOfALine) {
  line_.Draw("0/12 played", 80);
  Print("Pairing swiss round 1... ");
  Print("1 brackets created.\n");
  EXPECT_EQ(Screen(written_), "Pairing swiss round 1... 1 brackets created.\n0/12 played\n");
}

TEST_F(StatusLines, AreCutWhereTheTerminalWouldGoOnToTheNextLine) {
  line_.Draw("0/12 played", 5);
  EXPECT_EQ(Screen(written_), "0/12\n");
  line_.Draw("0/12 played", 1);
  EXPECT_EQ(Screen(written_), "\n");
}

TEST_F(StatusLines, LeaveNothingBehind) {
  line_.Draw("0/12 played", 80);
  line_.Clear();
  Print("Done.\n");
  EXPECT_EQ(Screen(written_), "Done.\n\n");
}

}  // namespace
}  // namespace tarvendo
