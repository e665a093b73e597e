#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "pairing/bracket_task.h"
#include "pairing/matching.h"
#include "pairing/pair_graph.h"

namespace tarvendo {

using SeatPair = std::pair<Seat, Seat>;

/// Whether everybody free in the bracket can be paired. `scratch` is any matching of the field; the
/// better it fits, the faster the answer. It then holds such a pairing, unless choosers are needed.
bool HasPairing(const PairGraph& graph, const BracketTask& task, Matching& scratch);

/// The pairing that a search trying everything in order would find first. Each floater in turn
/// takes the first free player (in the order of entries) that leaves the rest pairable. Then the
/// first free player of n does: its candidates are those from the place n / 2 behind it to the end,
/// so that the top half meets the bottom half, and then those between; and so on until nobody is
/// free. Nothing when there is no pairing. See first_pairing.cpp.
std::optional<std::vector<SeatPair>> FirstPairing(const PairGraph& graph, const BracketTask& task);

}  // namespace tarvendo
