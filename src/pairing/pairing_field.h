#pragma once

#include <cstddef>
#include <vector>

#include "base/scores.h"
#include "pairing/player_set.h"
#include "players/player.h"

namespace tarvendo {

class Tourney;

/// What the pairing knows of one participant.
struct Contender {
  QuarterPoints points = 0;
  bool has_game_in_round = false;    ///< of the round to be paired, played or not
  int colour_state = kNoColourWish;  ///< ColourState
};

/// The participants of one round to be paired and who has met whom: built once for a pairing, so
/// that the search never walks through the games. Used by one thread, read only while a pairing
/// runs.
class PairingField {
 public:
  /// The contenders in the order of the participant list: number 1 is the first. With more than one
  /// sub-round a pair plays both colours, so wishes for a colour do not count.
  PairingField(std::vector<Contender> contenders, int sub_rounds);

  /// Records that the players with these numbers (1-based) have met.
  void AddMeeting(int number, int other_number);

  std::size_t Size() const { return contenders_.size(); }
  int SubRounds() const { return sub_rounds_; }
  bool ColoursCount() const { return sub_rounds_ <= 1; }

  /// The contender with that number, 1 to Size().
  const Contender& Get(int number) const {
    return contenders_[static_cast<std::size_t>(number - 1)];
  }

  /// All that the player at that seat has met, himself included.
  const PlayerSet& OpponentsOf(Seat seat) const { return opponents_[seat]; }

  static Seat SeatOf(int number) { return static_cast<Seat>(number - 1); }

 private:
  std::vector<Contender> contenders_;
  int sub_rounds_;
  std::vector<PlayerSet> opponents_;
};

/// The field of the tourney's current round. Who has met whom is read from the histories, once: two
/// with a READY game between them, in either colour. In the last round of a Swiss tourney nobody
/// has a wish for a colour. The standings must have been computed.
PairingField MakePairingField(const Tourney& tourney);

}  // namespace tarvendo
