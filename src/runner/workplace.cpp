#include "runner/workplace.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/log.h"
#include "base/text.h"
#include "platform/files.h"
#include "runner/adoption.h"
#include "runner/collect.h"
#include "runner/framed_text.h"
#include "runner/half_saved.h"
#include "runner/hindrances.h"
#include "runner/pgn_journal.h"

namespace tarvendo {
namespace {

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

Workplace::Entry Workplace::Enter(const std::string& files_path, Hindrances& hindrances,
                                  TimePoint now, std::size_t& adopted) {
  if (!TakeDirectory(files_path, hindrances, now)) return Entry::kHindered;
  if (!is_fresh_) return Entry::kDone;
  if (!BeginWithOpenings(hindrances, now)) return Entry::kHindered;
  adopted += AdoptGames();
  return is_fresh_ ? Entry::kNothing : Entry::kDone;
}

bool Workplace::TakeDirectory(const std::string& files_path, Hindrances& hindrances,
                              TimePoint now) {
  if (directory_.Holds(files_path)) return true;
  if (!directory_.Take(files_path)) {
    was_kept_waiting_ = true;
    hindrances.Hinder(TextOfHeldFile(DirectoryLock::FileIn(files_path)), now);
    return false;
  }
  is_fresh_ = true;
  if (!std::exchange(was_kept_waiting_, false)) return true;
  // Whoever was at work here may have saved what this program does not know of.
  const Hold hold = room_.shared.Take();
  room_.file.With(hold).StopIfChangedByOthers(*hold);
  return hold->Switch().IsRunning();
}

bool Workplace::BeginWithOpenings(Hindrances& hindrances, TimePoint now) {
  const Hold hold = room_.shared.Take();
  const auto begun = openings_.Begin(*hold, room_.host.files);
  if (begun == OpeningsInUse::Begun::kNotWritten) {
    const std::string file = OpeningsInUse::FileIn(hold->Settings().files_path);
    hindrances.Hinder("Error opening file for writing:  " + file + "\n", now);
  }
  return begun == OpeningsInUse::Begun::kGood;
}

/// Returns how many games were adopted. Games that a scheduler has and this game host does not take
/// over leave everything to be looked through again.
std::size_t Workplace::AdoptGames() {
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
  host_.Adopt(playing);
  is_fresh_ = leaves_jobs;
  has_collected_ = false;
  return playing.size();
}

void Workplace::Collect() {
  const Hold hold = room_.shared.Take();
  CollectAll(*hold, room_.host.files, room_.file.With(hold), room_.running.With(hold));
  has_collected_ = true;
}

}  // namespace tarvendo
