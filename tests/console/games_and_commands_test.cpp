// Games are played, and their processes end, on threads of their own while the user types. The
// thread sanitizer looks on; TARVENDO_GAMES tells how many games there are.

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <random>
#include <thread>
#include <utility>

#include "console/command_interpreter.h"
#include "console/command_table.h"
#include "console/typed_commands.h"
#include "runner/runner.h"
#include "tourney/runner_switch_commands.h"

namespace tarvendo {
namespace {

constexpr int kUsualGames = 300;
constexpr int kGamesOfOneTourney = 250;
constexpr int kPlayers = 12;

int GamesToPlay() {
  const char* const games = std::getenv("TARVENDO_GAMES");
  return games == nullptr ? kUsualGames : std::atoi(games);
}

/// The value of an option such as /sgf=/t/g7.PGN, the last one when there are several.
std::string ValueOf(const std::string& words, const std::string& option) {
  const std::size_t start = words.rfind(option);
  if (start == std::string::npos) return "";
  const std::size_t from = start + option.size();
  return words.substr(from, words.find_first_of(" \n", from) - from);
}

/// A WinBoard for every batch file that is started: it plays on a thread of its own, and its end is
/// told on that one.
class WinBoards {
 public:
  explicit WinBoards(CapturedLog& machine) : machine_(machine) {
    machine_.processes.on_batch = [this](const std::string& batch) {
      const std::lock_guard guard(mutex_);
      waiting_.emplace_back(batch, machine_.processes.LastBatch());
      ++playing_;
      wake_.notify_all();
      return true;
    };
    thread_ = std::thread([this] { Play(); });
  }
  ~WinBoards() {
    {
      const std::lock_guard guard(mutex_);
      is_over_ = true;
    }
    wake_.notify_all();
    thread_.join();
    machine_.processes.on_batch = {};
  }
  WinBoards(const WinBoards&) = delete;
  WinBoards& operator=(const WinBoards&) = delete;

  bool IsAnyPlaying() const { return playing_ > 0; }

 private:
  void Play() {
    std::unique_lock held(mutex_);
    while (true) {
      wake_.wait(held, [&] { return is_over_ || !waiting_.empty(); });
      if (waiting_.empty()) return;
      const auto [batch, id] = waiting_.front();
      waiting_.pop_front();
      held.unlock();
      PlayGame(batch);
      machine_.processes.EndOf(id);
      --playing_;
      held.lock();
    }
  }

  void PlayGame(const std::string& batch) {
    MemoryFileSystem& files = machine_.files;
    const std::string words = files.ReadText(batch).value_or("");
    const std::string own_debug_file = ValueOf(words, "/debugfile=");
    const std::string debug_file = own_debug_file.empty() ? "/t/winboard.debug" : own_debug_file;
    files.Put(debug_file, "one\ntwo\nthree\nfour\nfive\n");
    machine_.watches.Notify(debug_file);
    std::this_thread::yield();
    files.Put(ValueOf(words, "/sgf="), SmallTourney::PgnText("1-0"));
    files.PutMore(debug_file, "GameEnds(27, White mates, 6)\n");
    machine_.watches.Notify(debug_file);
  }

  CapturedLog& machine_;
  std::mutex mutex_;
  std::condition_variable wake_;
  std::deque<std::pair<std::string, BatchId>> waiting_;
  bool is_over_ = false;
  std::atomic<int> playing_ = 0;
  std::thread thread_;
};

/// No time passes while a WinBoard plays, so that no deadline comes before it has done its work.
class PatientClock : public ManualClock {
 public:
  explicit PatientClock(const WinBoards& boards) : boards_(boards) {}

  bool Wait(std::condition_variable& wake, std::unique_lock<std::mutex>& held,
            std::chrono::milliseconds span, const std::function<bool()>& done) override {
    while (boards_.IsAnyPlaying()) {
      if (wake.wait_for(held, std::chrono::milliseconds(1), done)) return true;
    }
    return ManualClock::Wait(wake, held, span, done);
  }

