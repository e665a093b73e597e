// The program itself, with a clock that does not let it wait, and with an end at a wanted step.

#include <cstdlib>

#include "console/application.h"
#include "dying_files.h"
#include "platform/file_watch.h"
#include "platform/processes.h"
#include "quick_clock.h"
#include "quick_processes.h"

namespace {

int LastStep() {
  const char* const step = std::getenv("TARVENDO_DIE_AT");
  return step == nullptr ? 0 : std::atoi(step);
}

}  // namespace

int main(int count, char** words) {
  tarvendo::PrepareChildEnvironment();
  const auto real_files = tarvendo::MakeFileSystem();
  const auto real_processes = tarvendo::MakeProcesses();
  const auto watches = tarvendo::MakeFileWatches();
  tarvendo::DyingFileSystem files(*real_files, LastStep());
  tarvendo::QuickProcesses processes(*real_processes);
  tarvendo::QuickClock clock(processes, *real_files);
  tarvendo::Host host{files, processes, clock, *watches};
  return tarvendo::RunProgram(host, {words + 1, words + count});
}
