#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "play/game_order.h"

namespace tarvendo {

// What is said to Slurm and what it answers, as texts; nothing is run here. Slurm is asked by
// command lines of the shell, whose last line tells the exit code: without it an answer is not
// whole (a full disk, say), and counts for nothing.

/// How games are handed to Slurm.
struct SlurmOptions {
  std::string program;             ///< this program, as the nodes find it: a full path
  std::vector<std::string> words;  ///< further ones for sbatch
  int patience = 0;                ///< minutes, for the jobs; 0 is for ever
};

/// The words of `--cluster-options`: blanks separate them, both kinds of quotes hold blanks
/// together and are taken off.
std::vector<std::string> SplitSlurmWords(const std::string& text);

/// The name under which Slurm knows a game: "tarvendo-club-1f3a9c-g7-t3k2j1" for game 7 in the
/// directory "/home/ann/club". It tells the tourney by the directory's name and a number made of
/// its whole path, and `stamp` makes it another one for each time a game is played. Made of
/// letters, digits and the characters "-._" alone.
std::string SlurmJobName(const std::string& directory, int number, const std::string& stamp);

/// The command line that submits the order's job, which plays it by `tarvendo --play CLAIM`.
std::string SlurmSubmitLine(const GameOrder& order, const SlurmOptions& options);

/// The file for the job's own output, beside the game's record: "/t/g7.out".
std::string SlurmOutputFile(const GameOrder& order);

/// The command line that asks for all jobs of the user.
std::string SlurmQueueLine();

/// What a command of Slurm's has said.
struct SlurmAnswer {
  int exit_code = 0;
  /// Without the line that tells the exit code and without empty lines at the end.
  std::string text;

  /// Whether there is no such command.
  bool IsMissing() const { return exit_code == 126 || exit_code == 127; }
};

/// Nothing when the output is not whole.
std::optional<SlurmAnswer> ReadSlurmAnswer(const std::string& output);

/// The number of the job in what sbatch says; empty when there is none.
std::string SlurmJobNumber(const std::string& text);

/// What Slurm may say of a job.
enum class SlurmState {
  kWaits,   ///< it has not begun, or is to begin again
  kRuns,    ///< on some node
  kLeaves,  ///< it has ended, and its node is still being cleared
  kEnded,   ///< in any way
};

/// A job as squeue tells it.
struct SlurmJob {
  std::string number;
  std::string word;  ///< the state as Slurm calls it: "RUNNING", "OUT_OF_MEMORY"
  std::string name;
  std::string reason;  ///< "NonZeroExitCode"; empty for none

  SlurmState State() const;
};

/// Jobs by their names. Two of one name (sbatch has failed, submitted the job all the same, and was
/// asked again) count as one that has not ended while one of them has not, and then as one that
/// ended well if one of them did.
using SlurmQueue = std::unordered_map<std::string, SlurmJob>;

/// The user's jobs whose names this program has given, from what squeue says. Nothing when that
/// cannot be understood: `bad_line` gets the first such line.
std::optional<SlurmQueue> ReadSlurmQueue(const std::string& text, std::string& bad_line);

}  // namespace tarvendo
