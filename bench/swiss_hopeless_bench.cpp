// How soon is it told that a round cannot be paired? Everybody has met everybody; the round is 9,
// so that all shapes of brackets are tried.

#include <benchmark/benchmark.h>

#include "swiss_simulation.h"

namespace tarvendo {
namespace {

/// Lets every pair meet in the first round; the results take turns.
void LetAllMeet(Tourney& tourney) {
  static constexpr int kResults[] = {kWhiteWins, kDraw, kBlackWins, kWhiteWins, kDraw};
  const int participants = static_cast<int>(tourney.Participants().size());
  for (int white = 1; white <= participants; ++white) {
    for (int black = white + 1; black <= participants; ++black) {
      Game game;
      game.white = white;
      game.black = black;
      game.round = 1;
      game.status = kReady;
      game.result = kResults[(white * 7 + black) % 5];
      for (const int number : {white, black}) {
        const int place = static_cast<int>(tourney.Games().size());
        tourney.Change(*tourney.FindParticipant(number))->games.push_back(place);
      }
      tourney.ChangeGames().push_back(game);
    }
  }
}

void SwissRoundThatCannotBePaired(benchmark::State& state) {
  SwissSimulation simulation(1, static_cast<int>(state.range(0)), 100);
  LetAllMeet(simulation.tourney);
  simulation.tourney.ChangeState()->round = 9;
  for (auto unused : state) {
    if (simulation.Pair()) state.SkipWithError("the round was paired");
  }
}

BENCHMARK(SwissRoundThatCannotBePaired)->Arg(20)->Arg(200)->Arg(500)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvendo
