#include "pairing/bracket_task.h"

namespace tarvendo {

PlayerSet BracketTask::FreeSet(std::size_t seats) const {
  PlayerSet set(seats);
  for (const Seat seat : free)
    set.Insert(seat);
  return set;
}

BracketTask MakeTask(const Bracket& bracket) {
  BracketTask task;
  for (const BracketEntry& entry : bracket.Entries()) {
    if (entry.IsFree()) task.free.push_back(PairingField::SeatOf(entry.number));
  }
  for (const int number : bracket.FloatersIn()) {
    const std::size_t place = bracket.PlaceOf(number);
    if (place == bracket.Size() || bracket.Entries()[place].IsPaired()) continue;
    if (bracket.Entries()[place].absent) {
      task.stops_after_choosers = true;
      break;
    }
    task.choosers.push_back(PairingField::SeatOf(number));
  }
  return task;
}

}  // namespace tarvendo
