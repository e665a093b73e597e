// What a command does to the tourney is seen by its version: held here for every command of the
// table, on a round robin and on a Swiss tourney.

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

#include "console/command_table.h"
#include "console/typed_commands.h"
#include "runner/spool.h"
#include "tourney/content_text.h"
#include "tourney/standings.h"

namespace tarvendo {
namespace {

/// Whether a line changes anything that the tourney file holds.
enum class Does { kNothing, kChange };

/// Whether it saves with AutoSave on.
enum class Saves { kWhenChanged, kAlways };

struct Case {
  const char* line;
  Does does = Does::kNothing;
  Saves saves = Saves::kWhenChanged;
  int type = kRoundRobin;
};

constexpr Case Changes(const char* line, int type = kRoundRobin) {
  return {line, Does::kChange, Saves::kWhenChanged, type};
}

void PrintTo(const Case& c, std::ostream* out) {
  *out << c.line << (c.type == kSwiss ? " (Swiss)" : "");
}

/// A tourney file with AutoSave on, so short that no save leaves it as it is.
constexpr const char* kOther = "TOURNEY_FILE\n\n/t/other.ini\n1\n";

/// A command that saves in any case: before it does something that cannot be taken back, or because
/// the user shall see that it was heard.
constexpr Case SavesToo(const char* line, Does does = Does::kNothing) {
  return {line, does, Saves::kAlways};
}

const Case kCases[] = {
    {"view"},
    SavesToo("reset", Does::kChange),
    {"pair"},
    Changes("pair", kSwiss),
    {"pair 9", Does::kNothing, Saves::kWhenChanged, kSwiss},
    {"pair -foo", Does::kNothing, Saves::kWhenChanged, kSwiss},
    {"createbrackets", Does::kNothing, Saves::kWhenChanged, kSwiss},
    {"showbrackets"},
    {"showbrackets", Does::kNothing, Saves::kWhenChanged, kSwiss},
    Changes("unspool"),
    Changes("run"),
    Changes("run 10:00"),
    {"run clear"},
    {"stop"},
    Changes("stop 10:00"),
    {"stop clear"},
    {"game 1"},
    {"game 99"},
    {"game 1 res 1-0"},
    {"game 1 res foo"},
    Changes("game 1 res 0-1"),
    {"game 1 sta 2"},
    Changes("game 1 sta 0"),
    {"player 1"},
    {"player 1 name Epsilon"},
    SavesToo("load /t/other.ini", Does::kChange),
    {"load /t/missing.ini"},
    {"load /t/all.pgn"},
    SavesToo("save"),
    SavesToo("save /t/saved.ini"),
    {"readplayers /t/players.txt"},
    {"readplayers /t/missing.txt"},
    {"writeplayers /t/written.txt"},
    {"available"},
    Changes("addall"),
    Changes("addgroup weak"),
    {"addgroup nobody"},
    {"housekeep"},
    Changes("replay"),
    {"createplayer\nZeta\n\n\n\n\nzeta.exe\n"},
    {"delplayer Alpha"},
    {"deleteplayer Nobody"},
    Changes("add Outsider"),
    {"add Alpha"},
    {"add Nobody"},
    Changes("remplayer 4"),
    Changes("removeplayer Beta"),
    {"removeplayer 9"},
    Changes("forfeitplayer Beta"),
    {"forfeitplayer 9"},
    SavesToo("remgames 3", Does::kChange),
    SavesToo("removegames -all", Does::kChange),
    SavesToo("removegames -white 9"),
    SavesToo("removegames"),
    Changes("respool"),
    {"showplayers"},
    {"showplayers Al"},
    Changes("getallresults"),
    {"showgames"},
    {"showgames -white 1"},
    Changes("spool"),
    {"spool 99"},
    Changes("spool 3"),
    Changes("spool -all"),
    Changes("spool -round 3"),
    Changes("spool -player 3"),
    {"spool -player 9"},
    {"set"},
    {"set nonsense"},
    {"set rounds 3"},
    SavesToo("set name Spring Cup", Does::kChange),
    SavesToo("set name My Own Winboard Tourney"),
    SavesToo("set type swiss", Does::kChange),
    SavesToo("set type robin"),
    SavesToo("set timecontrol 40 5 0", Does::kChange),
    SavesToo("set autorun on", Does::kChange),
    SavesToo("set savedebugfiles always", Does::kChange),
    SavesToo("set subrounds 2", Does::kChange),
    SavesToo("set pgnfile /t/other.pgn", Does::kChange),
    SavesToo("set filespath /t/x", Does::kChange),
    SavesToo("set autosave on"),
    SavesToo("set autosave on /t/saved.ini"),
    {"get"},
    {"get all"},
    {"get name"},
    {"get runnerstatus"},
    Changes("table /t/table.htm"),
    {"table -foo"},
    Changes("texttable"),
    {"help"},
    {"help set"},
    SavesToo("createrrgames", Does::kChange),
    {"createrrgames", Does::kNothing, Saves::kWhenChanged, kSwiss},
    SavesToo("quit"),
    {"cd /t"},
    {"dir"},
};

/// A tourney with games in every state, and AutoSave on.
class CommandOnATourney : public TypedCommands, public ::testing::WithParamInterface<Case> {
 protected:
  CommandOnATourney() {
    AddToDatabase("Outsider", "weak");
    AddGames(5);
    GameNumber(1).status = kReady;
    GameNumber(1).result = kWhiteWins;
    GameNumber(2).status = kReady;
    SpoolGame(tourney, machine.files, *tourney.FindGame(5));
    PutPgn(5, "1-0");
    machine.files.Put("/t/all.pgn", "");
    machine.files.Put("/t/players.txt", "PLAYER_FILE\n");
    machine.files.Put("/t/other.ini", kOther);
    if (GetParam().type == kSwiss) MakeSwiss();
    UpdateStandingsAndRound(tourney);
    UseAutoSave();
    machine.TakeOutput();
  }

