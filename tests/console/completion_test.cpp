#include "console/completion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "base/text.h"
#include "console/command_table.h"

namespace tarvendo {
namespace {

class Completing : public testing::Test {
 protected:
  Completion Complete(const std::string& line) { return CompleteLine(line, names_); }

  /// The words that are offered, a comma between two.
  std::string Offered(const std::string& line) {
    std::string offered;
    for (const Candidate& candidate : Complete(line).candidates)
      offered += (offered.empty() ? "" : ",") + candidate.text;
    return offered;
  }

  std::map<std::string, std::vector<std::string>> directories_ = {
      {"", {".hidden", "games/", "notes of mine", "save.ini", "script"}},
      {"games/", {"g1.BAT", "g1.PGN", "old games/"}},
      {"games\\", {"g1.BAT", "g1.PGN", "old games/"}},
      {"./", {"run.sh"}},
  };
  KnownNames names_ = {
      [] {
        return std::vector<std::string>{"Alpha", "Beta", "Big Engine 2", "Big Engine 3"};
      },
      [] {
        return std::vector<std::string>{"Alpha", "Big Engine 2"};
      },
      [] {
        return std::vector<std::string>{"fast", "strong"};
      },
      [this](const std::string& directory) { return directories_[directory]; }};
};

TEST_F(Completing, ACommandIsOfferedByItsFirstLettersInAnyCase) {
  EXPECT_EQ(Offered("sho"), "ShowBrackets,ShowGames,ShowPlayers");
  EXPECT_EQ(Offered("SHOWG"), "ShowGames");
  EXPECT_EQ(Offered("  re"), "ReadPlayers,RemoveGames,RemovePlayer,Replay,Reset,ReSpool");
  EXPECT_EQ(Offered("c"), "cd,CreateBrackets,CreatePlayer,CreateRRGames");
  EXPECT_EQ(Offered("xyz"), "");
}

TEST_F(Completing, AnEmptyLineOffersEveryCommandOnce) {
  EXPECT_EQ(Complete("").candidates.size(), 38);
}

TEST_F(Completing, EveryCommandIsOfferedByANameThatReachesIt) {
  for (const Command& command : Commands()) {
    if (command.name == nullptr) continue;
    EXPECT_EQ(FindCommand(std::string(command.name) + " "), &command) << command.name;
  }
}

TEST_F(Completing, EveryWordIsOfferedByANameThatTheCommandKnows) {
  for (const Command& command : Commands()) {
    if (command.expects.words == nullptr) continue;
    for (const WordForm& form : command.expects.words())
      EXPECT_TRUE(BeginsWithNoCase(form.name, form.prefix)) << form.name;
  }
}

TEST_F(Completing, TheStartIsThatOfTheWordThatIsBeingTyped) {
  EXPECT_EQ(Complete("  sho").start, 2);
  EXPECT_EQ(Complete("set po").start, 4);
  EXPECT_EQ(Complete("set ").start, 4);
  EXPECT_EQ(Complete("addplayer Big En").start, 10);
}

TEST_F(Completing, OptionsAreOfferedBehindTheirCommandWhereverTheyStand) {
  EXPECT_EQ(Offered("showgames -"), "-all,-player,-white,-black,-round,-subround,-status,-result");
  EXPECT_EQ(Offered("removegames -ro 1 -R"), "-round,-result");
  EXPECT_EQ(Offered("texttable -no"),
            "-norank,-nonumber,-nocross,-nopoints,-nogames,-notie,-nolong,-nobar,-nopics");
  EXPECT_EQ(Offered("pair -"), "-time,-size,-down,-up");
  EXPECT_EQ(Offered("createb -"), "-size,-down,-up");
  EXPECT_EQ(Offered("spool -p"), "-player");
  EXPECT_EQ(Offered("load -"), "");
}

TEST_F(Completing, TheValuesOfAnOptionAreOffered) {
  EXPECT_EQ(Offered("showgames -sta "), "not,spooled,ready");
  EXPECT_EQ(Offered("showgames -result d"), "draw");
  EXPECT_EQ(Offered("showgames -status ready x"), "");
  EXPECT_EQ(Offered("spool -pla "), "Alpha,Big Engine 2");
  EXPECT_EQ(Offered("spool -player big e"), "Big Engine 2");
}

TEST_F(Completing, SettingsAndTheirValuesAreOffered) {
  EXPECT_EQ(Offered("set p"), "Ponder,PgnFile,PicsDir");
  EXPECT_EQ(Offered("get p"), "PgnFile,PicsDir,Ponder");
  EXPECT_EQ(Offered("get al"), "all");
  EXPECT_EQ(Offered("set type "), "swiss,roundrobin");
  EXPECT_EQ(Offered("set autos o"), "on,off");
  EXPECT_EQ(Offered("set savedebug a"), "always,automatically");
  EXPECT_EQ(Offered("set name Al"), "");
  EXPECT_EQ(Offered("set filespath g"), "games/");
  EXPECT_EQ(Offered("set pgnfile s"), "save.ini,script");
  EXPECT_EQ(Offered("set foo "), "");
}

TEST_F(Completing, EverySettingThatCanBeChangedCanBeLookedAtToo) {
  const std::vector<WordForm> readable = SettingsToGet();
  EXPECT_EQ(SettingsToSet().size() + 2, readable.size());  // "all", and what the runner does
  for (const WordForm& setting : SettingsToSet()) {
    const bool is_there = std::any_of(readable.begin(), readable.end(), [&](const WordForm& other) {
      return other.name == setting.name;
    });
    EXPECT_TRUE(is_there) << setting.name;
  }
}

TEST_F(Completing, PlayersOfTheDatabaseAndParticipantsAreKeptApart) {
  EXPECT_EQ(Offered("addplayer b"), "Beta,Big Engine 2,Big Engine 3");
  EXPECT_EQ(Offered("forfeit b"), "Big Engine 2");
  EXPECT_EQ(Offered("removeplayer "), "Alpha,Big Engine 2");
  EXPECT_EQ(Offered("delp Bet"), "Beta");
  EXPECT_EQ(Offered("showplayers a"), "Alpha");
  EXPECT_EQ(Offered("available al"), "Alpha");
}

TEST_F(Completing, ANameMayHoldBlanksAndNothingFollowsIt) {
  const Completion completion = Complete("addplayer Big Engine ");
  EXPECT_EQ(completion.start, 10);
  ASSERT_EQ(completion.candidates.size(), 2);
  EXPECT_EQ(completion.candidates[1].text, "Big Engine 3");
  EXPECT_FALSE(completion.candidates[1].is_whole);
}

TEST_F(Completing, GroupsAreOfferedWordByWord) {
  EXPECT_EQ(Offered("addgroup strong f"), "fast");
  EXPECT_EQ(Offered("available -gro s"), "strong");
  EXPECT_EQ(Offered("available -"), "-group");
}

TEST_F(Completing, FieldsStandBehindTheNumber) {
  EXPECT_EQ(Offered("game 7 "), "result,status");
  EXPECT_EQ(Offered("game 7 res 1"), "1-0,1/2-1/2");
  EXPECT_EQ(Offered("game "), "");
  EXPECT_EQ(Offered("player 3 "), "dir,init,name,white,black,program,exe,group");
  EXPECT_EQ(Offered("player 3 name A"), "");
}

TEST_F(Completing, HelpOffersCommandsAndTheRunnersSwitchItsWord) {
  EXPECT_EQ(Offered("help sp"), "Spool");
  EXPECT_EQ(Offered("run "), "clear");
  EXPECT_EQ(Offered("stop c"), "clear");
}

TEST_F(Completing, FilesAreOfferedWithDirectoriesOpenAtTheEnd) {
  EXPECT_EQ(Offered("load s"), "save.ini,script");
  const Completion completion = Complete("load ga");
  ASSERT_EQ(completion.candidates.size(), 1);
  EXPECT_EQ(completion.candidates[0].text, "games/");
  EXPECT_FALSE(completion.candidates[0].is_whole);
  EXPECT_EQ(Offered("load games/g1.P"), "games/g1.PGN");
  EXPECT_EQ(Offered("load games\\g1.P"), "games\\g1.PGN");
  EXPECT_EQ(Offered("load none/x"), "");
}

TEST_F(Completing, AFileWithABlankIsOnlyOfferedWhereItCanBeTyped) {
  EXPECT_EQ(Offered("load n"), "");
  EXPECT_EQ(Offered("cd games/o"), "games/old games/");
  EXPECT_EQ(Offered("cd games/old g"), "games/old games/");
}

TEST_F(Completing, HiddenFilesAreOfferedToWhoTypesTheDot) {
  EXPECT_EQ(Offered("save ."), ".hidden");
  EXPECT_EQ(Offered("save "), "games/,save.ini,script");
}

TEST_F(Completing, ATableTakesAFileFirstAndOptions) {
  EXPECT_EQ(Offered("table s"), "save.ini,script");
  EXPECT_EQ(Offered("table x.htm s"), "");
  EXPECT_EQ(Offered("table x.htm -gam"), "-games");
}

TEST_F(Completing, ALineForTheShellOffersFiles) {
  EXPECT_EQ(Offered("cat games/g"), "games/g1.BAT,games/g1.PGN");
  EXPECT_EQ(Offered("./r"), "./run.sh");
}

TEST_F(Completing, CommandsWithoutWordsOfferNothing) {
  for (const char* const line : {"reset ", "view x", "quit ", "housekeep 5", "createrr "})
    EXPECT_EQ(Offered(line), "") << line;
}

}  // namespace
}  // namespace tarvendo
