#include "console/application.h"
#include "platform/clock.h"
#include "platform/file_watch.h"
#include "platform/files.h"
#include "platform/host.h"
#include "platform/processes.h"

int main(int count, char** words) {
  tarvendo::PrepareChildEnvironment();
  const auto files = tarvendo::MakeFileSystem();
  const auto processes = tarvendo::MakeProcesses();
  const auto clock = tarvendo::MakeClock();
  const auto watches = tarvendo::MakeFileWatches();
  tarvendo::Host host{*files, *processes, *clock, *watches};
  return tarvendo::RunProgram(host, {words + 1, words + count});
}
