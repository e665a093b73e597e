#include "runner/stub_play.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>

#include "play/claim.h"
#include "runner/pgn_text.h"
#include "tourney/round_robin.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr const char* kOpening = "one\ntwo\nthree\nfour\nfive\n";
constexpr const char* kEnd = "GameEnds(27, Black mates, 6)\n";

/// 7 for "/t/g7.BAT" and "/t/g7.place/g7.BAT".
int NumberOf(const std::string& batch_file) {
  return std::atoi(batch_file.substr(batch_file.rfind('/') + 2).c_str());
}

std::chrono::milliseconds LengthOf(int number) {
  return std::chrono::milliseconds(500 + number * 377 % 1000);
}

}  // namespace

std::string StubResultText(int number) {
  constexpr std::array<const char*, 3> kResults = {"1/2-1/2", "1-0", "0-1"};
  return kResults.at(static_cast<std::size_t>(number % 3));
}

int StubResult(int number) {
  constexpr std::array<int, 3> kResults = {kDraw, kWhiteWins, kBlackWins};
  return kResults.at(static_cast<std::size_t>(number % 3));
}

std::string StubRecord(int number) {
  const std::string result = StubResultText(number);
  return "[Event \"Computer chess game\"]\n[Site \"here\"]\n[Round \"-\"]\n[White \"w.exe\"]\n"
         "[Black \"b.exe\"]\n[Result \"" +
         result + "\"]\n\n1. e4 e5 {" + std::to_string(number) + "} " + result + "\n";
}

StubWinboard::StubWinboard(CapturedLog& machine) : machine_(machine) {
  machine_.processes.on_batch = [this](const std::string& path) { return Start(path); };
}

void StubWinboard::FailStart(int n, bool is_for_good) {
  fails_at_ = n == 0 ? 0 : starts_ + n;
  fails_for_good_ = is_for_good;
}

bool StubWinboard::Start(const std::string& batch_file) {
  ++starts_;
  const bool fails =
      fails_at_ > 0 && (starts_ == fails_at_ || (fails_for_good_ && starts_ > fails_at_));
  // A place that could not be prepared leaves no batch file to be started.
  if (fails || batch_file.empty()) return false;
  const int number = NumberOf(batch_file);
  const std::string claim_file = "/t/g" + std::to_string(number) + ".run";
  const auto order = ReadClaimText(machine_.files.Bytes(claim_file), claim_file);
  const BatchId id = machine_.processes.LastBatch();
  const std::string batch = machine_.files.Bytes(batch_file);
  const bool says_nothing = batch.empty() || batch.find('\0') != std::string::npos;
  if (!order || says_nothing || machine_.files.Has(order->pgn_file)) {
    machine_.processes.EndOf(id);
    return true;
  }
  ++plays_[number];
  machine_.files.PutMore(order->debug_file, kOpening);
  const TimePoint ends = machine_.clock.Steady() + LengthOf(number);
  games_[id] = {ends, number, order->debug_file, order->pgn_file};
  return true;
}

int StubWinboard::PlaysOf(int number) const {
  const auto plays = plays_.find(number);
  return plays == plays_.end() ? 0 : plays->second;
}

std::optional<TimePoint> StubWinboard::NextEnd() const {
  std::optional<TimePoint> next;
  for (const auto& [batch, game] : games_) {
    if (!next || game.ends < *next) next = game.ends;
  }
  return next;
}

void StubWinboard::EndGamesDue() {
  while (const auto next = NextEnd()) {
    if (*next > machine_.clock.Steady()) return;
    for (const auto& [batch, game] : std::map<BatchId, Played>(games_)) {
      if (game.ends == *next) End(batch, game);
    }
  }
}

void StubWinboard::EndAllGames() {
  for (const auto& [batch, game] : std::map<BatchId, Played>(games_))
    End(batch, game);
}

void StubWinboard::End(BatchId batch, const Played& game) {
  machine_.files.Put(game.pgn_file, StubRecord(game.number));
  machine_.files.PutMore(game.debug_file, kEnd);
  games_.erase(batch);
  machine_.processes.EndOf(batch);
  machine_.watches.Notify(game.debug_file);
}

StubProgram::StubProgram(CapturedLog& machine, StubWinboard& winboard, int places)
    : machine_(machine),
      winboard_(winboard),
      room(machine.host),
      tourney(*room.shared.Take()),
      file(room.file.With(room.shared.Take())) {
  const RunnerOptions options = places == 1 ? RunnerOptions() : ManyGames(places);
  host_ = std::make_unique<LocalHost>(machine_.host, options.game, places, [] {});
  loop_ = std::make_unique<PlayLoop>(room, *host_, options.play);
}

StubProgram::~StubProgram() = default;

void StubProgram::MakeTourney() {
  const auto settings = tourney.ChangeSettings();
  settings->files_path = "/t\\";
  settings->pgn_file = kStubPgn;
  settings->type = kRoundRobin;
  settings->auto_save = 1;
  settings->auto_run = 1;
  for (const char* name : {"Alpha", "Beta", "Gamma", "Delta"}) {
    Player player;
    player.texts.name = name;
    player.texts.program_exe = std::string(name) + ".exe";
    player.number = static_cast<int>(tourney.Participants().size()) + 1;
    tourney.ChangeParticipants().push_back(player);
  }
  constexpr std::array<std::array<int, 2>, kStubGames> kPairs = {
      {{1, 2}, {3, 4}, {3, 1}, {4, 2}, {1, 4}, {2, 3}}};
  int number = 0;
  for (const auto& pair : kPairs)
    tourney.AddGame(pair[0], pair[1], number++ / 2 + 1, 1);
  tourney.ChangeSwitch()->SetRunning(true);
  file.Save(tourney, kStubTourney);
}

bool StubProgram::LoadTourney() {
  if (!file.Load(tourney, kStubTourney) || tourney.Games().size() != kStubGames) return false;
  const std::string text = machine_.files.Bytes(kStubTourney);
  file.SaveBeside(tourney, "/t", "/t/again.ini");
  const bool is_whole = machine_.files.Bytes("/t/again.ini") == text;
  machine_.files.Remove("/t/again.ini");
  tourney.ChangeSwitch()->SetRunning(true);
  return is_whole;
}

void StubProgram::Play(std::chrono::milliseconds longest, const std::function<void()>& on_pass) {
  constexpr int kMostPasses = 5000;
  const TimePoint end = machine_.clock.Steady() + longest;
  for (int passes = 0; passes < kMostPasses; ++passes) {
    const auto next_pass = loop_->Pass();
    on_pass();
    auto next = winboard_.NextEnd();
    if (next_pass && (!next || *next_pass < *next)) next = next_pass;
    if (!next || *next > end) return;
    machine_.clock.Advance(*next - machine_.clock.Steady());
    winboard_.EndGamesDue();
  }
  ADD_FAILURE() << "the runner does not come to rest";
}

void StubProgram::Quit() {
  loop_->SettleAtEnd();
  file.AutoSave(tourney);
}

bool StubProgram::IsOver() {
  for (const Game& game : tourney.Games()) {
    if (!game.IsReady()) return false;
  }
  return true;
}

std::map<int, std::string> StubProgram::MergedGames() {
  std::map<int, std::string> merged;
  for (const Game& game : tourney.Games())
    merged[game.number] = MergedPgn(tourney, game, StubRecord(game.number));
  return merged;
}

}  // namespace tarvendo
