#include "pairing/swiss_driver.h"

#include <algorithm>
#include <utility>

#include "base/log.h"
#include "pairing/bracket_list.h"
#include "tourney/standings.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// A size as the user is shown it: in quarter points, and as it was typed.
int ShownQuarterPoints(BracketSize size) {
  return static_cast<int>(2U * static_cast<unsigned>(size.half_points));
}

bool IsUndecided(const Game& game) {
  return !game.IsReady() || game.result == kUnknown;
}

bool FormerRoundsAreDecided(const Tourney& tourney) {
  return std::none_of(tourney.Games().begin(), tourney.Games().end(), [&](const Game& game) {
    return game.round < tourney.State().round && IsUndecided(game);
  });
}

}  // namespace

SwissSearch::SwissSearch(const Tourney& tourney, const BracketList& brackets)
    : brackets_(brackets), field_(MakePairingField(tourney)), round_(tourney.State().round) {}

std::optional<SwissSearch> SwissSearch::Begin(Tourney& tourney, BracketList& brackets,
                                              const PairingRequest& request) {
  if (!tourney.IsSwiss()) {
    Print("This is not a swiss tourney, so no swiss round can be paired!\n");
    Print("Try CreateRRGames instead.\n");
    return std::nullopt;
  }
  UpdateStandingsAndRound(tourney);
  const int round = tourney.State().round;
  Print("Pairing swiss round %d... ", round);
  brackets.clock.SetLimit(request.time_limit);
  if (!FormerRoundsAreDecided(tourney)) {
    Print(
        "There are games that are either not played or whose result is unknown on former "
        "rounds.\n");
    Print("Therefore pairing for round %d can't be done.\n", round);
    return std::nullopt;
  }
  return SwissSearch(tourney, brackets);
}

SearchEnd SwissSearch::Run(const PairingRequest& request) {
  return request.automatic ? PairAutomatically() : PairAsAsked(request);
}

void SwissSearch::Finish(Tourney& tourney, BracketList& brackets, SearchEnd end) {
  brackets.chain = std::move(brackets_.chain);
  if (end == SearchEnd::kFound) CreateGames(tourney, brackets);
}

SearchEnd SwissSearch::PairAsAsked(const PairingRequest& request) {
  if (request.down) {
    Print("Pairing Down, Bracket size %d...\n", ShownQuarterPoints(request.size));
    const auto paired = TryShape(WidthOf(request.size), BracketMode::kPairDown);
    if (!paired || *paired) return paired ? SearchEnd::kFound : SearchEnd::kFailed;
    Print("failed.\n");
  }
  if (!request.up) return SearchEnd::kFailed;
  Print("Pairing Up, Bracket size %d...\n", ShownQuarterPoints(request.size));
  const auto paired = TryShape(WidthOf(request.size), BracketMode::kPairUp);
  if (paired && !*paired) Print("failed.\n");
  return paired.value_or(false) ? SearchEnd::kFound : SearchEnd::kFailed;
}

SearchEnd SwissSearch::PairAutomatically() {
  for (int half_points = 0; half_points < round_; ++half_points) {
    const BracketWidth width = WidthOf(BracketSize{half_points});
    const auto down = TryShape(width, BracketMode::kPairDown);
    if (!down || *down) return down ? SearchEnd::kFound : SearchEnd::kFailed;
    Print(" DOWN(%d)", width.quarter_points);
    const auto up = TryShape(width, BracketMode::kPairUp);
    if (!up || *up) return up ? SearchEnd::kFound : SearchEnd::kFailed;
    Print(" UP(%d)", width.quarter_points);
  }
  return PairOneBigBracket();
}

SearchEnd SwissSearch::PairOneBigBracket() {
  const auto paired = TryShape(BracketWidth{}, BracketMode::kOneBig);
  if (paired.value_or(false)) return SearchEnd::kFound;
  if (paired) {
    Print(
        "\nEven pairing one big bracket failed!\n"
        "In order to continue you should either give more time or do some pairing manually.\n");
  }
  return SearchEnd::kGivenUp;
}

std::optional<bool> SwissSearch::TryShape(BracketWidth width, BracketMode mode) {
  if (!CreateBrackets(field_, brackets_, width, mode)) {
    Print("Can't create brackets. Maybe there are still games to be played?\n");
    return std::nullopt;
  }
  return PairAll(field_, brackets_);
}

bool PairSwissRound(Tourney& tourney, BracketList& brackets, const PairingRequest& request) {
  auto search = SwissSearch::Begin(tourney, brackets, request);
  if (!search) return false;
  const SearchEnd end = search->Run(request);
  search->Finish(tourney, brackets, end);
  return end != SearchEnd::kFailed;
}

}  // namespace tarvendo