  /// Nothing is left of the games, for a round is to be paired.
  void MakeSwiss() {
    tourney.ChangeSettings()->type = kSwiss;
    tourney.EraseAllGames();
  }

  bool HasSavedAnything() { return HasSaved() || machine.files.Bytes("/t/other.ini") != kOther; }
};

TEST_P(CommandOnATourney, RaisesItsVersionAndIsSavedWhenItChangesIt) {
  const Case& c = GetParam();
  const std::string before = ContentText(tourney);
  const std::uint64_t version = tourney.Version();
  TypeAll(std::string(c.line) + "\n");
  const bool has_changed = ContentText(tourney) != before;
  EXPECT_EQ(has_changed, c.does == Does::kChange);
  EXPECT_EQ(tourney.Version() != version, has_changed);
  EXPECT_EQ(HasSavedAnything(), has_changed || c.saves == Saves::kAlways);
}

TEST_P(CommandOnATourney, ChangesNothingWhenItOnlyShowedSomethingBefore) {
  const Case& c = GetParam();
  if (c.does == Does::kChange) return;
  TypeAll(std::string(c.line) + "\n");
  const std::uint64_t version = tourney.Version();
  TypeAll(std::string(c.line) + "\n");
  EXPECT_EQ(tourney.Version(), version);
}

INSTANTIATE_TEST_SUITE_P(EveryCommand, CommandOnATourney, ::testing::ValuesIn(kCases));

TEST(CommandCases, HoldEveryCommandOfTheTable) {
  for (const Command& command : Commands()) {
    const bool is_held = std::any_of(std::begin(kCases), std::end(kCases), [&](const Case& c) {
      return FindCommand(c.line) == &command;
    });
    EXPECT_TRUE(is_held) << command.prefix;
  }
}

}  // namespace
}  // namespace tarvendo
