#pragma once

#include <optional>

#include "tourney/game_list.h"

namespace tarvendo {

class CommandArgs;

/// What the words behind RemoveGames or ShowGames select.
struct GameSelection {
  GameFilter filter;
  /// A number, "-all" or an option with a usable value stands there.
  bool selects_something = false;
  /// An option stands there without a value, or with one that says nothing.
  bool has_unusable_option = false;
};

/// Reads a game number, when it is the first word, and the options, which narrow the selection
/// together:
///
///     -all  -pla N  -whi N  -bla N  -ro N  -sub N  -sta WORD  -res WORD
///
/// With the word "both", a player who was asked for by his colour (-whi, -bla) may have either.
/// Nothing, with a message, when a word begins with "-" and is none of these options.
std::optional<GameSelection> ReadGameSelection(const CommandArgs& args);

}  // namespace tarvendo
