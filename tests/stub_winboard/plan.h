#pragma once

#include <set>
#include <string>

namespace stub {

/// How one game goes.
struct Plan {
  std::string result = "1-0";  ///< as the PGN file tells it
  std::string pgn_from;  ///< the file whose bytes become the PGN file; empty: the stub writes one
  int milliseconds = 0;  ///< how long the game lasts
  int kilobytes = 0;     ///< of comments in the PGN file
  std::set<std::string> words;  ///< everything else that the plan says, see README.md

  bool Says(const std::string& word) const { return words.count(word) != 0; }
};

/// The game that the command line asks for.
struct GameKey {
  std::string name;   ///< "g7" for a PGN file games\g7.PGN
  std::string white;  ///< the engines' programs, without directory and extension
  std::string black;
  int play = 1;  ///< how many times the game has been started, this time included
};

/// The plan for a game, from "stub_plan.txt" in the current directory. Each line is a key ("g7",
/// "alpha-beta" or "*") and the words that hold for it; the first key that fits counts. When it
/// stands on several lines, the first is for the first time the game is played, and so on; the last
/// one holds for ever. A game without a plan is drawn when its number is divisible by three, else
/// won by White (remainder 1) or Black (remainder 2).
Plan ReadPlan(const GameKey& key);

}  // namespace stub
