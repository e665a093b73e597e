#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

#include "pairing/bracket.h"
#include "pairing/pairing_field.h"
#include "pairing/player_set.h"

namespace tarvendo {

/// Who may be paired with whom, as a graph over the seats of a field. Read only once it is made.
class PairGraph {
 public:
  /// A graph without any pair.
  explicit PairGraph(std::size_t seats) : partners_(seats, PlayerSet(seats)) {}

  std::size_t SeatCount() const { return partners_.size(); }
  bool IsAllowed(Seat seat, Seat other) const { return partners_[seat].Contains(other); }

  /// All that the player at that seat may be paired with.
  const PlayerSet& PartnersOf(Seat seat) const { return partners_[seat]; }
  PlayerSet& PartnersOf(Seat seat) { return partners_[seat]; }

 private:
  std::vector<PlayerSet> partners_;
};

/// The graphs of a chain of brackets, one for each colour level, each made when it is first asked
/// for.
class LevelGraphs {
 public:
  /// `field` must outlive the graphs. Wishes for a colour are those of the brackets' entries.
  LevelGraphs(const PairingField& field, const std::vector<Bracket>& brackets);

  const PairGraph& At(ColourLevel level);

 private:
  PairGraph Make(ColourLevel level) const;

  const PairingField& field_;
  PlayerSet players_;
  std::vector<int> colour_states_;  ///< by seat
  std::array<std::optional<PairGraph>, kMediumGivesWay + 1> graphs_;
};

}  // namespace tarvendo
