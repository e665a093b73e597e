#include "runner/play_loop.h"

#include <algorithm>

#include "base/log.h"
#include "base/text.h"
#include "platform/files.h"
#include "play/claim.h"
#include "play/game_files.h"
#include "runner/adoption.h"
#include "runner/batch_file.h"
#include "runner/collect.h"
#include "runner/half_saved.h"
#include "runner/pairer.h"
#include "runner/pgn_journal.h"
#include "runner/spool.h"
#include "tourney/bye.h"
#include "tourney/runner_switch_commands.h"

namespace tarvendo {
namespace {

constexpr int kTriesBetweenMessages = 10;

constexpr std::chrono::seconds kClockLook{10};

std::string Framed(const std::string& message) {
  const std::string stars(52, '*');
  return "\n" + stars + "\n" + message + stars + "\n> ";
}

std::string AccessMessage(const std::string& file) {
  return Framed("Something is accessing '" + file + "',\ncan't run a game before it's free.\n");
}

/// Takes the games that a scheduler has out of `playing`. When there are any, nothing can be played
/// without knowing what has become of them: the runner is stopped.
bool LeaveJobs(Tourney& tourney, std::vector<GameOrder>& playing) {
  const auto has_job = [](const GameOrder& order) { return !order.job.empty(); };
  const auto first = std::find_if(playing.begin(), playing.end(), has_job);
  if (first == playing.end()) return false;
  PrintText(Framed(
      Format("Games that were handed to a scheduler: %d,\nthe first is game no. %d. "
             "Start the program with '--cluster' to\ntake them over. Stopping "
             "runner.\n",
             static_cast<int>(std::count_if(first, playing.end(), has_job)), first->number)));
  std::erase_if(playing, has_job);
  tourney.ChangeSwitch()->SetRunning(false);
  return true;
}

}  // namespace

PlayLoop::PlayLoop(TourneyRoom& room, GameHost& host, const PlayPace& pace,
                   std::optional<Openings> openings)
    : room_(room),
      host_(host),
      pace_(pace),
      referee_(room.host, pace.referee),
      directory_(room.host.files),
      openings_(std::move(openings)) {
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
    StartRunner(*hold);
  } else if (hold->ChangeSwitch()->TakeStopTime(now)) {
    StopRunner(*hold);
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
    tries_until_message_ = 0;
    blocked_.clear();
    start_at_ = now + pace_.between_games;
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
  if (!IsSwitchedOn(now) || now < start_at_ || !Refusal().empty()) return;
  if (now >= blocked_until_) blocked_.clear();
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
    tries_until_message_ = 0;
    failures_ = 0;
    blocked_.clear();
    has_collected_ = false;
    start_at_ = now;
  } else if (!is_on_ && games_under_way_ == 0) {
    is_idle_ = true;
    directory_.Release();
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
  if (!TakeDirectory(files_path, now)) return Attempt::kHindered;
  if (is_fresh_ && !BeginWithOpenings(now)) return Attempt::kHindered;
  if (is_fresh_) AdoptGames();
  if (is_fresh_) return Attempt::kNothingToDo;
  if (!IsPlaceFree(files_path, now)) return Attempt::kHindered;
  CollectWhatIsThere();
  PlanAttempt tried = NewAttempt();
  Attempt attempt = Attempt::kAgain;
  while (attempt == Attempt::kAgain)
    attempt = TakeStep(tried, now);
  return attempt;
}

bool PlayLoop::TakeDirectory(const std::string& files_path, TimePoint now) {
  if (directory_.Holds(files_path)) return true;
  if (!directory_.Take(files_path)) {
    was_kept_waiting_ = true;
    Hinder(AccessMessage(DirectoryLock::FileIn(files_path)), now);
    return false;
  }
  is_fresh_ = true;
  if (!std::exchange(was_kept_waiting_, false)) return true;
  // Whoever was at work here may have saved what this program does not know of.
  const Hold hold = room_.shared.Take();
  room_.file.With(hold).StopIfChangedByOthers(*hold);
  return hold->Switch().IsRunning();
}

bool PlayLoop::BeginWithOpenings(TimePoint now) {
  const Hold hold = room_.shared.Take();
  const auto begun = openings_.Begin(*hold, room_.host.files);
  if (begun == OpeningsInUse::Begun::kNotWritten) {
    const std::string file = OpeningsInUse::FileIn(hold->Settings().files_path);
    Hinder("Error opening file for writing:  " + file + "\n", now);
  }
  return begun == OpeningsInUse::Begun::kGood;
}

void PlayLoop::AdoptGames() {
  const bool adopts_jobs = host_.AdoptsJobs();
  std::vector<GameOrder> playing;
  bool leaves_jobs = false;
  {
    const Hold hold = room_.shared.Take();
    RemoveHalfSaved(*hold, room_.host.files, room_.file.With(hold));
    RunningGames& running = room_.running.With(hold);
    playing = FindGamesToAdopt(*hold, room_.host.files, running);
    SettleJournal(*hold, room_.host.files, room_.file.With(hold));
    leaves_jobs = !adopts_jobs && LeaveJobs(*hold, playing);
    for (const GameOrder& order : playing)
      running.Add(order);
  }
  games_under_way_ += playing.size();
  host_.Adopt(playing);
  is_fresh_ = leaves_jobs;
  has_collected_ = false;
}

bool PlayLoop::IsPlaceFree(const std::string& files_path, TimePoint now) {
  const std::optional<Obstacle> obstacle = host_.FindObstacle(files_path, now);
  if (!obstacle) return true;
  if (!obstacle->tell_at) return false;
  if (*obstacle->tell_at <= now) {
    Hinder(AccessMessage(obstacle->file), now);
  } else {
    look_at_ = obstacle->tell_at;
  }
  return false;
}

void PlayLoop::CollectWhatIsThere() {
  // Records that come from elsewhere are rare, and with many games each look at all of them costs
  // more than a game.
  if (pace_.referee == RefereePace::kInGroups && has_collected_) return;
  const Hold hold = room_.shared.Take();
  CollectAll(*hold, room_.host.files, room_.file.With(hold), room_.running.With(hold));
  has_collected_ = true;
}

PlayLoop::Attempt PlayLoop::TakeStep(PlanAttempt& attempt, TimePoint now) {
  Plan plan;
  {
    const Hold hold = room_.shared.Take();
    plan = PlanNextStep(*hold, room_.running.With(hold), attempt, blocked_);
    const std::string& files_path = hold->Settings().files_path;
    // An empty or bad FilesPath leaves the current directory as it is.
    const bool is_final = plan.step == PlanStep::kStart || plan.step == PlanStep::kBye ||
                          plan.step == PlanStep::kWait;
    if (is_final && !files_path.empty()) room_.host.files.ChangeDirectory(files_path);
    if (plan.step == PlanStep::kSwitchOff) hold->ChangeSettings()->auto_run = 0;
    if (plan.step == PlanStep::kReplay) {
      attempt.failed_to_replay = !ReplayUnfinished(*hold, room_.host.files);
    }
  }
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
      return blocked_.empty() ? Attempt::kNothingToDo : Attempt::kHindered;
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
  {
    const Hold hold = room_.shared.Take();
    const Game* game = hold->FindGame(number);
    const bool is_startable =
        game != nullptr && game->status == kSpooled && !ResultByBye(*hold, *game);
    if (!is_startable) return Attempt::kAgain;
    const std::string batch_file = game->bat_file;
    const std::string claim_file = ClaimFileOf(game->pgn_file);
    const auto opening = openings_.WordsFor(*hold, room_.host.files, *game);
    if (!opening) return Attempt::kHindered;
    // What is being played must be known to the next start, or it would play the game a second
    // time.
    TourneyFile& file = room_.file.With(hold);
    if (pace_.referee == RefereePace::kAtOnce && file.HasChanged(*hold)) file.AutoSave(*hold);
    if (!hold->Switch().IsRunning()) return Attempt::kNothingToDo;
    switch (PrepareGame(*hold, room_.host, *game, debug_file, prepared)) {
      case Preparation::kReady:
        break;
      case Preparation::kBeingPlayed:
        Block(number, AccessMessage(claim_file), now);
        return Attempt::kAgain;
      case Preparation::kNoBatchFile:
        Hinder("Error opening file for writing:  " + batch_file + "\n", now);
        return Attempt::kHindered;
      case Preparation::kNoClaim:
        Hinder("Error opening file for writing:  " + claim_file + "\n", now);
        return Attempt::kHindered;
    }
    prepared.order.more_words = *opening;
    room_.running.With(hold).Add(prepared.order);
  }
  ++games_under_way_;
  const bool saves_later = pace_.referee == RefereePace::kInGroups;
  if (saves_later && !settle_at_) settle_at_ = NextSettle(now);
  host_.Start(prepared.order, std::move(prepared.claim));
  return Attempt::kStarted;
}

PlayLoop::Attempt PlayLoop::TakeBye(int number, TimePoint now) {
  bool is_round_due = false;
  {
    const Hold hold = room_.shared.Take();
    const Game* game = hold->FindGame(number);
    if (game == nullptr || game->status != kSpooled) return Attempt::kAgain;
    // A game that was begun before its player became a bye is played to its end.
    if (IsBeingPlayed(room_.host.files, game->pgn_file)) {
      Block(number, AccessMessage(ClaimFileOf(game->pgn_file)), now);
      return Attempt::kAgain;
    }
    is_round_due = referee_.JudgeBye(*hold, room_.file.With(hold), room_.running.With(hold), *game);
  }
  if (is_round_due) PairNextRound(room_);
  return Attempt::kStarted;
}

PlayLoop::Attempt PlayLoop::SpoolOne(PlanAttempt& attempt, TimePoint now) {
  const Hold hold = room_.shared.Take();
  const Game* next = hold->FirstGameToSpool();
  if (next == nullptr) {
    attempt.has_nothing_to_spool = !Spool(*hold, room_.host.files, 0);
    return Attempt::kAgain;
  }
  const int number = next->number;
  if (!SpoolSilently(*hold, room_.host.files, *next)) {
    const std::string batch_file = GameFileName(hold->Settings().files_path, number, ".BAT");
    Hinder("Error opening file for writing:  " + batch_file + "\n", now);
    return Attempt::kHindered;
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
  if (is_on_ && start_at_ > now) no_later_than(start_at_);
  no_later_than(look_at_);
  if (!blocked_.empty()) no_later_than(blocked_until_);
  no_later_than(settle_at_);
  no_later_than(switch_at_);
  return next;
}

void PlayLoop::Hinder(const std::string& message, TimePoint now) {
  PrintRarely(message);
  start_at_ = now + pace_.retry;
}

void PlayLoop::Block(int number, const std::string& message, TimePoint now) {
  PrintRarely(message);
  blocked_.push_back(number);
  blocked_until_ = now + pace_.retry;
}

void PlayLoop::PrintRarely(const std::string& message) {
  if (--tries_until_message_ >= 0) return;
  PrintText(message);
  tries_until_message_ = kTriesBetweenMessages;
}

}  // namespace tarvendo
