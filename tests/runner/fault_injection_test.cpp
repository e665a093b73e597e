// Every operation on files fails once, or from then on for good, at every place while games are
// collected: what the console called collected is there after a restart, the files are whole, and
// the failure is on the console.

#include <gtest/gtest.h>

#include "runner/collect.h"
#include "runner/pgn_journal.h"
#include "runner/pgn_text.h"
#include "runner/running_games.h"
#include "runner/small_tourney.h"
#include "runner/spool.h"

namespace tarvendo {
namespace {

struct Injection {
  FileOperation operation;
  const char* name;
  bool is_for_good;
};

class FailingFiles : public ::testing::TestWithParam<Injection> {
 protected:
  static constexpr int kGames = 3;

  void Arrange() {
    small_.reset();
    small_ = std::make_unique<SmallTourney>();
    SmallTourney& was = *small_;
    was.AddGames(kGames);
    SpoolAll(was.tourney, was.machine.files);
    for (int number = 1; number <= kGames; ++number)
      was.PutPgn(number, "1-0");
    was.tourney.ChangeSettings()->auto_save = 1;
    ASSERT_TRUE(was.file.Save(was.tourney, "/t/tourney.ini"));
    was.machine.TakeOutput();
  }

  /// Collects with the n-th operation failing. Returns what the console said, and whether the
  /// failure came.
  std::string CollectWithFailure(int n, bool& came) {
    MemoryFileSystem& files = small_->machine.files;
    const int before = files.Count(GetParam().operation);
    if (GetParam().is_for_good) {
      files.FailFrom(GetParam().operation, n);
    } else {
      files.FailAt(GetParam().operation, n);
    }
    CollectAll(small_->tourney, files, small_->file, small_->running);
    small_->file.AutoSave(small_->tourney);
    came = files.Count(GetParam().operation) - before >= n;
    files.Mend();
    return small_->machine.TakeOutput();
  }

  /// The next start of the program, with everything in order again.
  void StartAgain(Tourney& tourney) {
    MemoryFileSystem& files = small_->machine.files;
    TourneyFile file(files);
    ASSERT_TRUE(file.Load(tourney, "/t/tourney.ini")) << "the tourney file is not whole";
    ASSERT_EQ(tourney.Games().size(), static_cast<std::size_t>(kGames));
    SettleJournal(tourney, files, file);
    CollectAll(tourney, files, file, RunningGames());
    ASSERT_TRUE(file.AutoSave(tourney));
  }

  int CountInPgn(int number) {
    const std::string pgn = small_->machine.files.Bytes("/t/all.pgn");
    const std::string text =
        MergedPgn(small_->tourney, small_->GameNumber(number), small_->PgnText("1-0"));
    int count = 0;
    for (std::size_t at = pgn.find(text); at != std::string::npos; at = pgn.find(text, at + 1))
      ++count;
    return count;
  }

  void ExpectNothingLost(const std::string& said) {
    Tourney tourney;
    ASSERT_NO_FATAL_FAILURE(StartAgain(tourney));
    std::size_t whole = 0;
    for (int number = 1; number <= kGames; ++number) {
      const std::string name = std::to_string(number);
      EXPECT_EQ(tourney.FindGame(number)->result, kWhiteWins) << "game " << number;
      const bool is_rescued = small_->machine.files.Has("/t/g" + name + ".rescued.PGN");
      EXPECT_EQ(CountInPgn(number), is_rescued ? 0 : 1) << "game " << number;
      if (is_rescued) {
        EXPECT_NE(said.find("Error copying pgn-file!\n"), std::string::npos);
      } else {
        whole +=
            MergedPgn(small_->tourney, small_->GameNumber(number), small_->PgnText("1-0")).size();
      }
    }
    if (small_->machine.files.Has("/t/all.pgn")) {
      EXPECT_EQ(small_->machine.files.Bytes("/t/all.pgn").size(), whole) << "half a game";
    }
    for (const std::string& file : small_->machine.files.FileNames()) {
      EXPECT_FALSE(file.ends_with(".journal")) << file;
      EXPECT_FALSE(file.starts_with("/t/tourney.ini.")) << file;
    }
  }

  std::unique_ptr<SmallTourney> small_;
};

TEST_P(FailingFiles, LoseNothingWhereverTheyFail) {
  int n = 1;
  for (bool came = true; came && !HasFailure(); ++n) {
    SCOPED_TRACE(std::string(GetParam().name) + " fails at " + std::to_string(n));
    Arrange();
    const std::string said = CollectWithFailure(n, came);
    ExpectNothingLost(said);
  }
  EXPECT_GT(n, 2) << "nothing failed";
}

std::vector<Injection> EveryInjection() {
  std::vector<Injection> all;
  for (const bool is_for_good : {false, true}) {
    all.push_back({FileOperation::kRead, "read", is_for_good});
    all.push_back({FileOperation::kOpen, "open", is_for_good});
    all.push_back({FileOperation::kWrite, "write", is_for_good});
    all.push_back({FileOperation::kClose, "close", is_for_good});
    all.push_back({FileOperation::kSync, "sync", is_for_good});
    all.push_back({FileOperation::kRename, "rename", is_for_good});
    all.push_back({FileOperation::kRemove, "remove", is_for_good});
  }
  return all;
}

INSTANTIATE_TEST_SUITE_P(Every, FailingFiles, ::testing::ValuesIn(EveryInjection()),
                         [](const auto& each) {
                           return std::string(each.param.name) +
                                  (each.param.is_for_good ? "_for_good" : "_once");
                         });

}  // namespace
}  // namespace tarvendo
