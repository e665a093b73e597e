#pragma once

#include <string>

namespace tarvendo {

/// A game to be played somewhere: everything that is needed for it, as it was at the moment of its
/// start. A value that can cross to another thread or machine. All paths are full ones, so that no
/// later change of the current directory moves them.
struct GameOrder {
  int number = 0;  ///< of the game in its tourney
  std::string white;
  std::string black;
  std::string batch_file;
  std::string pgn_file;
  std::string debug_file;  ///< WinBoard writes it; its line "GameEnds(.." tells the end
  std::string claim_file;  ///< play/claim.h
  /// Put behind the words of the batch file, with a blank behind them. Of an adopted game they are
  /// not known.
  std::string more_words = {};
  std::string job = {};  ///< what a scheduler knows it by; empty for one played on this machine
};

/// Whether both mean the same game: the number and both names agree.
inline bool IsSameGame(const GameOrder& a, const GameOrder& b) {
  return a.number == b.number && a.white == b.white && a.black == b.black;
}

}  // namespace tarvendo
