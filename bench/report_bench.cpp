// How long does the report take that --report writes again and again, from the tourney to its
// texts? To stay below: 100 ms for 100 participants and 10,000 games, 300 ms for 1,000 participants
// of a Swiss tourney and 11 rounds; and below 1 s the ratings of 1,000 participants who have played
// 100,000 games.

#include <benchmark/benchmark.h>

#include <random>

#include "publish/csv_files.h"
#include "publish/json_file.h"
#include "publish/page.h"
#include "publish/pgn_records.h"
#include "publish/report_model.h"
#include "report_tourney.h"

namespace tarvendo {
namespace {

/// Records as XBoard writes them, without the times.
std::string RecordsOf(const Tourney& tourney) {
  std::string pgn;
  for (const Game& game : tourney.Games()) {
    pgn += "[Event \"Bench\"]\n[Number \"" + std::to_string(game.number) + "\"]\n[White \"" +
           game.white_player + "\"]\n[Black \"" + game.black_player + "\"]\n[Result \"1-0\"]\n\n";
    for (int move = 1; move <= 60; ++move)
      pgn += std::to_string(move) + ". Nf3 Nc6 ";
    pgn += "\n{White mates} 1-0\n\n";
  }
  return pgn;
}

/// The tourney with its records in a file, which was read once, as it is while games are played.
class Reported {
 public:
  explicit Reported(ReportTourney& made) : made_(made), records_(made.host.files) {
    for (Game& game : made.tourney.ChangeGames()) {
      game.white_player = made.tourney.FindParticipant(game.white)->texts.name;
      game.black_player = made.tourney.FindParticipant(game.black)->texts.name;
    }
    const auto file = made.host.files.Create(path_);
    file->Write(RecordsOf(made.tourney));
    file->Close();
    records_.Look(path_);
  }
  ~Reported() { made_.host.files.Remove(path_); }
  Reported(const Reported&) = delete;
  Reported& operator=(const Reported&) = delete;

  void Measure(benchmark::State& state) {
    std::size_t page = 0;
    std::size_t all = 0;
    for (auto _ : state) {
      records_.Look(path_);
      const Report report = MakeReport(made_.tourney, records_, {}, 1000000000);
      page = ReportPage(report, {}).size();
      all =
          page + StandingsCsv(report).size() + GamesCsv(report).size() + ReportJson(report).size();
    }
    state.counters["page"] = static_cast<double>(page);
    state.counters["bytes"] = static_cast<double>(all);
  }

 private:
  ReportTourney& made_;
  std::string path_ = made_.host.files.FullPath("tarvendo-report-bench.pgn");
  PgnRecords records_;
};

/// Every pair of 100 has played twice, and 100 games more make 10,000.
void ReportOfARoundRobin(benchmark::State& state) {
  ReportTourney made(100, kRoundRobin);
  made.PlayEveryPair();
  made.PlayEveryPair();
  made.PlayRounds(2);
  Reported(made).Measure(state);
  state.counters["games"] = static_cast<double>(made.tourney.Games().size());
}

/// 300 participants, each pair once: the largest cross table that a page is meant for.
void ReportOfALargeRoundRobin(benchmark::State& state) {
  ReportTourney made(300, kRoundRobin);
  made.PlayEveryPair();
  Reported(made).Measure(state);
}

void ReportOfASwissTourney(benchmark::State& state) {
  ReportTourney made(1000, kSwiss);
  made.tourney.ChangeSettings()->rounds = 11;
  made.PlayRounds(11);
  Reported(made).Measure(state);
}

/// The records are read once, when the program starts: 10,000 games.
void ReadingTheRecords(benchmark::State& state) {
  ReportTourney made(100, kRoundRobin);
  made.PlayEveryPair();
  made.PlayEveryPair();
  const std::string path = made.host.files.FullPath("tarvendo-report-bench.pgn");
  {
    const auto file = made.host.files.Create(path);
    file->Write(RecordsOf(made.tourney));
    file->Close();
  }
  for (auto _ : state) {
    PgnRecords records(made.host.files);
    records.Look(path);
    benchmark::DoNotOptimize(records.Find({1, "", ""}));
  }
  made.host.files.Remove(path);
}

void RatingsOfAThousand(benchmark::State& state) {
  constexpr std::size_t kPlayers = 1000;
  std::mt19937 random(1);
  std::vector<PairScore> games;
  while (games.size() < static_cast<std::size_t>(state.range(0))) {
    const std::size_t a = random() % kPlayers;
    const std::size_t b = random() % kPlayers;
    if (a < b) games.push_back({a, b, static_cast<double>(random() % 3) / 2, 1});
  }
  for (auto _ : state) {
    const EloTable elo(kPlayers, games);
    benchmark::DoNotOptimize(elo.Of(0).elo);
  }
}

BENCHMARK(ReportOfARoundRobin)->Unit(benchmark::kMillisecond);
BENCHMARK(ReportOfALargeRoundRobin)->Unit(benchmark::kMillisecond);
BENCHMARK(ReportOfASwissTourney)->Unit(benchmark::kMillisecond);
BENCHMARK(ReadingTheRecords)->Unit(benchmark::kMillisecond);
BENCHMARK(RatingsOfAThousand)->Arg(5500)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace tarvendo
