// A tourney is played with the real play loop while one operation on files fails, or the start of a
// process: the first of its kind, the second and so on, once or from then on for good. Then the
// machine is in order again and the program is started anew: what the console has told is there,
// the files are whole, and the failure was on the console or has left no trace.

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <set>
#include <vector>

#include "base/text.h"
#include "runner/stub_play.h"

namespace tarvendo {
namespace {

constexpr std::chrono::minutes kWhileItFails{10};

enum class Kind { kFile, kForbiddenFile, kStart };

struct Fault {
  const char* name;
  Kind kind;
  FileOperation operation;
  bool is_for_good;
  int places;
};

bool Holds(const std::string& text, const std::string& piece) {
  return text.find(piece) != std::string::npos;
}

/// Whether the console speaks of a failure.
bool TellsOfFailure(const std::string& said) {
  constexpr std::array<const char*, 6> kWords = {
      "Error", "failed", "Can't open", "can't run", "No file can be made", "could not be"};
  for (const char* words : kWords) {
    if (Holds(said, words)) return true;
  }
  return false;
}

class PlayFaults : public ::testing::TestWithParam<Fault> {
 protected:
  void Arrange() {
    again_.reset();
    program_.reset();
    winboard_.reset();
    machine_.reset();
    machine_ = std::make_unique<CapturedLog>();
    machine_->files.PutDirectory("/t");
    winboard_ = std::make_unique<StubWinboard>(*machine_);
    program_ = std::make_unique<StubProgram>(*machine_, *winboard_, GetParam().places);
    program_->MakeTourney();
    merged_ = program_->MergedGames();
    said_.clear();
  }

  void Inject(int n) {
    MemoryFileSystem& files = machine_->files;
    if (GetParam().kind == Kind::kForbiddenFile) files.FailAsForbidden();
    if (GetParam().kind == Kind::kStart) {
      winboard_->FailStart(n, GetParam().is_for_good);
    } else if (GetParam().is_for_good) {
      files.FailFrom(GetParam().operation, n);
    } else {
      files.FailAt(GetParam().operation, n);
    }
  }

  int Done() {
    return GetParam().kind == Kind::kStart ? winboard_->Starts()
                                           : machine_->files.Count(GetParam().operation);
  }

  /// Plays with the n-th operation failing, until all is over or nothing goes on. False when the
  /// failure did not come.
  bool PlayWithFault(int n, bool quits) {
    const int before = Done();
    Inject(n);
    program_->Play(kWhileItFails, [] {});
    if (quits) program_->Quit();
    const bool came = Done() - before >= n;
    said_ = machine_->TakeOutput() + machine_->TakeErrors();
    return came;
  }

  /// A journal that could not be read at its end may be another tourney's: it waits for the next
  /// start, and does no harm.
  void ExpectToldOrWithoutTrace() {
    if (TellsOfFailure(said_)) return;
    const bool is_of_reading =
        GetParam().kind == Kind::kFile && GetParam().operation == FileOperation::kRead;
    if (is_of_reading) machine_->files.Remove("/t/all.pgn.journal");
    EXPECT_TRUE(program_->IsOver()) << "nothing is said, but not all is played";
    EXPECT_EQ(StrayFiles(*program_), "") << "nothing is said, but these stay:";
    ExpectGames(*program_);
  }

  void StartAgain() {
    program_.reset();
    machine_->files.Mend();
    winboard_->FailStart(0, false);
    winboard_->EndAllGames();
    again_ = std::make_unique<StubProgram>(*machine_, *winboard_, GetParam().places);
    ASSERT_TRUE(again_->LoadTourney()) << "the tourney file is not whole";
    again_->Play(kWhileItFails, [] {});
    again_->Quit();
  }

  void ExpectNothingLost() {
    ExpectGames(*again_);
    for (const Game& game : again_->tourney.Games()) {
      const std::string told =
          Format("Game %d: %s - %s : %s", game.number, game.white_player.c_str(),
                 game.black_player.c_str(), StubResultText(game.number).c_str());
      if (Holds(said_, told)) {
        EXPECT_EQ(winboard_->PlaysOf(game.number), 1) << game.number << " was told, and lost";
      }
    }
    EXPECT_EQ(StrayFiles(*again_), "");
  }

