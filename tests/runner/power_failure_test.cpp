// A tourney is played with the real play loop, and everything that it does to its disk is written
// down. Then the power fails behind every single step, with all that nobody has waited for lost, or
// some of it: what is left is loaded, the tourney file and the PGN file are whole and agree, and
// the program goes on with them to the end.

#include "fakes/power_failure.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <utility>
#include <vector>

#include "runner/stub_play.h"

namespace tarvendo {
namespace {

constexpr std::chrono::hours kWholeTourney{1};
constexpr const char* kOlderGames = "[Event \"older\"]\n\n1. a4 *\n\n";

int SeedsFor(int usual) {
  const char* const wanted = std::getenv("TARVENDO_POWER_SEEDS");
  return wanted == nullptr ? usual : std::atoi(wanted);
}

/// Nobody ever waits for the disk for the files of a game. Where a directory is kept in a journal
/// no record is there without the claim that was made before.
bool IsOfAGame(const std::string& path) {
  return path.starts_with("/t/g");
}

int Count(const std::string& text, const std::string& piece) {
  int count = 0;
  for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1))
    ++count;
  return count;
}

std::set<int> ReadyGames(const Tourney& tourney) {
  std::set<int> ready;
  for (const Game& game : tourney.Games()) {
    if (game.IsReady()) ready.insert(game.number);
  }
  return ready;
}

struct Setting {
  int places;
  bool has_older_games;
};

class PowerFailures : public ::testing::TestWithParam<Setting> {
 protected:
  /// Plays the whole tourney and writes down its steps, and when which result was safe.
  void PlayAndRecord() {
    CapturedLog machine;
    machine.files.PutDirectory("/t");
    older_games_ = GetParam().has_older_games ? kOlderGames : "";
    if (GetParam().has_older_games) machine.files.Put(kStubPgn, kOlderGames);
    machine.files.Record(steps_);
    StubWinboard winboard(machine);
    StubProgram program(machine, winboard, GetParam().places);
    program.MakeTourney();
    NoteWhatIsSafe(machine.files);
    program.Play(kWholeTourney, [&] { NoteWhatIsSafe(machine.files); });
    program.Quit();
    ASSERT_TRUE(program.IsOver());
    merged_ = program.MergedGames();
  }

  void NoteWhatIsSafe(MemoryFileSystem& files) {
    Tourney saved;
    TourneyFile file(files);
    ASSERT_TRUE(file.Load(saved, kStubTourney));
    safe_.emplace_back(steps_.size(), ReadyGames(saved));
  }

  void ExpectAllIsWellBehind(std::size_t cut, PowerFailure failure) {
    const LeftOnDisk left = failure.Behind(steps_, cut);
    CapturedLog machine;
    PutOnDisk(left, machine.files);
    StubWinboard winboard(machine);
    StubProgram program(machine, winboard, GetParam().places);
    if (cut < safe_.front().first && !left.files.contains(kStubTourney)) return;
    ASSERT_TRUE(program.LoadTourney()) << "the tourney file is not whole";
    ExpectAgreement(program, left.Text(kStubPgn), cut);
    program.Play(kWholeTourney, [] {});
    program.Quit();
    ExpectEnd(program, machine.files);
  }

  /// Of what was safe nothing is missing, and what the tourney knows is in the PGN file once.
  void ExpectAgreement(const StubProgram& program, const std::string& pgn, std::size_t cut) {
    for (const auto& [since, ready] : safe_) {
      for (const int number : ready)
        EXPECT_TRUE(since > cut || program.tourney.FindGame(number)->IsReady())
            << "game " << number;
    }
    for (const int number : ReadyGames(program.tourney))
      EXPECT_EQ(Count(pgn, merged_.at(number)), 1) << "game " << number;
  }

  void ExpectEnd(StubProgram& program, MemoryFileSystem& files) {
    std::string pgn = files.Bytes(kStubPgn);
    for (const Game& game : program.tourney.Games()) {
      EXPECT_TRUE(game.IsReady()) << "game " << game.number;
      EXPECT_EQ(game.result, StubResult(game.number)) << "game " << game.number;
      const std::string& text = merged_.at(game.number);
      EXPECT_EQ(Count(pgn, text), 1) << "game " << game.number;
      if (Count(pgn, text) > 0) pgn.erase(pgn.find(text), text.size());
    }
    EXPECT_EQ(pgn, older_games_) << "something else is in the PGN file";
    for (const std::string& name : files.FileNames())
      EXPECT_TRUE(MayStay(name, files.Bytes(name))) << name << " is left over";
  }

  /// A record that the power failure has harmed is kept, whatever has become of its game.
  static bool MayStay(const std::string& name, const std::string& text) {
    static const std::set<std::string> kStay = {kStubTourney, kStubPgn, "/t/table.htm",
                                                "/t/winboard.debug", "/t/runner.lock"};
    const bool has_holes = text.find('\0') != std::string::npos;
    return kStay.contains(name) || name.ends_with(".broken.PGN") ||
           (has_holes && name.ends_with(".left.PGN"));
  }

  DiskSteps steps_;
  std::string older_games_;
  std::map<int, std::string> merged_;
  std::vector<std::pair<std::size_t, std::set<int>>> safe_;  ///< behind so many steps
};

TEST_P(PowerFailures, LeaveWholeFilesThatAgreeWhereverTheyCome) {
  ASSERT_NO_FATAL_FAILURE(PlayAndRecord());
  ASSERT_GT(steps_.size(), 200U);
  const int seeds = SeedsFor(2);
  for (std::size_t cut = 0; cut <= steps_.size() && !HasFailure(); ++cut) {
    SCOPED_TRACE("behind step " + std::to_string(cut));
    ExpectAllIsWellBehind(cut, PowerFailure());
    for (int seed = 1; seed <= seeds && !HasFailure(); ++seed) {
      SCOPED_TRACE("with seed " + std::to_string(seed));
      const unsigned mixed = static_cast<unsigned>(cut) * 1000003U + static_cast<unsigned>(seed);
      ExpectAllIsWellBehind(cut, PowerFailure(mixed, IsOfAGame));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Every, PowerFailures,
                         ::testing::Values(Setting{1, false}, Setting{1, true}, Setting{3, false},
                                           Setting{3, true}),
                         [](const auto& each) {
                           return "with_" + std::to_string(each.param.places) + "_places_" +
                                  (each.param.has_older_games ? "and_older_games" : "alone");
                         });

}  // namespace
}  // namespace tarvendo
