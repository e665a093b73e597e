#include "runner/play_loop.h"

#include <algorithm>
#include <utility>

#include "base/log.h"
#include "base/text.h"
#include "platform/files.h"
#include "play/claim.h"
#include "play/game_files.h"
#include "runner/batch_file.h"
#include "runner/framed_text.h"
#include "runner/pairer.h"
#include "runner/spool.h"
#include "tourney/bye.h"
#include "tourney/runner_switch_commands.h"

namespace tarvendo {
namespace {

constexpr std::chrono::seconds kClockLook{10};

}  // namespace

PlayLoop::PlayLoop(TourneyRoom& room, GameHost& host, const PlayPace& pace,
                   std::optional<Openings> openings)
    : room_(room),
      host_(host),
      pace_(pace),
      referee_(room.host, pace.referee),
      workplace_(room, host, std::move(openings)),
      hindrances_(pace.retry) {
  const Hold hold = room.shared.Take();
  referee_.GoBeforeSavesOf(room.file.With(hold));
}

std::optional<TimePoint> PlayLoop::Pass() {
  const TimePoint now = room_.host.clock.Steady();
  SwitchAtSetTimes();
  JudgeEnded(now);
  TellOfSilence(now);
  StartGames(now);
  SettleWhenDue(now);
  return NextPass();
}

void PlayLoop::SwitchAtSetTimes() {
  const Hold hold = room_.shared.Take();
  const long long now = room_.host.clock.Now();
  if (hold->ChangeSwitch()->TakeStartTime(now)) {
    SwitchRunnerOn(*hold);
  } else if (hold->ChangeSwitch()->TakeStopTime(now)) {
    SwitchRunnerOff(*hold);
  }
  const RunnerSwitch::State& state = hold->Switch().Get();
  switch_at_.reset();
  for (const long long time : {state.start_time, state.stop_time}) {
    if (time != 0) NoteSetTime(time - now);
  }
}

/// The time of day may be set while somebody waits for it, so the wait is never a long one.
void PlayLoop::NoteSetTime(long long seconds) {
  const auto span = std::chrono::seconds(std::clamp<long long>(seconds, 0, kClockLook.count()));
  const TimePoint moment = room_.host.clock.Steady() + span;
  if (!switch_at_ || moment < *switch_at_) switch_at_ = moment;
}

void PlayLoop::JudgeEnded(TimePoint now) {
  bool is_round_due = false;
  for (const GameOutcome& outcome : host_.TakeEnded(now)) {
    const Hold hold = room_.shared.Take();
    --games_under_way_;
    ++games_judged_;
    const bool is_due =
        referee_.Judge(*hold, room_.file.With(hold), room_.running.With(hold), outcome);
    is_round_due = is_due || is_round_due;
    CountFailure(*hold, outcome);
    hindrances_.Forget(now + pace_.between_games);
  }
  if (is_round_due) PairNextRound(room_);
}

void PlayLoop::CountFailure(Tourney& tourney, const GameOutcome& outcome) {
  if (outcome.IsGivenBack()) return;
  failures_ = outcome.ShowedLife() && outcome.pgn ? 0 : failures_ + 1;
  if (pace_.failures_allowed == 0 || failures_ < pace_.failures_allowed) return;
  const std::string reason_file = GameFileBeside(outcome.order.pgn_file, ".err");
  PrintText(
      Framed(Format("%d games in a row gave no sign of life or no record,\n"
                    "the last one was game no. %d. Stopping runner.\n"
                    "Look into '%s' for the reason, if it is there.\n",
                    failures_, outcome.order.number, reason_file.c_str())));
  failures_ = 0;
  tourney.ChangeSwitch()->StopItself();
}

void PlayLoop::TellOfSilence(TimePoint now) {
  for (const GameOrder& order : host_.TakeSilent(now)) {
    PrintError(Format("Game %d: its debug file '%s' has not grown for 30 minutes.\n", order.number,
                      order.debug_file.c_str()));
  }
}

void PlayLoop::StartGames(TimePoint now) {
  look_at_.reset();
  is_idle_ = false;
  if (!IsSwitchedOn(now) || !Refusal().empty() || !hindrances_.MayTry(now)) return;
  Attempt attempt = Attempt::kStarted;
  while (attempt == Attempt::kStarted)
    attempt = StartOne(now);
  // The attempt may have found a reason to stop the runner, and nobody else tells this thread so.
  if (!IsSwitchedOn(now) || attempt != Attempt::kNothingToDo) return;
  is_idle_ = games_under_way_ == 0;
}

bool PlayLoop::IsSwitchedOn(TimePoint now) {
  const Hold hold = room_.shared.Take();
  const bool was_on = std::exchange(is_on_, hold->Switch().IsRunning());
  switch_changes_ = hold->Switch().Changes();
  if (is_on_ && !was_on) {
    hindrances_.Forget(now);
    failures_ = 0;
    workplace_.BeginAnew();
  } else if (!is_on_ && games_under_way_ == 0) {
    is_idle_ = true;
    workplace_.Leave();
  }
  return is_on_;
}

PlanAttempt PlayLoop::NewAttempt() const {
  PlanAttempt attempt;
  attempt.failed_to_replay = !pace_.replays;
  return attempt;
}

PlayLoop::Attempt PlayLoop::StartOne(TimePoint now) {
  std::string files_path;
  {
    const Hold hold = room_.shared.Take();
    if (!hold->Switch().IsRunning()) return Attempt::kNothingToDo;
    files_path = hold->Settings().files_path;
  }
  switch (workplace_.Enter(files_path, hindrances_, now, games_under_way_)) {
    case Workplace::Entry::kDone:
      break;
    case Workplace::Entry::kHindered:
      return Attempt::kHindered;
    case Workplace::Entry::kNothing:
      return Attempt::kNothingToDo;
  }
  if (!IsPlaceFree(files_path, now)) return Attempt::kHindered;
  // Records that come from elsewhere are rare, and with many games each look at all of them costs
  // more than a game.
  if (pace_.referee == RefereePace::kAtOnce || !workplace_.HasCollected()) workplace_.Collect();
  PlanAttempt tried = NewAttempt();
  Attempt attempt = Attempt::kAgain;
  while (attempt == Attempt::kAgain)
    attempt = TakeStep(tried, now);
  return attempt;
}

bool PlayLoop::IsPlaceFree(const std::string& files_path, TimePoint now) {
  const std::optional<Obstacle> obstacle = host_.FindObstacle(files_path, now);
  if (!obstacle) return true;
  if (!obstacle->tell_at) return false;
  if (*obstacle->tell_at <= now) {
    hindrances_.Hinder(TextOfHeldFile(obstacle->file), now);
  } else {
    look_at_ = obstacle->tell_at;
  }
  return false;
}

/// The next step is planned, and what of it needs no more than the tourney is done.
Plan PlayLoop::PlanStepNow(PlanAttempt& attempt) {
  const Hold hold = room_.shared.Take();
  // The user may have stopped it since the attempt began, and what he does next orders no play.
  if (!hold->Switch().IsRunning()) return {PlanStep::kWait};
  const Plan plan = PlanNextStep(*hold, room_.running.With(hold), attempt, hindrances_.Blocked());
  const std::string& files_path = hold->Settings().files_path;
  // An empty or bad FilesPath leaves the current directory as it is.
  const bool is_final =
      plan.step == PlanStep::kStart || plan.step == PlanStep::kBye || plan.step == PlanStep::kWait;
  if (is_final && !files_path.empty()) room_.host.files.ChangeDirectory(files_path);
  if (plan.step == PlanStep::kSwitchOff) hold->ChangeSettings()->auto_run = 0;
  if (plan.step == PlanStep::kReplay) {
    attempt.failed_to_replay = !ReplayUnfinished(*hold, room_.host.files);
  }
  return plan;
}

PlayLoop::Attempt PlayLoop::TakeStep(PlanAttempt& attempt, TimePoint now) {
  const Plan plan = PlanStepNow(attempt);
  switch (plan.step) {
    case PlanStep::kStart:
      return StartGame(plan.game_number, now);
    case PlanStep::kBye:
      return TakeBye(plan.game_number, now);
    case PlanStep::kSpool:
      return SpoolOne(attempt, now);
    case PlanStep::kPair:
      PairRound(attempt);
      return Attempt::kAgain;
    case PlanStep::kWait:
      return hindrances_.Blocked().empty() ? Attempt::kNothingToDo : Attempt::kHindered;
    case PlanStep::kReplay:
    case PlanStep::kSwitchOff:
      break;
  }
  return Attempt::kAgain;
}

PlayLoop::Attempt PlayLoop::StartGame(int number, TimePoint now) {
  std::string files_path;
  {
    const Hold hold = room_.shared.Take();
    files_path = hold->Settings().files_path;
  }
  const std::string debug_file = host_.DebugFileFor(files_path, number);
  PreparedGame prepared;
  const Attempt attempt = MakeReady(number, debug_file, prepared, now);
  if (attempt != Attempt::kStarted) return attempt;
  ++games_under_way_;
  const bool saves_later = pace_.referee == RefereePace::kInGroups;
  if (saves_later && !settle_at_) settle_at_ = NextSettle(now);
  host_.Start(prepared.order, std::move(prepared.claim));
  return Attempt::kStarted;
}

PlayLoop::Attempt PlayLoop::MakeReady(int number, const std::string& debug_file,
                                      PreparedGame& prepared, TimePoint now) {
  const Hold hold = room_.shared.Take();
  const Game* game = hold->FindGame(number);
  const bool is_startable =
      game != nullptr && game->status == kSpooled && !ResultByBye(*hold, *game);
  if (!is_startable) return Attempt::kAgain;
  const std::string batch_file = game->bat_file;
  const std::string claim_file = ClaimFileOf(game->pgn_file);
  const auto opening = workplace_.OpeningsHere().WordsFor(*hold, room_.host.files, *game);
  if (!opening) return Attempt::kHindered;
  // What is being played must be known to the next start, or it would play the game a second time.
  TourneyFile& file = room_.file.With(hold);
  if (pace_.referee == RefereePace::kAtOnce && file.HasChanged(*hold)) file.AutoSave(*hold);
  if (!hold->Switch().IsRunning()) return Attempt::kNothingToDo;
  switch (PrepareGame(*hold, room_.host, *game, debug_file, prepared)) {
    case Preparation::kReady:
      break;
    case Preparation::kBeingPlayed:
      hindrances_.Block(number, TextOfHeldFile(claim_file), now);
      return Attempt::kAgain;
    case Preparation::kNoBatchFile:
      return HinderedByFile(batch_file, now);
    case Preparation::kNoClaim:
      return HinderedByFile(claim_file, now);
  }
  prepared.order.more_words = *opening;
  room_.running.With(hold).Add(prepared.order);
  return Attempt::kStarted;
}

PlayLoop::Attempt PlayLoop::HinderedByFile(const std::string& file, TimePoint now) {
  hindrances_.Hinder("Error opening file for writing:  " + file + "\n", now);
  return Attempt::kHindered;
}

PlayLoop::Attempt PlayLoop::TakeBye(int number, TimePoint now) {
  bool is_round_due = false;
  {
    const Hold hold = room_.shared.Take();
    if (!hold->Switch().IsRunning()) return Attempt::kNothingToDo;
    const Game* game = hold->FindGame(number);
    if (game == nullptr || game->status != kSpooled) return Attempt::kAgain;
    // A game that was begun before its player became a bye is played to its end.
    if (IsBeingPlayed(room_.host.files, game->pgn_file)) {
      hindrances_.Block(number, TextOfHeldFile(ClaimFileOf(game->pgn_file)), now);
      return Attempt::kAgain;
    }
    is_round_due = referee_.JudgeBye(*hold, room_.file.With(hold), room_.running.With(hold), *game);
  }
  if (is_round_due) PairNextRound(room_);
  return Attempt::kStarted;
}

PlayLoop::Attempt PlayLoop::SpoolOne(PlanAttempt& attempt, TimePoint now) {
  const Hold hold = room_.shared.Take();
  if (!hold->Switch().IsRunning()) return Attempt::kNothingToDo;
  const Game* next = hold->FirstGameToSpool();
  if (next == nullptr) {
    attempt.has_nothing_to_spool = !Spool(*hold, room_.host.files, 0);
    return Attempt::kAgain;
  }
  const int number = next->number;
  if (!SpoolSilently(*hold, room_.host.files, *next)) {
    const std::string batch_file = GameFileName(hold->Settings().files_path, number, ".BAT");
    return HinderedByFile(batch_file, now);
  }
  Print("Game %d spooled.\n", number);
  return Attempt::kAgain;
}

void PlayLoop::PairRound(PlanAttempt& attempt) {
  switch (PairNextRound(room_)) {
    case PairerResult::kPaired:
      attempt.has_paired = true;
      attempt.has_nothing_to_spool = false;
      break;
    case PairerResult::kFailed:
      attempt.failed_to_pair = true;
      break;
    case PairerResult::kOvertaken:
      attempt = NewAttempt();
      break;
  }
}

void PlayLoop::SettleWhenDue(TimePoint now) {
  if (pace_.referee == RefereePace::kAtOnce) return;
  if (referee_.HasUnsettled() && !settle_at_) settle_at_ = NextSettle(now);
  if (!settle_at_ || (now < *settle_at_ && !is_idle_)) return;
  Settle();
  if (referee_.HasUnsettled()) settle_at_ = now + pace_.next_save;
}

/// A large tourney takes long to save, and other work is to be done meanwhile. The results wait in
/// the games' own files.
TimePoint PlayLoop::NextSettle(TimePoint now) const {
  return now + std::max(pace_.grouping, pace_.grouping_share * settled_in_);
}

void PlayLoop::SettleAtEnd() {
  if (pace_.referee == RefereePace::kInGroups && referee_.HasUnsettled()) Settle();
}

void PlayLoop::Settle() {
  settle_at_.reset();
  const Hold hold = room_.shared.Take();
  const TimePoint begin = room_.host.clock.Steady();
  referee_.Settle(*hold, room_.file.With(hold), room_.running.With(hold));
  settled_in_ = room_.host.clock.Steady() - begin;
}

std::optional<TimePoint> PlayLoop::NextPass() const {
  std::optional<TimePoint> next = host_.NextLook();
  const auto no_later_than = [&](const std::optional<TimePoint>& moment) {
    if (moment && (!next || *moment < *next)) next = moment;
  };
  const TimePoint now = room_.host.clock.Steady();
  if (is_on_) no_later_than(hindrances_.NextTry(now));
  no_later_than(look_at_);
  no_later_than(hindrances_.EndOfBlocks());
  no_later_than(settle_at_);
  no_later_than(switch_at_);
  return next;
}

}  // namespace tarvendo
