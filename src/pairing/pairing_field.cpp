#include "pairing/pairing_field.h"

#include <utility>

namespace tarvendo {

PairingField::PairingField(std::vector<Contender> contenders, int sub_rounds)
    : contenders_(std::move(contenders)),
      sub_rounds_(sub_rounds),
      opponents_(contenders_.size(), PlayerSet(contenders_.size())) {
  for (Seat seat = 0; seat < contenders_.size(); ++seat)
    opponents_[seat].Insert(seat);
}

void PairingField::AddMeeting(int number, int other_number) {
  opponents_[SeatOf(number)].Insert(SeatOf(other_number));
  opponents_[SeatOf(other_number)].Insert(SeatOf(number));
}

}  // namespace tarvendo
