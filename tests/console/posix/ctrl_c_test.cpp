// Whoever asks the program to end while a command works on a huge input does not wait for the end
// of that input. Here the program is asked before the command begins, so that a command that looks
// leaves everything as it was, and one that does not would do its work.

#include <gtest/gtest.h>

#include <cstdlib>
#include <thread>

#include "console/command_args.h"
#include "console/command_context.h"
#include "console/command_table.h"
#include "console/typed_commands.h"
#include "platform/faults.h"

namespace tarvendo {
namespace {

class CtrlCDeathTest : public TypedCommands {
 protected:
  /// Runs the command after the program was asked to end, and ends this process: with 0 when the
  /// command ended early and has changed nothing.
  [[noreturn]] void RunAsked(const std::string& line) {
    const std::uint64_t version = tourney.Version();
    const std::size_t known = players.Players().size();
    const auto names = machine.files.FileNames();
    machine.TakeOutput();
    RequestTermination();
    const bool has_ended_early = EndsEarly(line);
    const bool is_as_before = tourney.Version() == version && players.Players().size() == known &&
                              machine.files.FileNames() == names;
    if (!has_ended_early) std::_Exit(2);
    std::_Exit(is_as_before ? 0 : 3);
  }

  /// Whether the command throws. One that collects brings what it has begun to its end instead, and
  /// has begun nothing here.
  bool EndsEarly(const std::string& line) {
    const bool collects = line.starts_with("getall");
    CommandArgs args;
    args.Fill(line + "\n");
    CommandContext context{line,    args, players,  machine.host, "/program/",
                           tourney, file, brackets, running};
    try {
      FindCommand(line)->run(context);
    } catch (const Terminated&) {
      return true;
    }
    return collects;
  }

  void ExpectEndsEarly(const std::string& line) {
    EXPECT_EXIT(RunAsked(line), testing::ExitedWithCode(0), "^$") << line;
  }

  /// A saved tourney of six games: one unplayed, two spooled, one of them with a record, and the
  /// others over, one of those without a result.
  void PutTourney() {
    AddGames(6);
    TypeAll("save /t/other.ini\nwriteplayers /t/players.txt\nspool 2\nspool 3\n");
    file.SetName("");
    PutPgn(3, "1-0");
    for (const int number : {4, 5, 6})
      GameNumber(number).status = kReady;
    GameNumber(5).result = GameNumber(6).result = kWhiteWins;
    TypeAll("table /t/a.htm\n");
  }
};

TEST_F(CtrlCDeathTest, NoCommandOfARoundRobinGoesOnToTheEndOfItsInput) {
  PutTourney();
  for (const char* line : {"load /t/other.ini",
                           "readplayers /t/players.txt",
                           "available",
                           "addallplayers",
                           "addgroup strong",
                           "showplayers",
                           "showplayers A",
                           "removeplayer 2",
                           "forfeitplayer 1",
                           "showgames",
                           "removegames -all",
                           "spool -all",
                           "spool -round 1",
                           "spool -player 1",
                           "respool",
                           "unspool",
                           "replay",
                           "getallresults",
                           "table",
                           "table /t/my.htm",
                           "texttable",
                           "createrrgames",
                           "reset"}) {
    ExpectEndsEarly(line);
  }
}

TEST_F(CtrlCDeathTest, ReadingWinboardsConfigurationEndsEarly) {
  machine.files.Put("/t/winboard.ini", "/firstChessProgramNames={a.exe\n}\n");
  ExpectEndsEarly("readplayers /t/winboard.ini");
}

TEST_F(CtrlCDeathTest, AFileInWhichNothingIsFoundIsNotReadToItsEnd) {
  machine.files.Put("/t/players.txt", "PLAYER_FILE\nno block\n");
  ExpectEndsEarly("readplayers /t/players.txt");
}

TEST_F(CtrlCDeathTest, ASwissPairingEndsEarly) {
  tourney.ChangeSettings()->type = kSwiss;
  tourney.ChangeSettings()->rounds = 2;
  TypeAll("createbrackets\n");
  ExpectEndsEarly("pair");
  ExpectEndsEarly("createbrackets");
}

/// A machine that is asked to end while a file is being read.
class AskedWhileReading : public MemoryFileSystem {
 public:
  std::optional<std::string> ReadPart(const std::string& path, std::uint64_t offset,
                                      std::size_t most) override {
    RequestTermination();
    return MemoryFileSystem::ReadPart(path, offset, most);
  }
};

TEST_F(CtrlCDeathTest, ALoadThatIsBrokenOffLeavesTourneyAndName) {
  const auto load = [this] {
    AskedWhileReading files;
    files.Put("/home/big.ini",
              "TOURNEY_FILE\n" + std::string(27, '\n') + "3\n" + std::string(99, '\n'));
    TourneyFile own(files);
    own.SetName("own.ini");
    const std::size_t participants = tourney.Participants().size();
    try {
      own.Load(tourney, "big.ini");
    } catch (const Terminated&) {
      std::_Exit(own.Name() == "own.ini" && tourney.Participants().size() == participants ? 0 : 3);
    }
    std::_Exit(2);
  };
  EXPECT_EXIT(load(), testing::ExitedWithCode(0), "^$");
}

void AskOnAnotherThread() {
  const FaultGuard guard;
  RequestTermination();
  bool has_ended = false;
  std::thread runner([&] {
    try {
      EndWhenAsked();
    } catch (const Terminated&) {
      has_ended = true;
    }
  });
  runner.join();
  try {
    EndWhenAsked();
  } catch (const Terminated&) {
    std::_Exit(has_ended ? 3 : 0);
  }
  std::_Exit(2);
}

TEST_F(CtrlCDeathTest, TheRunnersThreadGoesOnToTheEndOfWhatItDoes) {
  EXPECT_EXIT(AskOnAnotherThread(), testing::ExitedWithCode(0), "^$");
}

}  // namespace
}  // namespace tarvendo
