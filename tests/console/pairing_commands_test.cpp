#include <gtest/gtest.h>

#include "console/typed_commands.h"

namespace tarvendo {
namespace {

constexpr const char* kNoBrackets =
    "Can't create brackets. Maybe there are still games to be played?\n";

class PairingCommands : public TypedCommands {
 protected:
  PairingCommands() { tourney.settings.type = kSwiss; }
};

TEST_F(PairingCommands, ARoundRobinIsNotPaired) {
  tourney.settings.type = kRoundRobin;
  EXPECT_EQ(Type("pair"),
            "This command has only effect on swiss tourneys. Try CreateRRGames instead.\n");
}

TEST_F(PairingCommands, AnOddNumberOfPlayersIsNotPaired) {
  tourney.Participants().pop_back();
  EXPECT_EQ(Type("pair"), "In swiss tourneys total number of players must be even.\n");
}

TEST_F(PairingCommands, TheTypeIsLookedAtFirstThenTheNumberThenTheWords) {
  EXPECT_EQ(Type("pair -foo"), "I just don't know what you mean by '-foo'.\n");
  tourney.Participants().pop_back();
  EXPECT_EQ(Type("pair -foo"), "In swiss tourneys total number of players must be even.\n");
  tourney.settings.type = kRoundRobin;
  EXPECT_EQ(Type("pair -foo"),
            "This command has only effect on swiss tourneys. Try CreateRRGames instead.\n");
}

TEST_F(PairingCommands, AWordThatIsNoNumberIsNotUnderstood) {
  EXPECT_EQ(Type("pair foo"), "I just don't know what you mean by 'foo'.\n");
  EXPECT_EQ(Type("createb -foo"), "I just don't know what you mean by '-foo'.\n");
}

TEST_F(PairingCommands, BracketsOfNobodyCannotBeMade) {
  tourney.Participants().clear();
  EXPECT_EQ(Type("createb"), kNoBrackets);
  EXPECT_EQ(Type("createb -si 2000000000 -up"), kNoBrackets);
  EXPECT_EQ(Type("createb -si -do"), kNoBrackets);
}

TEST_F(PairingCommands, TheBracketsOfARoundRobinAreNotShown) {
  tourney.settings.type = kRoundRobin;
  EXPECT_EQ(Type("showb"), "");
}

}  // namespace
}  // namespace tarvendo
