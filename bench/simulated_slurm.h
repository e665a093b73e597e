#pragma once

#include <algorithm>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <queue>
#include <string>
#include <vector>

#include "platform/paths.h"
#include "play/claim.h"
#include "play/place.h"

namespace tarvendo {

/// A Slurm without processes, for the cluster's simulation: it takes and tells jobs as sbatch and
/// squeue do, with the options that the program uses and no others, and plays a job's game when
/// that has ended. Its nodes have so many places; jobs run in the order in which they came, and a
/// job that has ended is forgotten some time later. Times are milliseconds of the caller's clock.
class SimulatedSlurm {
 public:
  struct Job {
    int number = 0;
    std::string name;
    std::string claim;       ///< which `tarvendo --play` is to read
    std::int64_t begin = 0;  ///< as soon as a place is free
    std::int64_t end = 0;
    bool is_played = false;
  };

  /// `play` does what a job does, and says whether it could.
  SimulatedSlurm(int places, std::int64_t mean_game, std::function<bool(const Job&)> play)
      : mean_game_(mean_game), play_(std::move(play)) {
    for (int i = 0; i < places; ++i)
      free_at_.push(0);
  }

  /// What sbatch says to these words, and its exit code.
  int Submit(const std::vector<std::string>& words, std::int64_t now, std::string& said) {
    Job job;
    std::string play;
    bool is_parsable = false;
    for (const std::string& word : words) {
      const std::size_t equals = word.find('=');
      const std::string option = word.substr(0, equals);
      const std::string value = equals == std::string::npos ? "" : word.substr(equals + 1);
      if (option == "--job-name" && !value.empty()) {
        job.name = value;
      } else if (option == "--wrap") {
        play = value;
      } else if (word == "--parsable") {
        is_parsable = true;
      } else if (word != "--requeue" && option != "--output" && option != "--chdir") {
        return Fail("sbatch: unrecognized option '" + word + "'", said);
      }
    }
    job.claim = LastQuoted(play);
    if (job.name.empty() || job.claim.empty()) return Fail("sbatch: error: nothing to run", said);
    Take(job, now);
    said = (is_parsable ? "" : "Submitted batch job ") + std::to_string(jobs_.back().number);
    return 0;
  }

  /// What squeue says to these words, and its exit code. The games of jobs that have ended by then
  /// are played.
  int Tell(const std::vector<std::string>& words, std::int64_t now, std::string& said) {
    static const std::vector<std::string> known = {"--format=%i %T %j %r", "--me", "--noheader",
                                                   "--states=all"};
    std::vector<std::string> given = words;
    std::sort(given.begin(), given.end());
    if (given != known) return Fail("squeue: unrecognized option", said);
    std::erase_if(jobs_, [&](const Job& job) { return now >= job.end + kRemembered; });
    for (Job& job : jobs_) {
      const char* state = "PENDING";
      if (now >= job.end) {
        state = Play(job) ? "COMPLETED" : "FAILED";
      } else if (now >= job.begin) {
        state = "RUNNING";
      }
      said += std::to_string(job.number) + " " + state + " " + job.name +
              (now < job.begin ? " Resources\n" : " None\n");
    }
    most_told_ = std::max(most_told_, jobs_.size());
    return 0;
  }

  // For a Slurm that is kept in a file between two calls.
  const std::deque<Job>& Jobs() const { return jobs_; }
  void GoOnBehind(int number) { last_number_ = number; }
  void Restore(const Job& job) { jobs_.push_back(job); }

  int Submissions() const { return last_number_; }
  int Failures() const { return failures_; }
  std::size_t MostTold() const { return most_told_; }

 private:
  static constexpr std::int64_t kRemembered = 300000;  ///< MinJobAge, as it is by itself

  static int Fail(const std::string& why, std::string& said) {
    said = why;
    return 1;
  }

  /// "/t/g7.run" in "exec '/opt/tarvendo' --play '/t/g7.run'".
  static std::string LastQuoted(const std::string& text) {
    const std::size_t end = text.rfind('\'');
    if (end == std::string::npos || end == 0) return "";
    const std::size_t begin = text.rfind('\'', end - 1);
    return begin == std::string::npos ? "" : text.substr(begin + 1, end - begin - 1);
  }

  void Take(Job& job, std::int64_t now) {
    job.number = ++last_number_;
    // Half as long as the mean to half as long again, in no order.
    const auto share =
        static_cast<std::int64_t>(static_cast<unsigned>(job.number) * 2654435761U >> 22U);
    job.begin = std::max(now, free_at_.top());
    job.end = job.begin + mean_game_ / 2 + mean_game_ * share / 1024;
    Occupy(job.end);
    jobs_.push_back(job);
  }

  void Occupy(std::int64_t until) {
    free_at_.pop();
    free_at_.push(until);
  }

  bool Play(Job& job) {
    if (job.is_played) return true;
    job.is_played = play_(job);
    if (!job.is_played) ++failures_;
    return job.is_played;
  }

  std::int64_t mean_game_;
  std::function<bool(const Job&)> play_;
  std::deque<Job> jobs_;  ///< in the order of their numbers
  std::priority_queue<std::int64_t, std::vector<std::int64_t>, std::greater<>> free_at_;
  int last_number_ = 0;
  int failures_ = 0;
  std::size_t most_told_ = 0;
};

/// Leaves what `tarvendo --play` leaves: the try's directory with its mark and the debug file, and
/// the record under its name. False when the claim is not there or is for another job, or the batch
/// file's copy is missing.
inline bool PlaySimulatedGame(const SimulatedSlurm::Job& job) {
  const auto read = [](const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
  };
  const auto order = ReadClaimText(read(job.claim), job.claim);
  if (!order || order->job != job.name) return false;
  if (read(HostPath(CopyOfBatch(*order))).empty()) return false;
  const std::string place = HostPath(OwnDirectory(*order));
  const std::string played = place + "/try-" + std::to_string(job.number) + "-0";
  std::ofstream(played + ".on");
  std::filesystem::create_directory(played);
  std::ofstream(played + "/winboard.debug") << std::string(500, 'd');
  static constexpr const char* kResults[] = {"1-0", "0-1", "1/2-1/2"};
  const std::string result = kResults[order->number % 3];
  std::ofstream record(played + "/record");
  record << "[Event \"Computer chess game\"]\n[Site \"a node\"]\n[Round \"-\"]\n[White \"w\"]\n"
         << "[Black \"b\"]\n[Result \"" << result << "\"]\n\n"
         << std::string(1500, 'm') << "\n"
         << result << "\n\n";
  record.close();
  std::error_code error;
  std::filesystem::rename(played + "/record", HostPath(order->pgn_file), error);
  return !error;
}

}  // namespace tarvendo
