// Any bytes as what is typed. Between two pieces the runner takes its turns, and WinBoard plays
// each game at once.
#include <chrono>
#include <string>

#include "console/command_interpreter.h"
#include "console/line_input.h"
#include "fakes/captured_log.h"
#include "fuzz_input.h"
#include "fuzzers.h"
#include "platform/input.h"
#include "play/local_host.h"
#include "players/player_database.h"
#include "runner/play_loop.h"
#include "runner/tourney_room.h"

namespace tarvendo {
namespace {

/// More games of a pair than anybody plays only fill the memory.
constexpr int kMostTypedSubRounds = 3;
constexpr std::size_t kMostTypedGames = 300;

/// So many passes, and so long between two of them, are enough for a game.
constexpr int kPasses = 2;

/// What takes more than this only takes more time.
constexpr std::size_t kMostBytes = 224;
constexpr std::chrono::seconds kBetweenPasses{6};

class Typed : public InputStream {
 public:
  explicit Typed(std::string text) : text_(std::move(text)) {}
  int Get() override {
    return next_ < text_.size() ? static_cast<unsigned char>(text_[next_++]) : -1;
  }

 private:
  std::string text_;
  std::size_t next_ = 0;
};

struct Machine {
  Machine() {
    log.files.MakeDirectory("/t");
    tourney.ChangeSettings()->files_path = "/t\\";
    log.processes.on_batch = [this](const std::string& path) {
      for (const GameOrder& order : running.Orders()) {
        if (order.batch_file != path) continue;
        log.files.Put(order.debug_file, "1\n2\n3\n4\n5\nGameEnds(1, x, 2)\n");
        log.files.Put(order.pgn_file, "[White \"x\"]\n[Result \"1-0\"]\n");
      }
      log.processes.EndOf(log.processes.LastBatch());
      return true;
    };
    for (const char* name : {"Alpha", "Beta", "Gamma", "Delta Two"}) {
      PlayerTexts texts;
      texts.name = name;
      texts.program_exe = "engine.exe";
      texts.group = "all";
      players.CreatePlayer(texts);
    }
  }

  void Type(const std::string& line) {
    Typed bytes(line);
    LineInput input(bytes, true);
    interpreter.RunCommandLoop(input, false);
    if (tourney.Settings().sub_rounds > kMostTypedSubRounds)
      tourney.ChangeSettings()->sub_rounds = kMostTypedSubRounds;
    if (tourney.Games().size() > kMostTypedGames) tourney.EraseAllGames();
    for (int i = 0; i < kPasses; ++i) {
      loop.Pass();
      log.clock.Advance(kBetweenPasses);
    }
    log.TakeOutput();
  }

  CapturedLog log;
  TourneyRoom room{log.host};
  // There is one thread only.
  Tourney& tourney = *room.shared.Take();
  const RunningGames& running = room.running.With(room.shared.Take());
  PlayerDatabase players;
  CommandInterpreter interpreter{{room, players, "/nowhere/"}};
  LocalHost local_host{log.host, Pace(), 1, [] {}};
  PlayLoop loop{room, local_host, PlayPace()};
};

}  // namespace

void FuzzCommandLine(const std::uint8_t* data, std::size_t size) {
  Machine machine;
  const std::string text = FuzzText(data, std::min(size, kMostBytes));
  for (std::size_t begin = 0; begin < text.size();) {
    // A form feed ends a piece, so that a piece can hold several lines.
    const std::size_t end = std::min(text.find('\f', begin), text.size());
    machine.Type(text.substr(begin, end - begin));
    begin = end + 1;
  }
}

}  // namespace tarvendo
