#pragma once

#include <vector>

#include "pairing/bracket.h"

namespace tarvendo {

/// A pair with its colours: participants' numbers.
struct ColouredPair {
  int white = 0;
  int black = 0;

  bool operator==(const ColouredPair&) const = default;
};

/// Decides between two players with the same wish for a colour: by turns, as long as the program
/// runs.
class ColourToggle {
 public:
  /// Whether the player who stands first gets White; the next answer is the other one. The first is
  /// no.
  bool FirstGetsWhite() {
    const bool answer = first_gets_white_;
    first_gets_white_ = !first_gets_white_;
    return answer;
  }

 private:
  bool first_gets_white_ = false;
};

/// Takes the pairs out of a bracket, in the order of entries, and gives them colours: the one with
/// the greater wish gets what it is due, between equal wishes the toggle decides.
std::vector<ColouredPair> TakePairs(Bracket& bracket, ColourToggle& toggle);

}  // namespace tarvendo
