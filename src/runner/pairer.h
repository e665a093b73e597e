#pragma once

namespace tarvendo {

struct TourneyRoom;

/// How an attempt to pair the next round of a Swiss tourney without the user has ended.
enum class PairerResult {
  kPaired,  ///< games were added, or not even the big bracket could be paired and the user was told
  kFailed,  ///< with the message of the pairing
  kOvertaken  ///< the tourney was changed meanwhile: the search was thrown away, nothing was added
};

/// Pairs the current round by the automatic mode, as PairSwissRound does, but searches without
/// holding the tourney, so that the console stays usable: a large field may take seconds. A search
/// that was overtaken leaves the brackets and the turn of the colours as they were. Called on the
/// runner's thread.
PairerResult PairNextRound(TourneyRoom& room);

}  // namespace tarvendo
