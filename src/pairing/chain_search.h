#pragma once

#include <cstddef>
#include <vector>

#include "pairing/bracket.h"
#include "pairing/pairing_clock.h"
#include "pairing/pairing_field.h"

namespace tarvendo {

/// What a search says of the chain from a bracket on.
enum class PairingCode {
  kPaired = 0,
  kNotPaired = 1,          ///< the first pass failed, or this bracket alone cannot be paired
  kRestFailed = 2,         ///< this bracket can be paired, the rest of the chain not
  kFloatersExhausted = 4,  ///< no choice of floaters helped
  kMergeFailed = 6,        ///< not even one bracket of all that follow can be paired
  kOddCount = 7,           ///< an odd number of players is free
  kTimeOut = 8,
};

/// Pairs a chain of brackets as MakeBrackets left it, within the limit of the clock, which it
/// restarts. On success every bracket holds its pairs; players who floated are absent in the
/// brackets they left, and brackets that were merged are one. Otherwise the chain is as it was.
/// Prints nothing. See docs/swiss-search.md.
PairingCode PairBracketChain(const PairingField& field, std::vector<Bracket>& chain,
                             PairingClock& clock);

}  // namespace tarvendo
