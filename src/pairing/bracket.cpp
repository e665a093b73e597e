#include "pairing/bracket.h"

#include <algorithm>

namespace tarvendo {

void Bracket::Add(int player_number, int colour_state) {
  BracketEntry entry;
  entry.number = player_number;
  entry.colour_state = colour_state;
  entries_.push_back(entry);
  members_.Insert(PairingField::SeatOf(player_number));
  ++free_count_;
}

void Bracket::Remove(std::size_t place) {
  members_.Erase(PairingField::SeatOf(entries_[place].number));
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(place));
  --free_count_;
}

void Bracket::MoveDown(std::size_t place, Bracket& next) {
  BracketEntry& entry = entries_[place];
  entry.absent = true;
  floated_out_.push_back(place);
  --free_count_;
  next.Add(entry.number, entry.colour_state);
  next.floaters_in_.push_back(entry.number);
}

void Bracket::UndoMoveDown(Bracket& next) {
  next.Remove(next.Size() - 1);
  next.floaters_in_.pop_back();
  entries_[floated_out_.back()].absent = false;
  floated_out_.pop_back();
  ++free_count_;
}

void Bracket::Absorb(const Bracket& other) {
  entries_.insert(entries_.end(), other.entries_.begin(), other.entries_.end());
  members_ |= other.members_;
  free_count_ += other.free_count_;
}

void Bracket::RecordPair(std::size_t place, std::size_t other_place) {
  entries_[place].partner = entries_[other_place].number;
  entries_[other_place].partner = entries_[place].number;
  free_count_ -= 2;
}

void Bracket::ForgetPair(std::size_t place) {
  entries_[place].partner = kUnpaired;
}

std::size_t Bracket::PlaceOf(int player_number) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const BracketEntry& entry) {
    return entry.number == player_number;
  });
  return static_cast<std::size_t>(found - entries_.begin());
}

bool CanPair(const PairingField& field, const BracketEntry& entry, const BracketEntry& other,
             ColourLevel level) {
  if (entry.absent || other.absent || field.HasMet(entry.number, other.number)) return false;
  return !field.ColoursCount() || ColoursAllowPair(entry.colour_state, other.colour_state, level);
}

bool HasPossiblePartner(const PairingField& field, const Bracket& bracket, std::size_t place) {
  const Seat seat = PairingField::SeatOf(bracket.Entries()[place].number);
  return !bracket.Members().IsWithin(field.OpponentsOf(seat));
}

bool IsMovable(const PairingField& field, const BracketEntry& entry, const Bracket& next) {
  return entry.IsFree() &&
         !next.Members().IsWithin(field.OpponentsOf(PairingField::SeatOf(entry.number)));
}

}  // namespace tarvendo
