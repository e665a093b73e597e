// Any bytes behind the words of the commands that take options: they do what they can or say why
// not, and a table comes out the same twice.
#include <array>

#include "console/command_args.h"
#include "console/command_context.h"
#include "console/command_table.h"
#include "fuzz_input.h"
#include "fuzz_tourney.h"
#include "fuzzers.h"
#include "pairing/bracket_list.h"
#include "players/player_database.h"
#include "runner/running_games.h"

namespace tarvendo {
namespace {

constexpr std::array kCommandsWithOptions = {"texttable",   "table",          "showgames",  "spool",
                                             "removegames", "createbrackets", "showplayers"};

struct Typist {
  std::string Type(const std::string& line) {
    CommandArgs args;
    args.Fill(line);
    CommandContext context{line, args,     players, game.machine.host, "/program/", game.tourney,
                           file, brackets, running};
    game.machine.TakeOutput();
    FindCommand(line)->run(context);
    return game.machine.TakeOutput();
  }

  TwoGames game;
  PlayerDatabase players;
  TourneyFile file{game.machine.files};
  BracketList brackets{game.machine.clock};
  RunningGames running;
};

}  // namespace

void FuzzTableOptions(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return;
  Typist typist;
  std::string words = FuzzText(data + 1, size - 1);
  // A line of the console ends at its first line feed.
  words = words.substr(0, words.find('\n')) + "\n";
  const std::string line =
      std::string(kCommandsWithOptions.at(data[0] % kCommandsWithOptions.size())) + " " + words;
  typist.Type(line);  // It may adjust the number of rounds, and say so.
  const std::string once = typist.Type(line);
  const std::string again = typist.Type(line);
  Demand(!line.starts_with("te") || once == again);
}

}  // namespace tarvendo
