#include "platform/posix/batch_child.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>

#include "platform/paths.h"

namespace tarvendo {
namespace {

constexpr int kNotFound = 127;

/// What stands behind a NUL byte would not reach the operating system, and what stands before it is
/// another file or another program.
bool HasNul(const std::string& text) {
  return text.find('\0') != std::string::npos;
}

/// The places in which a program is looked for, in their order.
std::vector<std::string> PlacesOf(const std::string& program, const std::string& program_directory,
                                  const std::string& search_path) {
  const std::string name = HostPath(program);
  std::vector<std::string> places{name};
  if (!IsBareName(program)) return places;
  places.push_back(program_directory + name);
  std::size_t start = 0;
  while (start < search_path.size()) {
    const std::size_t end = std::min(search_path.find(':', start), search_path.size());
    if (end > start) places.push_back(search_path.substr(start, end - start) + "/" + name);
    start = end + 1;
  }
  return places;
}

int ExitCode(int status) {
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

int AwaitChild(pid_t child) {
  int status = 0;
  while (waitpid(child, &status, 0) < 0) {
    if (errno != EINTR) return kNotFound;
  }
  return ExitCode(status);
}

/// A plain system call, for nothing else may be used here; a message that cannot be written is
/// lost.
void Complain(const std::string& complaint) {
  std::size_t written = 0;
  while (written < complaint.size()) {
    const ssize_t count =
        write(STDERR_FILENO, complaint.data() + written, complaint.size() - written);
    if (count < 0) return;
    written += static_cast<std::size_t>(count);
  }
}

}  // namespace

BatchChild::BatchChild(const std::vector<BatchStep>& steps, const std::string& program_directory,
                       const std::string& search_path) {
  for (const BatchStep& step : steps) {
    steps_.push_back(Prepare(step, program_directory, search_path));
  }
  // Only now, when nothing is moved any more.
  for (Step& step : steps_) {
    for (std::string& word : step.words) {
      step.arguments.push_back(word.data());
    }
    step.arguments.push_back(nullptr);
  }
}

BatchChild::Step BatchChild::Prepare(const BatchStep& step, const std::string& program_directory,
                                     const std::string& search_path) {
  Step prepared;
  bool has_nul = std::any_of(step.words.begin(), step.words.end(), HasNul);
  for (const BatchStep::Condition& condition : step.conditions) {
    has_nul = has_nul || HasNul(condition.path);
    prepared.conditions.push_back({condition.must_exist, HostPath(condition.path)});
  }
  prepared.is_delete = step.is_delete;
  prepared.words = step.words;
  const std::string& first = step.words.front();
  if (!has_nul && step.is_delete) prepared.places = {HostPath(first)};
  if (!has_nul && !step.is_delete) {
    prepared.places = PlacesOf(first, program_directory, search_path);
  }
  prepared.complaint = "Can't run the program '" + first + "': it was not found.\n";
  return prepared;
}

bool BatchChild::Holds(const std::vector<Condition>& conditions) {
  return std::all_of(conditions.begin(), conditions.end(), [](const Condition& condition) {
    return (access(condition.path.c_str(), F_OK) == 0) == condition.must_exist;
  });
}

void BatchChild::Become(const Step& step) {
  for (const std::string& place : step.places) {
    execve(place.c_str(), step.arguments.data(), environ);
  }
  Complain(step.complaint);
  _exit(kNotFound);
}

int BatchChild::RunStep(const Step& step, bool is_last) {
  if (!Holds(step.conditions)) return 0;
  if (step.is_delete) {
    for (const std::string& place : step.places) {
      if (unlink(place.c_str()) != 0) return 1;
    }
    return 0;
  }
  const pid_t child = is_last ? 0 : fork();
  if (child == 0) Become(step);
  return child < 0 ? kNotFound : AwaitChild(child);
}

void BatchChild::Run() const {
  int exit_code = 0;
  for (const Step& step : steps_) {
    exit_code = RunStep(step, &step == &steps_.back());
  }
  _exit(exit_code);
}

}  // namespace tarvendo
