#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "console/typed_commands.h"
#include "console/unknown_word_text.h"
#include "tourney/content_text.h"

// Whatever is typed wrongly is answered, and leaves the tourney, the player database and the files
// as they were.

namespace tarvendo {
namespace {

struct Mistake {
  std::string line;
  std::string answer;
};

constexpr const char* kNoneRemoved = "No games removed, because you didn't specify one!\n";
constexpr const char* kTheResults =
    "Possible choices:\n1-0     = white win\n1/2-1/2 = draw\n0-1     = black win\n";
constexpr const char* kTheStatuses =
    "Possible choices:\n0 = NOTHING DONE\n1 = SPOOLED\n2 = READY\n";
constexpr const char* kNoSuchName = "Please notice that names are case sensitive.\n";

class BadInput : public TypedCommands {
 protected:
  BadInput() {
    AddGames(3);
    machine.files.MakeDirectory("/t/dir");
  }

  /// Everything that a command may change.
  std::string State() {
    std::string state = ContentText(tourney);
    for (const Player& player : players.Players())
      state += player.texts.name + "|" + player.texts.program_exe + "|" + player.texts.group + "\n";
    for (const std::string& name : machine.files.FileNames())
      state += name + ": " + machine.files.Bytes(name) + "\n";
    return state;
  }

