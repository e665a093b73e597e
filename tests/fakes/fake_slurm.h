#pragma once

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "fakes/scripted_processes.h"
#include "play/slurm.h"

namespace tarvendo {

/// A Slurm for the tests: it understands the command lines of sbatch and squeue that the program
/// uses, with those options and no others, and the test plays its nodes. Used by one thread.
class FakeSlurm {
 public:
  struct Job {
    int number = 0;
    std::string name;
    std::string state = "PENDING";
    std::string reason = "Resources";
    std::string output;                ///< the file for what it prints
    std::string play;                  ///< what it does: a line for the shell
    std::vector<std::string> further;  ///< words of sbatch that the user has added
  };

  /// For ScriptedProcesses::on_aside.
  std::optional<ScriptedProcesses::AsideAnswer> Answer(const std::string& line) {
    ++calls_;
    std::string said;
    const int code = Run(line, said);
    if (!commands_end) return ScriptedProcesses::AsideAnswer{"", false};
    if (says_half) return ScriptedProcesses::AsideAnswer{said, true};
    return ScriptedProcesses::AsideAnswer{said + "\ntarvendo-end " + std::to_string(code) + "\n",
                                          true};
  }

  // What a test lets happen.
  bool has_sbatch = true;             ///< in the PATH
  bool answers = true;                ///< the controller can be reached
  bool commands_end = true;           ///< sbatch and squeue come to an end
  bool says_half = false;             ///< and their output arrives whole
  bool loses_answers = false;         ///< sbatch fails, but the job is submitted
  std::string refusal;                ///< what sbatch says instead of taking a job
  std::string garbage;                ///< what squeue says instead of the truth
  std::set<std::string> known_words;  ///< of sbatch, besides the program's own

  Job* Find(int game) {
    Job* found = nullptr;
    for (Job& job : jobs) {
      if (job.name.find("-g" + std::to_string(game) + "-") != std::string::npos) found = &job;
    }
    return found;
  }
  void Set(int game, const std::string& state, const std::string& reason = "None") {
    Find(game)->state = state;
    Find(game)->reason = reason;
  }
  /// The job's data are dropped, as some time behind its end.
  void Forget(int game) {
    std::erase_if(jobs,
                  [job = Find(game)->number](const Job& other) { return other.number == job; });
  }

  std::vector<Job> jobs;
  int submissions = 0;                 ///< so many jobs were ever submitted
  std::vector<std::string> submitted;  ///< and these are their names
  int Calls() const { return calls_; }

 private:
  int Run(const std::string& line, std::string& said) {
    const std::vector<std::string> words = SplitSlurmWords(line);
    for (std::size_t i = 0; i < words.size(); ++i) {
      const std::vector<std::string> rest(words.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                                          words.end());
      if (words[i] == "sbatch") return Submit(rest, said);
      if (words[i] == "squeue") return Tell(rest, said);
    }
    said = "no such command";
    return 127;
  }

  int Submit(const std::vector<std::string>& words, std::string& said) {
    if (!has_sbatch) {
      said = "/bin/sh: 1: sbatch: not found";
      return 127;
    }
    if (!answers) return NobodyThere("sbatch: error: Batch job submission failed: ", said);
    Job job;
    bool is_parsable = false;
    for (const std::string& word : words) {
      if (word == "2>&1;") break;
      if (word == "$@") continue;  // --requeue
      const std::string value = word.substr(std::min(word.find('=') + 1, word.size()));
      if (word == "--parsable") {
        is_parsable = true;
      } else if (word.starts_with("--job-name=")) {
        job.name = value;
      } else if (word.starts_with("--output=")) {
        job.output = value;
      } else if (word.starts_with("--wrap=")) {
        job.play = value;
      } else if (known_words.contains(word)) {
        job.further.push_back(word);
      } else if (!word.starts_with("--chdir=")) {
        said = "sbatch: unrecognized option '" + word + "'";
        return 1;
      }
    }
    if (!refusal.empty()) {
      said = refusal;
      return 1;
    }
    job.number = ++submissions;
    jobs.push_back(job);
    submitted.push_back(job.name);
    if (loses_answers) return NobodyThere("sbatch: error: Batch job submission failed: ", said);
    said = (is_parsable ? "" : "Submitted batch job ") + std::to_string(job.number);
    return 0;
  }

  int Tell(const std::vector<std::string>& words, std::string& said) {
    if (!answers) return NobodyThere("slurm_load_jobs error: ", said);
    if (!garbage.empty()) {
      said = garbage;
      return 0;
    }
    const std::set<std::string> known = {"--me", "--states=all", "--noheader",
                                         "--format=%i %T %j %r"};
    std::set<std::string> given;
    for (const std::string& word : words) {
      if (word == "2>&1;") break;
      given.insert(word);
    }
    if (given != known) {
      said = "squeue: unrecognized option";
      return 1;
    }
    said = "17 RUNNING somebody's own work None\n18_[1-4] PENDING x Priority, held\n";
    for (const Job& job : jobs)
      said +=
          std::to_string(job.number) + " " + job.state + " " + job.name + " " + job.reason + "\n";
    return 0;
  }

  static int NobodyThere(const std::string& beginning, std::string& said) {
    said = beginning + "Unable to contact slurm controller (connect failure)";
    return 1;
  }

  int calls_ = 0;
};

}  // namespace tarvendo
