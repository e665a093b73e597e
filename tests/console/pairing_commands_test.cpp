#include <gtest/gtest.h>

#include "console/typed_commands.h"
#include "console/unknown_word_text.h"

namespace tarvendo {
namespace {

constexpr const char* kNoBrackets =
    "Can't create brackets. Maybe there are still games to be played?\n";

class PairingCommands : public TypedCommands {
 protected:
  PairingCommands() { tourney.ChangeSettings()->type = kSwiss; }

  /// Round 1 has been played: Alpha and Gamma have won, Beta and Delta have lost.
  void PlayFirstRound() {
    tourney.ChangeSettings()->rounds = 3;
    for (const int white : {1, 3}) {
      tourney.AddGame(white, white + 1, 1, 1);
      tourney.ChangeGames().back().status = kReady;
      tourney.ChangeGames().back().result = kWhiteWins;
    }
    Type("texttable");
  }
};

TEST_F(PairingCommands, ARoundRobinIsNotPaired) {
  tourney.ChangeSettings()->type = kRoundRobin;
  EXPECT_EQ(Type("pair"),
            "This command has only effect on swiss tourneys. Try CreateRRGames instead.\n");
}

TEST_F(PairingCommands, AnOddNumberOfPlayersIsNotPaired) {
  tourney.ChangeParticipants().pop_back();
  EXPECT_EQ(Type("pair"), "In swiss tourneys total number of players must be even.\n");
}

TEST_F(PairingCommands, TheTypeIsLookedAtFirstThenTheNumberThenTheWords) {
  EXPECT_EQ(Type("pair -foo"), Unknown("-foo"));
  tourney.ChangeParticipants().pop_back();
  EXPECT_EQ(Type("pair -foo"), "In swiss tourneys total number of players must be even.\n");
  tourney.ChangeSettings()->type = kRoundRobin;
  EXPECT_EQ(Type("pair -foo"),
            "This command has only effect on swiss tourneys. Try CreateRRGames instead.\n");
}

TEST_F(PairingCommands, AWordThatIsNoNumberIsNotUnderstood) {
  EXPECT_EQ(Type("pair foo"), Unknown("foo"));
  EXPECT_EQ(Type("createb -foo"), Unknown("-foo"));
}

TEST_F(PairingCommands, BracketsOfNobodyCannotBeMade) {
  tourney.ChangeParticipants().clear();
  EXPECT_EQ(Type("createb"), kNoBrackets);
  EXPECT_EQ(Type("createb -si 2000000000 -up"), kNoBrackets);
  EXPECT_EQ(Type("createb -si -do"), kNoBrackets);
}

TEST_F(PairingCommands, BracketsAreMadeFromTheTopOrFromTheBottom) {
  PlayFirstRound();
  const std::string top = "     1. Alpha          \n     3. Gamma          \n";
  const std::string bottom = "     2. Beta           \n     4. Delta          \n";
  const std::string down =
      "2 brackets created.\n\nBracket  1 (1.0)\n" + top + "\nBracket  2 (0.0)\n" + bottom;
  EXPECT_EQ(Type("createb"), down);
  EXPECT_EQ(Type("createb -do"), down);
  EXPECT_EQ(Type("createb -up"),
            "2 brackets created.\n\nBracket  1 (0.0)\n" + bottom + "\nBracket  2 (1.0)\n" + top);
  EXPECT_TRUE(Type("createb -si 2").starts_with("1 brackets created.\n"));
  EXPECT_TRUE(Type("createb -si 1").starts_with("2 brackets created.\n"));
}

TEST_F(PairingCommands, AnyOptionOfPairAsksForOneWidthOnly) {
  const auto first_words = [this](const std::string& line) {
    PlayFirstRound();
    const std::string printed = Type(line);
    Type("reset");
    for (const char* name : {"Alpha", "Beta", "Gamma", "Delta"})
      AddParticipant(name);
    const std::string begin = "Pairing swiss round 2... ";
    EXPECT_TRUE(printed.starts_with(begin)) << printed;
    return printed.substr(begin.size(), printed.find('\n') - begin.size());
  };
  EXPECT_EQ(first_words("pair"), "2 brackets created.");
  EXPECT_EQ(first_words("pair -ti 5"), "Pairing Down, Bracket size 0...");
  EXPECT_EQ(first_words("pair -si 1"), "Pairing Down, Bracket size 2...");
  EXPECT_EQ(first_words("pair -do"), "Pairing Down, Bracket size 0...");
  EXPECT_EQ(first_words("pair -up -si 2"), "Pairing Up, Bracket size 4...");
}

TEST_F(PairingCommands, TheBracketsOfARoundRobinAreNotShown) {
  EXPECT_NE(Type("createb"), "");
  EXPECT_NE(Type("showb"), "");
  tourney.ChangeSettings()->type = kRoundRobin;
  EXPECT_EQ(Type("showb"), "");
}

TEST_F(PairingCommands, BracketsOfAnotherTourneyAreForgotten) {
  Type("save /t/a.ini");
  for (const std::string line : {"load /t/a.ini", "removeplayer 4", "reset"}) {
    EXPECT_NE(Type("createb"), "") << line;
    Type(line);
    EXPECT_TRUE(brackets.chain.empty()) << line;
  }
}

TEST_F(PairingCommands, ATourneyThatCannotBeLoadedLeavesTheBrackets) {
  Type("createb");
  Type("load /nowhere/a.ini");
  EXPECT_FALSE(brackets.chain.empty());
}

}  // namespace
}  // namespace tarvendo
