#include "runner/pairer.h"

#include <cstdint>
#include <optional>

#include "pairing/bracket_list.h"
#include "pairing/swiss_driver.h"
#include "runner/tourney_room.h"

namespace tarvendo {

PairerResult PairNextRound(TourneyRoom& room) {
  const PairingRequest request;
  std::optional<SwissSearch> search;
  std::uint64_t version = 0;
  {
    const Hold hold = room.shared.Take();
    search = SwissSearch::Begin(*hold, room.brackets.With(hold), request);
    if (!search) return PairerResult::kFailed;
    version = hold->Version();
  }
  const SearchEnd end = search->Run(request);
  const Hold hold = room.shared.Take();
  if (hold->Version() != version) return PairerResult::kOvertaken;
  search->Finish(*hold, room.brackets.With(hold), end);
  return end == SearchEnd::kFailed ? PairerResult::kFailed : PairerResult::kPaired;
}

}  // namespace tarvendo