  /// Each game has its result and is in the PGN file once, or its record was rescued, and the
  /// console has said so.
  void ExpectGames(StubProgram& program) {
    std::string pgn = machine_->files.Has(kStubPgn) ? machine_->files.Bytes(kStubPgn) : "";
    for (const Game& game : program.tourney.Games()) {
      const std::string name = "game " + std::to_string(game.number);
      EXPECT_TRUE(game.IsReady()) << name;
      if (WasGivenUp(game)) continue;
      EXPECT_EQ(game.result, StubResult(game.number)) << name;
      const std::string& text = merged_.at(game.number);
      const bool is_there = Holds(pgn, text);
      if (is_there) pgn.erase(pgn.find(text), text.size());
      const std::string rescued = "/t/g" + std::to_string(game.number) + ".rescued.PGN";
      EXPECT_NE(is_there, machine_->files.Has(rescued)) << name;
      EXPECT_TRUE(is_there || Holds(said_, "Error copying pgn-file!\n")) << name;
    }
    EXPECT_EQ(pgn, "") << "something else is in the PGN file";
  }

  /// A game of which nothing could be seen has no result, and the console has said so. Its record,
  /// if there is one, is kept.
  bool WasGivenUp(const Game& game) {
    if (game.result != kUnknown) return false;
    const std::string said =
        Format("Game %d: %s - %s result not found, and therefore set to UNKNOWN.", game.number,
               game.white_player.c_str(), game.black_player.c_str());
    const std::string stem = "/t/g" + std::to_string(game.number);
    const bool is_kept =
        machine_->files.Has(stem + ".PGN") || machine_->files.Has(stem + ".left.PGN");
    EXPECT_EQ(is_kept, winboard_->PlaysOf(game.number) > 0) << stem;
    return Holds(said_, said);
  }

  /// The batch file and the record of a game without a result are still of use.
  std::string StrayFiles(StubProgram& program) {
    static const std::set<std::string> kStay = {kStubTourney, kStubPgn, "/t/table.htm",
                                                "/t/winboard.debug", "/t/runner.lock"};
    std::set<std::string> may_stay = kStay;
    for (const Game& game : program.tourney.Games()) {
      const std::string stem = "/t/g" + std::to_string(game.number);
      if (game.result == kUnknown)
        may_stay.insert({stem + ".BAT", stem + ".PGN", stem + ".left.PGN"});
      may_stay.insert(stem + ".rescued.PGN");
    }
    std::string stray;
    for (const std::string& name : machine_->files.FileNames()) {
      if (!may_stay.contains(name)) stray += name + " ";
    }
    return stray;
  }

  std::unique_ptr<CapturedLog> machine_;
  std::unique_ptr<StubWinboard> winboard_;
  std::unique_ptr<StubProgram> program_;
  std::unique_ptr<StubProgram> again_;
  std::map<int, std::string> merged_;
  std::string said_;  ///< by the program whose operations fail
};

TEST_P(PlayFaults, LoseNothingWhereverTheyCome) {
  const char* const wish = std::getenv("TARVENDO_FAULT_EVERY");
  const int every = wish == nullptr ? 1 : std::atoi(wish);
  int n = 1;
  for (bool came = true; came && !HasFailure(); n += every) {
    SCOPED_TRACE(std::string(GetParam().name) + " fails at " + std::to_string(n));
    Arrange();
    came = PlayWithFault(n, n % 2 == 0);
    if (n % 2 == 0) ExpectToldOrWithoutTrace();
    ASSERT_NO_FATAL_FAILURE(StartAgain());
    ExpectNothingLost();
    if (HasFailure()) std::printf("%s\n", said_.c_str());
  }
  EXPECT_GT(n, 2) << "nothing failed";
}

std::vector<Fault> EveryFault() {
  std::vector<Fault> all;
  for (const int places : {1, 3}) {
    for (const bool is_for_good : {false, true}) {
      const auto add = [&](const char* name, Kind kind, FileOperation operation) {
        all.push_back({name, kind, operation, is_for_good, places});
      };
      add("read", Kind::kFile, FileOperation::kRead);
      add("open", Kind::kFile, FileOperation::kOpen);
      add("open_for_ever", Kind::kForbiddenFile, FileOperation::kOpen);
      add("write", Kind::kFile, FileOperation::kWrite);
      add("close", Kind::kFile, FileOperation::kClose);
      add("sync", Kind::kFile, FileOperation::kSync);
      add("rename", Kind::kFile, FileOperation::kRename);
      add("remove", Kind::kFile, FileOperation::kRemove);
      add("lock", Kind::kFile, FileOperation::kLock);
      if (places > 1) add("mkdir", Kind::kFile, FileOperation::kMakeDirectory);
      add("start", Kind::kStart, FileOperation::kRead);
    }
  }
  return all;
}

INSTANTIATE_TEST_SUITE_P(Every, PlayFaults, ::testing::ValuesIn(EveryFault()),
                         [](const auto& each) {
                           return std::string(each.param.name) +
                                  (each.param.is_for_good ? "_for_good" : "_once") + "_at_" +
                                  std::to_string(each.param.places);
                         });

}  // namespace
}  // namespace tarvendo
