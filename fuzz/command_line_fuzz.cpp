// Any bytes as what is typed. Between two pieces the runner takes a turn, and WinBoard plays each
// game at once.
#include <string>

#include "console/command_interpreter.h"
#include "console/line_input.h"
#include "fakes/captured_log.h"
#include "fuzz_input.h"
#include "pairing/bracket_list.h"
#include "platform/input.h"
#include "players/player_database.h"
#include "runner/game_runner.h"
#include "tourney/shared_tourney.h"
#include "tourney/tourney_file.h"

using namespace tarvendo;

namespace {

/// More games of a pair than anybody plays only fill the memory.
constexpr int kMostSubRounds = 3;
constexpr std::size_t kMostGames = 300;

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
    log.processes.on_batch = [this](const std::string&) {
      log.files.Put("winboard.debug", "1\n2\n3\n4\n5\nGameEnds(1, x, 2)\n");
      for (const Game& game : tourney.Games()) {
        if (game.number == tourney.current_game) {
          log.files.Put(game.pgn_file, "[White \"x\"]\n[Result \"1-0\"]\n");
        }
      }
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
    if (tourney.Settings().sub_rounds > kMostSubRounds)
      tourney.ChangeSettings()->sub_rounds = kMostSubRounds;
    if (tourney.Games().size() > kMostGames) tourney.EraseAllGames();
    runner.Pass();
    log.TakeOutput();
  }

  CapturedLog log;
  SharedTourney shared;
  Tourney& tourney = *shared.Take();  ///< there is one thread only
  HeldWithTourney<TourneyFile> file{log.files};
  HeldWithTourney<BracketList> brackets{log.clock};
  PlayerDatabase players;
  CommandInterpreter interpreter{{shared, file, brackets, players, log.host, "/nowhere/"}};
  GameRunner runner{shared, file, brackets, log.host};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Machine machine;
  const std::string text = FuzzText(data, size);
  for (std::size_t begin = 0; begin < text.size();) {
    // A form feed ends a piece, so that a piece can hold several lines.
    const std::size_t end = std::min(text.find('\f', begin), text.size());
    machine.Type(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return 0;
}
