#include "pairing/bracket_games.h"

#include "pairing/colour_rules.h"

namespace tarvendo {
namespace {

/// Whether the player of `entry` gets White against that of `other`.
bool GetsWhite(const BracketEntry& entry, const BracketEntry& other, ColourToggle& toggle) {
  if (entry.colour_state == other.colour_state) return toggle.FirstGetsWhite();
  if (entry.colour_state > other.colour_state) return IsDueWhite(entry.colour_state);
  return !IsDueWhite(other.colour_state);
}

std::vector<std::size_t> PlacesBySeat(const Bracket& bracket, std::size_t seats) {
  std::vector<std::size_t> place_of(seats, bracket.Size());
  for (std::size_t place = 0; place < bracket.Size(); ++place) {
    const BracketEntry& entry = bracket.Entries()[place];
    if (!entry.absent) place_of[PairingField::SeatOf(entry.number)] = place;
  }
  return place_of;
}

}  // namespace

std::vector<ColouredPair> TakePairs(Bracket& bracket, ColourToggle& toggle) {
  std::vector<ColouredPair> pairs;
  const std::size_t seats = bracket.Members().WordCount() * PlayerSet::kWordBits;
  const std::vector<std::size_t> place_of = PlacesBySeat(bracket, seats);
  for (std::size_t place = 0; place < bracket.Size(); ++place) {
    const BracketEntry entry = bracket.Entries()[place];
    if (!entry.IsPaired()) continue;
    const std::size_t other_place = place_of[PairingField::SeatOf(entry.partner)];
    const BracketEntry other = bracket.Entries()[other_place];
    bracket.ForgetPair(place);
    bracket.ForgetPair(other_place);
    const bool white = GetsWhite(entry, other, toggle);
    pairs.push_back(white ? ColouredPair{entry.number, other.number}
                          : ColouredPair{other.number, entry.number});
  }
  return pairs;
}

}  // namespace tarvendo
