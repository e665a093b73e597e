#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/clock.h"
#include "play/aside_command.h"
#include "play/game_order.h"
#include "play/slurm.h"

namespace tarvendo {

/// How often a scheduler is asked, and how long what it has done is awaited.
struct ClusterPace {
  std::chrono::milliseconds ask{2000};  ///< from one question to the next, at the least
  int ask_share = 5;                    ///< likewise, so many times as long as the last answer took
  std::chrono::milliseconds retry{60000};         ///< from a refusal to the next attempt
  std::chrono::milliseconds no_answer{60000};     ///< a command that takes so long gets none
  std::chrono::milliseconds giving_up{600000};    ///< and is ended
  std::chrono::milliseconds record_look{1000};    ///< between two looks for a record
  std::chrono::milliseconds waiting_look{60000};  ///< likewise, of a job that is queued
  std::chrono::milliseconds late_record{90000};   ///< of a job that ended well
  std::chrono::milliseconds broken_record{5000};  ///< of one that did not
  std::size_t submissions = 4;                    ///< at a time
  std::size_t waiting = 16;                       ///< games that wait for theirs, at the most
};

/// A game that is handed to Slurm. Owned by ClusterHost and used by its thread.
struct ClusterJob {
  enum class Phase {
    kToSubmit,
    kSubmitting,
    kDoubtful,  ///< sbatch has failed, but Slurm may have the job all the same
    kWithSlurm,
    kEnded,  ///< its record is awaited
    kOver,   ///< its outcome is told, and it is about to be forgotten
  };

  GameOrder order;
  Phase phase = Phase::kToSubmit;
  bool is_adopted = false;
  std::unique_ptr<AsideCommand> submission;
  std::string refusal;     ///< what sbatch said when it failed
  int refusals = 0;        ///< in a row
  int first_question = 0;  ///< the first one that can tell of it
  int missed = 0;          ///< answers in a row that did not
  SlurmJob told;           ///< Slurm's last word of it; no word: it has said none
  bool is_running = false;
  TimePoint grown;   ///< when its debug file was last seen to have grown
  TimePoint looked;  ///< when it was looked at
  std::int64_t debug_size = 0;
  bool is_silence_told = false;
  TimePoint record_looked;  ///< while it was queued
  TimePoint deadline;       ///< of the record
};

/// Whether anything but its claim shows that the job has ever run.
bool HasTrace(FileSystem& files, const GameOrder& order);

/// Whether a job that Slurm does not know any more was lost before it began: a scheduler that is
/// killed forgets what it took a moment ago.
bool HasNeverBegun(FileSystem& files, const ClusterJob& job);

/// How long the record of a job that has ended is awaited: a network directory may show it late.
std::chrono::milliseconds RecordPatience(const ClusterJob& job, const ClusterPace& pace);

/// Why an ended job has no record: what Slurm says of it, and where more is told. Lines.
std::string ReasonWithoutRecord(FileSystem& files, const ClusterJob& job);

/// Notes what Slurm says of a job that has not ended.
void NoteState(ClusterJob& job, const SlurmJob& told, TimePoint now);

/// Looks at the debug file of a job that runs, when that is due. Its name, once for each silence of
/// `silence`; otherwise nothing.
std::optional<std::string> TakeSilenceOf(FileSystem& files, ClusterJob& job,
                                         std::chrono::milliseconds silence, TimePoint now);

}  // namespace tarvendo
