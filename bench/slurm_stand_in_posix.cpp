// Stands in the PATH as sbatch and as squeue, for measuring the program with a Slurm that costs
// next to nothing: see simulated_slurm.h. The jobs are kept in the directory that SLURM_STAND_IN
// names, and each runs at once, for SLURM_STAND_IN_SECONDS on average.

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "simulated_slurm.h"

namespace {

using tarvendo::SimulatedSlurm;

std::int64_t Now() {
  return std::chrono::duration_cast<std::chrono::milliseconds>(
             std::chrono::system_clock::now().time_since_epoch())
      .count();
}

std::string LineOf(const SimulatedSlurm::Job& job) {
  std::ostringstream line;
  line << job.number << ' ' << job.begin << ' ' << job.end << ' ' << job.is_played << ' '
       << job.name << ' ' << job.claim << '\n';
  return line.str();
}

/// Those that were submitted and are not forgotten.
void ReadJobs(const std::string& path, SimulatedSlurm& slurm) {
  std::ifstream file(path);
  SimulatedSlurm::Job job;
  while (file >> job.number >> job.begin >> job.end >> job.is_played >> job.name &&
         std::getline(file >> std::ws, job.claim)) {
    slurm.Restore(job);
  }
}

void WriteJobs(const std::string& path, const SimulatedSlurm& slurm, std::ios::openmode mode) {
  std::ofstream file(path, mode);
  for (const SimulatedSlurm::Job& job : slurm.Jobs())
    file << LineOf(job);
}

/// The number of the job before this one, which is written down as taken.
int TakeNumber(const std::string& path) {
  int number = 0;
  std::ifstream(path) >> number;
  std::ofstream(path) << number + 1;
  return number;
}

}  // namespace

int main(int count, char** words) {
  const char* const directory = std::getenv("SLURM_STAND_IN");
  const char* const seconds = std::getenv("SLURM_STAND_IN_SECONDS");
  if (directory == nullptr) return EXIT_FAILURE;
  const std::string jobs = std::string(directory) + "/jobs";
  // One at a time; given back at the end of the process.
  const int lock = open((std::string(directory) + "/lock").c_str(), O_RDWR | O_CREAT, 0600);
  if (lock < 0 || flock(lock, LOCK_EX) != 0) return EXIT_FAILURE;
  const std::vector<std::string> given(words + 1, words + count);
  SimulatedSlurm slurm(1, 1000L * std::atol(seconds == nullptr ? "60" : seconds),
                       tarvendo::PlaySimulatedGame);
  std::string said;
  int code = 0;
  if (std::string(words[0]).ends_with("sbatch")) {
    slurm.GoOnBehind(TakeNumber(std::string(directory) + "/number"));
    code = slurm.Submit(given, Now(), said);
    WriteJobs(jobs, slurm, std::ios::app);
  } else {
    ReadJobs(jobs, slurm);
    code = slurm.Tell(given, Now(), said);
    WriteJobs(jobs, slurm, std::ios::trunc);
  }
  std::printf("%s\n", said.c_str());
  return code;
}