 private:
  const WinBoards& boards_;
};

/// What is typed behind each word of the table. A tourney that is thrown away would prove nothing,
/// so those words are given nothing that they could take away, and "reset" is left out.
const std::map<std::string, std::string>& WordsBehind() {
  static const std::map<std::string, std::string> words = {
      {"gam", "ame 3"},         {"pla", "yer 1"},         {"load", " /t/saved.ini"},
      {"read", " /t/no.txt"},   {"wri", "te /t/all.txt"}, {"delp", "layer 77"},
      {"deletep", "layer 77"},  {"add", " 77"},           {"remp", "layer 77"},
      {"removep", "layer 77"},  {"forf", "eitplayer 77"}, {"remg", "ames 7777"},
      {"removeg", "ames 7777"}, {"set", " name Cup"},     {"get", " name"},
      {"h", "elp run"},         {"tab", "le /t/my.htm"},  {"cd ", "/t"},
      {"addg", "roup nobody"},  {"pair", " 1 2 77"},      {"createrr", "games 77"},
  };
  return words;
}

std::vector<std::string> LinesToType() {
  std::vector<std::string> lines;
  for (const Command& command : Commands()) {
    const std::string prefix = command.prefix;
    if (prefix == "reset" || prefix == "createrr" || command.Quits()) continue;
    const auto behind = WordsBehind().find(prefix);
    lines.push_back(prefix + (behind == WordsBehind().end() ? "" : behind->second) + "\n");
  }
  return lines;
}

/// One tourney, its runner, and a user who cannot keep still.
class BusyTourney {
 public:
  BusyTourney(int games, const RunnerOptions& options, unsigned seed) : dice_(seed) {
    machine_.files.PutDirectory("/t");
    SetUp(games);
    runner_ = std::make_unique<Runner>(room_, options);
  }

  void PlayWhileTyping() {
    ASSERT_TRUE(runner_->StartThread());
    Type("run\n");
    const std::vector<std::string> lines = LinesToType();
    std::uniform_int_distribution<std::size_t> which(0, lines.size() - 1);
    while (CountOpen() > 0) {
      Type(lines[which(dice_)]);
      Type("run\n");
      machine_.TakeOutput();
      std::this_thread::yield();
    }
    runner_->AwaitIdle();
  }

  /// Games that have no result yet.
  std::size_t CountOpen() {
    const Hold hold = room_.shared.Take();
    return static_cast<std::size_t>(
        std::count_if(hold->Games().begin(), hold->Games().end(),
                      [](const Game& game) { return !game.IsReady() || game.LacksResult(); }));
  }

  std::size_t CountClaims() {
    const auto names = machine_.files.FileNames();
    return static_cast<std::size_t>(std::count_if(
        names.begin(), names.end(), [](const auto& name) { return name.ends_with(".run"); }));
  }

 private:
  void SetUp(int games) {
    const Hold hold = room_.shared.Take();
    Tourney& tourney = *hold;
    tourney.ChangeSettings()->files_path = "/t\\";
    tourney.ChangeSettings()->pgn_file = "/t\\all.pgn";
    tourney.ChangeSettings()->type = kRoundRobin;
    tourney.ChangeSettings()->auto_run = 1;
    tourney.ChangeSettings()->auto_save = 1;
    room_.file.With(hold).SetName("/t/saved.ini");
    for (int n = 1; n <= kPlayers; ++n) {
      Player player;
      player.number = n;
      player.texts.name = "P" + std::to_string(n);
      player.texts.program_exe = player.texts.name + ".exe";
      tourney.ChangeParticipants().push_back(player);
    }
    for (int n = 0; n < games; ++n)
      tourney.AddGame(n % kPlayers + 1, (n + 1) % kPlayers + 1, n + 1, 1);
    room_.file.With(hold).Save(tourney, "");
  }

  void Type(const std::string& line) {
    TextInput bytes(line);
    LineInput input(bytes, false);
    interpreter_.RunCommandLoop(input, false);
  }

  CapturedLog machine_;
  WinBoards boards_{machine_};
  PatientClock clock_{boards_};
  Host host_{machine_.files, machine_.processes, clock_, machine_.watches};
  TourneyRoom room_{host_};
  PlayerDatabase players_;
  CommandInterpreter interpreter_{{room_, players_, "/program/"}};
  std::mt19937 dice_;
  std::unique_ptr<Runner> runner_;
};

void ExpectAllPlayed(int games, const RunnerOptions& options) {
  unsigned seed = 0;
  for (int left = games; left > 0; left -= kGamesOfOneTourney) {
    BusyTourney tourney(std::min(left, kGamesOfOneTourney), options, ++seed);
    tourney.PlayWhileTyping();
    EXPECT_EQ(tourney.CountOpen(), 0U);
    EXPECT_EQ(tourney.CountClaims(), 0U) << "seed " << seed;
  }
}

TEST(GamesAndCommands, EveryCommandThatIsTypedMeanwhileFindsAWholeTourney) {
  ExpectAllPlayed(GamesToPlay() / 4, RunnerOptions());
}

TEST(GamesAndCommands, TheSameIsTrueWhenManyGamesArePlayedAtOnce) {
  ExpectAllPlayed(GamesToPlay(), ManyGames(8));
}

}  // namespace
}  // namespace tarvendo
