#pragma once

#include <string>
#include <vector>

#include "pairing/bracket.h"
#include "pairing/bracket_creation.h"
#include "pairing/pairing_clock.h"
#include "pairing/pairing_field.h"

namespace tarvendo {

class Clock;
class Tourney;

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

/// The score groups of the round to be paired, from the first to be paired to the last, with what
/// outlives them: the clock of the search and the turn of the colours. There is one for the
/// tourney, as long as the program runs. Used by the tourney's holder only.
class BracketList {
 public:
  /// No brackets. `host_clock` must outlive it.
  explicit BracketList(Clock& host_clock);

  /// Drops the brackets: the participants they tell of are no longer the same.
  void Clear() { chain.clear(); }

  std::vector<Bracket> chain;
  PairingClock clock;
  ColourToggle toggle;
};

/// Builds the brackets anew for the current round (bracket_creation.h). Prints "%d brackets
/// created.\n", for one big bracket nothing. False, and no brackets, when everybody has a game in
/// the round.
bool CreateBrackets(const Tourney& tourney, BracketList& brackets, BracketWidth width,
                    BracketMode mode);

/// The same with a field that is known already.
bool CreateBrackets(const PairingField& field, BracketList& brackets, BracketWidth width,
                    BracketMode mode);

/// Prints all brackets that have entries, as BracketText tells them.
void ShowBrackets(const Tourney& tourney, const BracketList& brackets);

/// "\nBracket  1 (2.5)\n", with the points of the first entry, and a line for each entry such as
/// "     3. Ada             -  7. Ben\n"; "      ABSENT" stands at the end of one that floated.
/// Empty for a bracket without entries.
std::string BracketText(const Tourney& tourney, const Bracket& bracket);

/// Pairs the brackets, which must be as CreateBrackets left them, within the time limit. False when
/// it cannot be done, or when the time has run out, with a banner that says "Timeout!!!".
bool PairAll(const PairingField& field, BracketList& brackets);

/// Adds the games of all pairs, in the order of brackets and entries, to the current round; with
/// more sub-rounds the colours change from game to game of a pair. The pairs are forgotten. Prints
/// "Adding game ..." for each, and before it a bracket in which somebody stays unpaired.
void CreateGames(Tourney& tourney, BracketList& brackets);

/// Pairs one bracket by itself and adds its games. False with "No bracket number %d found!\n" or
/// "Pairing failed!\n"; otherwise prints the bracket first.
bool PairBracket(Tourney& tourney, BracketList& brackets, int number);

}  // namespace tarvendo
