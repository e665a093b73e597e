#pragma once

#include <vector>

#include "pairing/bracket.h"
#include "pairing/pairing_field.h"

namespace tarvendo {

/// How far apart scores in a bracket may be, in the half points in which a user tells it.
struct BracketSize {
  int half_points = 0;
};

/// The same in quarter points, in which scores are kept.
struct BracketWidth {
  QuarterPoints quarter_points = 0;
};

/// Less than nothing counts as nothing. What is far wider than any two scores lie apart is cut to a
/// width that still is.
BracketWidth WidthOf(BracketSize size);

/// How the players are put into brackets.
enum class BracketMode {
  kPairUp = 1,    ///< from the lowest score up
  kPairDown = 2,  ///< from the highest score down
  kOneBig = 3,    ///< everybody in one bracket
};

/// The chain of brackets for the round to be paired, from the first to be paired to the last.
/// Players whose scores differ by no more than `width` share a bracket (less than nothing counts as
/// nothing), in the order of the participant list. A player who has met everybody else of a
/// bracket moves on to the next one; at the end of the chain the bracket is joined to the one
/// before it. Those who have a game in the round are left out, except in pairing up. Empty when
/// nobody is without a game; one big bracket is made even then, and nobody is moved in it. Prints
/// nothing.
std::vector<Bracket> MakeBrackets(const PairingField& field, BracketWidth width, BracketMode mode);

}  // namespace tarvendo
