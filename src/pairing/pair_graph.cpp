#include "pairing/pair_graph.h"

#include <map>

namespace tarvendo {
namespace {

/// For each wish among the players, those whose wishes forbid a pair with it at that level.
std::map<int, PlayerSet> ForbiddenByColour(const PlayerSet& players,
                                           const std::vector<int>& colour_states,
                                           ColourLevel level) {
  std::map<int, PlayerSet> with_state;
  players.ForEach([&](Seat seat) {
    with_state.try_emplace(colour_states[seat], colour_states.size()).first->second.Insert(seat);
  });
  std::map<int, PlayerSet> forbidden;
  for (const auto& [state, unused] : with_state) {
    PlayerSet& against = forbidden.try_emplace(state, colour_states.size()).first->second;
    for (const auto& [other, holders] : with_state) {
      if (!ColoursAllowPair(state, other, level)) against |= holders;
    }
  }
  return forbidden;
}

}  // namespace

LevelGraphs::LevelGraphs(const PairingField& field, const std::vector<Bracket>& brackets)
    : field_(field), players_(field.Size()), colour_states_(field.Size(), kNoColourWish) {
  for (const Bracket& bracket : brackets) {
    players_ |= bracket.Members();
    for (const BracketEntry& entry : bracket.Entries()) {
      colour_states_[PairingField::SeatOf(entry.number)] = entry.colour_state;
    }
  }
}

const PairGraph& LevelGraphs::At(ColourLevel level) {
  std::optional<PairGraph>& graph = graphs_[static_cast<std::size_t>(level)];
  if (!graph) graph = Make(level);
  return *graph;
}

PairGraph LevelGraphs::Make(ColourLevel level) const {
  PairGraph graph(field_.Size());
  const auto forbidden = ForbiddenByColour(players_, colour_states_, level);
  players_.ForEach([&](Seat seat) {
    PlayerSet& partners = graph.PartnersOf(seat);
    partners = players_;
    partners -= field_.OpponentsOf(seat);
    if (field_.ColoursCount()) partners -= forbidden.at(colour_states_[seat]);
  });
  return graph;
}

}  // namespace tarvendo
