#pragma once

#include <optional>

#include "tourney/game_list.h"

namespace tarvendo {

class CommandArgs;

/// What the words behind RemoveGames or ShowGames select.
struct GameSelection {
  GameFilter filter;
  bool selects_something =
      false;  ///< a number, "-all" or an option with a usable value stands there
  bool has_unusable_option = false;  ///< an option without value, or with one that says nothing
};

/// Reads a game number as the first word and the options "-all", "-pla N", "-whi N", "-bla N", "-ro
/// N",
/// "-sub N", "-sta WORD", "-res WORD", and "both", which makes a player selection of a colour's.
/// They narrow the selection together. Nothing, with a message, when a word that begins with "-" is
/// none of them.
std::optional<GameSelection> ReadGameSelection(const CommandArgs& args);

}  // namespace tarvendo
