#include "pairing/swiss_driver.h"

#include <algorithm>
#include <optional>

#include "base/log.h"
#include "pairing/bracket_list.h"
#include "pairing/tourney_field.h"
#include "tourney/standings.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// Far wider than any difference of scores, and its double is still a number.
constexpr int kWidestSize = 500'000'000;

/// The size in half points as a width in quarter points, as it is shown.
int QuarterPointsOf(int size) {
  return static_cast<int>(2U * static_cast<unsigned>(size));
}

int WidthOf(int size) {
  return std::clamp(size, 0, kWidestSize) * 2;
}

bool IsUndecided(const Game& game) {
  return !game.IsReady() || game.result == kUnknown;
}

bool FormerRoundsAreDecided(const Tourney& tourney) {
  return std::none_of(tourney.Games().begin(), tourney.Games().end(), [&](const Game& game) {
    return game.round < tourney.State().round && IsUndecided(game);
  });
}

/// One pairing of a round: the field is the same for every shape of brackets.
class RoundPairing {
 public:
  RoundPairing(Tourney& tourney, BracketList& brackets)
      : tourney_(tourney), brackets_(brackets), field_(MakePairingField(tourney)) {}

  bool PairAsAsked(const PairingRequest& request) {
    if (request.down) {
      Print("Pairing Down, Bracket size %d...\n", QuarterPointsOf(request.size));
      const auto paired = TryShape(WidthOf(request.size), BracketMode::kPairDown);
      if (!paired || *paired) return paired.value_or(false);
      Print("failed.\n");
    }
    if (!request.up) return false;
    Print("Pairing Up, Bracket size %d...\n", QuarterPointsOf(request.size));
    const auto paired = TryShape(WidthOf(request.size), BracketMode::kPairUp);
    if (paired && !*paired) Print("failed.\n");
    return paired.value_or(false);
  }

  bool PairAutomatically() {
    const int end = WidthOf(tourney_.State().round);
    for (int width = 0; width < end; width += 2) {
      const auto down = TryShape(width, BracketMode::kPairDown);
      if (!down || *down) return down.value_or(false);
      Print(" DOWN(%d)", width);
      const auto up = TryShape(width, BracketMode::kPairUp);
      if (!up || *up) return up.value_or(false);
      Print(" UP(%d)", width);
    }
    return PairOneBigBracket();
  }

 private:
  /// Whether the round is paired in brackets of this shape; nothing, with a message, when there are
  /// none.
  std::optional<bool> TryShape(int width, BracketMode mode) {
    if (!CreateBrackets(field_, brackets_, width, mode)) {
      Print("Can't create brackets. Maybe there are still games to be played?\n");
      return std::nullopt;
    }
    if (!PairAll(field_, brackets_)) return false;
    CreateGames(tourney_, brackets_);
    return true;
  }

  bool PairOneBigBracket() {
    const auto paired = TryShape(0, BracketMode::kOneBig);
    if (paired && !*paired) {
      Print(
          "\nEven pairing one big bracket failed!\n"
          "In order to continue you should either give more time or do some pairing manually.\n");
    }
    return true;
  }

  Tourney& tourney_;
  BracketList& brackets_;
  const PairingField field_;
};

}  // namespace

bool PairSwissRound(Tourney& tourney, BracketList& brackets, const PairingRequest& request) {
  if (!tourney.IsSwiss()) {
    Print("This is not a swiss tourney, so no swiss round can be paired!\n");
    Print("Try CreateRRGames instead.\n");
    return false;
  }
  CalculateStandings(tourney);
  Print("Pairing swiss round %d... ", tourney.State().round);
  brackets.clock.SetLimit(request.time_limit);
  if (!FormerRoundsAreDecided(tourney)) {
    Print(
        "There are games that are either not played or whose result is unknown on former "
        "rounds.\n");
    Print("Therefore pairing for round %d can't be done.\n", tourney.State().round);
    return false;
  }
  RoundPairing pairing(tourney, brackets);
  return request.automatic ? pairing.PairAutomatically() : pairing.PairAsAsked(request);
}

}  // namespace tarvendo
