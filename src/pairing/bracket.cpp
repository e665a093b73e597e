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

void Bracket::Remove(std::size_t index) {
  members_.Erase(PairingField::SeatOf(entries_[index].number));
  entries_.erase(entries_.begin() + static_cast<std::ptrdiff_t>(index));
  --free_count_;
}

void Bracket::MoveDown(std::size_t index, Bracket& next) {
  BracketEntry& entry = entries_[index];
  entry.absent = true;
  floated_out_.push_back(index);
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

void Bracket::RecordPair(std::size_t index, std::size_t other_index) {
  entries_[index].partner = entries_[other_index].number;
  entries_[other_index].partner = entries_[index].number;
  free_count_ -= 2;
}

void Bracket::ForgetPair(std::size_t index) {
  entries_[index].partner = kUnpaired;
}

std::size_t Bracket::EntryOf(int player_number) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const BracketEntry& entry) {
    return entry.number == player_number;
  });
  return static_cast<std::size_t>(found - entries_.begin());
}

bool HasPossiblePartner(const PairingField& field, const Bracket& bracket, std::size_t index) {
  const Seat seat = PairingField::SeatOf(bracket.Entries()[index].number);
  return !bracket.Members().IsWithin(field.OpponentsOf(seat));
}

bool IsMovable(const PairingField& field, const BracketEntry& entry, const Bracket& next) {
  return entry.IsFree() &&
         !next.Members().IsWithin(field.OpponentsOf(PairingField::SeatOf(entry.number)));
}

}  // namespace tarvendo