  void ExpectRefused(const std::vector<Mistake>& mistakes) {
    for (const Mistake& mistake : mistakes) {
      const std::string before = State();
      EXPECT_EQ(Type(mistake.line), mistake.answer) << mistake.line;
      EXPECT_EQ(State(), before) << mistake.line;
    }
    EXPECT_TRUE(machine.processes.ShellCalls().empty());
  }
};

TEST_F(BadInput, AWordWithAMinusThatIsNoOptionIsNamed) {
  ExpectRefused({{"showgames -foo", Unknown("-foo")},
                 {"showgames 1 -r", Unknown("-r")},
                 {"removegames -all -foo", Unknown("-foo")},
                 {"removegames -foo -bar -all", Unknown("-foo")},
                 {"removegames 1 -", Unknown("-")},
                 {"spool -foo", Unknown("-foo")},
                 {"spool 1 -al", Unknown("-al")},
                 {"createbrackets -foo", Unknown("-foo")},
                 {"createbrackets -ti 5", Unknown("-ti")},
                 {"table -foo", Unknown("-foo")},
                 {"table /t/x.htm -", Unknown("-")},
                 {"texttable -foo", Unknown("-foo")},
                 {"texttable /t/x.txt -ranks", Unknown("-ranks")},
                 {"set -name x", Unknown("-name")},
                 {"get -all", Unknown("-all")}});
  tourney.ChangeSettings()->type = kSwiss;
  ExpectRefused({{"pair -foo", Unknown("-foo")}, {"pair 1 -", Unknown("-")}});
}

TEST_F(BadInput, AnOptionWithoutItsValueChoosesNothing) {
  ExpectRefused({{"removegames -pla", kNoneRemoved},
                 {"removegames -whi both", kNoneRemoved},
                 {"removegames -bla", kNoneRemoved},
                 {"removegames -ro", kNoneRemoved},
                 {"removegames -sub", kNoneRemoved},
                 {"removegames -sta", kNoneRemoved},
                 {"removegames -res", kNoneRemoved},
                 {"removegames -all -res", kNoneRemoved},
                 {"removegames -ro -all", kNoneRemoved},
                 {"removegames -sta ready? -res x", kNoneRemoved},
                 {"removegames both", kNoneRemoved},
                 {"spool -pla", Unknown("-pla")},
                 {"spool -pla -all", Unknown("-pla")},
                 {"set ponder", "You want ponder on or off?\n"},
                 {"set timecontrol", "Time control: <Moves per sesion> <Time> <Inc>\n"},
                 {"set subrounds", "How about specifying a value, too?\n"},
                 {"game 1 res", std::string("You didn't specify result.\n") + kTheResults},
                 {"game 1 sta", std::string("You didn't specify status.\n") + kTheStatuses},
                 {"player 1 name", "You must specify a name!\n"},
                 {"player 2 exe", "You must specify the program exe!\n"},
                 {"deleteplayer", "Deleting player failed!\n"},
                 {"removeplayer", "Removing player failed, because you didn't specify one!\n"},
                 {"forfeit", "Forfeiting player failed, because you didn't specify one!\n"},
                 {"writeplayers", "I need a file where to write!\n"}});
}

TEST_F(BadInput, AWordInPlaceOfANumberIsRefused) {
  ExpectRefused(
      {{"game x", "Game number expected, 'x' found.\n"},
       {"game 1.5", "Game number expected, '1.5' found.\n"},
       {"game 1 res x", std::string("I don't understand the result 'x'.\n") + kTheResults},
       {"game 1 sta 02", std::string("I don't understand the status '02'.\n") + kTheStatuses},
       {"player x", "Can't find player number 0.\n"},
       {"player 1x dir here", "Can't find player number 0.\n"},
       {"removegames -pla x", kNoneRemoved},
       {"removegames -ro one", kNoneRemoved},
       {"removegames x", kNoneRemoved},
       {"spool x", Unknown("x")},
       {"spool -ro x", Unknown("x")},
       {"addplayer 1x",
        "Adding player failed: player named '1x' does not exist.\n" + std::string(kNoSuchName)},
       {"removeplayer 1x", "Remove player failed!\n"},
       {"showplayers 1x", "Player named '1x' not found.\n"}});
  tourney.ChangeSettings()->type = kSwiss;
  ExpectRefused({{"pair x", Unknown("x")}, {"set rounds x", "How about a positive value?\n"}});
}

TEST_F(BadInput, ANumberThatNobodyHasIsRefused) {
  const std::string huge = "99999999999999999999";
  ExpectRefused(
      {{"game " + huge, "Game number 2147483647 does not exist.\n"},
       {"game -1", "Game number expected, '-1' found.\n"},
       {"game 0", "Game number 0 does not exist.\n"},
       {"player " + huge, "Can't find player number 2147483647.\n"},
       {"player -1", "Can't find player number 0.\n"},
       {"player 0", "Can't find player number 0.\n"},
       {"addplayer " + huge, "Adding player failed: player no. 2147483647 does not exist.\n"},
       {"addplayer 0", "Adding player failed: player no. 0 does not exist.\n"},
       {"addplayer -1",
        "Adding player failed: player named '-1' does not exist.\n" + std::string(kNoSuchName)},
       {"removeplayer " + huge, "Remove player failed!\n"},
       {"removeplayer 0", "Remove player failed!\n"},
       {"removeplayer -1", "Remove player failed!\n"},
       {"forfeit " + huge, "Can't find a player by number 2147483647!\n"},
       {"forfeit 0", "Can't find player 0.\n"},
       {"forfeit -1", "Can't find player -1.\n"},
       {"showplayers " + huge, ""},
       {"showplayers 0", ""},
       {"showgames " + huge, ""},
       {"showgames -1", Unknown("-1")},
       {"showgames -ro " + huge, ""},
       {"removegames -ro " + huge, ""},
       {"removegames -pla -1", Unknown("-1")},
       {"removegames 0", kNoneRemoved},
       {"spool " + huge, ""},
       {"spool -1", Unknown("-1")},
       {"spool -ro " + huge, ""},
       {"spool -pla " + huge, "Player number 2147483647 does not exist in this tourney!\n"}});
  tourney.ChangeSettings()->type = kSwiss;
  ExpectRefused({{"pair " + huge, "No bracket number 2147483647 found!\n"},
                 {"pair 0", "No bracket number 0 found!\n"},
                 {"pair -1", Unknown("-1")},
                 {"set rounds -1", "How about a positive value?\n"},
                 {"set rounds 0", "How about a positive value?\n"}});
}

TEST_F(BadInput, AFileThatIsADirectoryIsRefused) {
  ExpectRefused({{"load /t/dir", "Loading tourney failed!\n"},
                 {"save /t/dir", "Saving tourney failed!\n"},
                 {"readplayers /t/dir", "Error opening file '/t/dir'\nReading players failed!\n"},
                 {"writeplayers /t/dir", "Writing players to file failed!\n"},
                 {"table /t/dir", "Can't open file /t/dir!\n"},
                 {"texttable /t/dir", "Can't open file /t/dir!\n"}});
}

TEST_F(BadInput, AFileThatCannotBeReadIsRefused) {
  machine.files.Put("/t/secret", "TOURNEY_FILE\n");
  machine.files.Deny(FileOperation::kRead, "/t/secret");
  ExpectRefused(
      {{"load /t/secret", "Loading tourney failed!\n"},
       {"load /t/missing", "Loading tourney failed!\n"},
       {"readplayers /t/secret", "Error opening file '/t/secret'\nReading players failed!\n"},
       {"readplayers /t/missing", "Error opening file '/t/missing'\nReading players failed!\n"}});
}

TEST_F(BadInput, AFileThatCannotBeWrittenKeepsItsText) {
  for (const std::string name : {"/t/a.ini", "/t/b.txt", "/t/c.htm", "/t/d.txt"}) {
    machine.files.Put(name, "mine\n");
    machine.files.Deny(FileOperation::kOpen, name);
    machine.files.Deny(FileOperation::kOpen, name + ".tarvendo.new");
  }
  ExpectRefused({{"save /t/a.ini", "Saving tourney failed!\n"},
                 {"writeplayers /t/b.txt", "Writing players to file failed!\n"},
                 {"table /t/c.htm", "Can't open file /t/c.htm!\n"},
                 {"texttable /t/d.txt", "Can't open file /t/d.txt!\n"},
                 {"save /nowhere/a.ini", "Saving tourney failed!\n"},
                 {"writeplayers /nowhere/b.txt", "Writing players to file failed!\n"},
                 {"table /nowhere/c.htm", "Can't open file /nowhere/c.htm!\n"}});
}

TEST_F(BadInput, AFullDiskLeavesTheOldFile) {
  machine.files.Put("/t/a.txt", "mine\n");
  Type("texttable");  // a table computes the standings, whether it can be written or not
  for (const Mistake& mistake :
       {Mistake{"save /t/a.txt", "Saving tourney failed!\n"},
        Mistake{"writeplayers /t/a.txt", "Writing players to file failed!\n"},
        Mistake{"table /t/a.txt", "Can't open file /t/a.txt!\n"},
        Mistake{"texttable /t/a.txt", "Can't open file /t/a.txt!\n"}}) {
    machine.files.FailAt(FileOperation::kWrite, 1);
    ExpectRefused({mistake});
  }
}

TEST_F(BadInput, AFileOfTheWrongKindIsRefused) {
  machine.files.Put("/t/notes.txt", "hello\n");
  machine.files.Put("/t/empty", "");
  ExpectRefused(
      {{"load /t/notes.txt", "Not a tourney file.\nLoading tourney failed!\n"},
       {"readplayers /t/notes.txt", "Can't understand the line 'hello'Reading players failed!\n"},
       {"readplayers /t/empty", "Can't understand the line ''Reading players failed!\n"}});
}

}  // namespace
}  // namespace tarvendo
