#include "console/application.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/processes.h"

int main(int count, char** words) {
  tarvendo::PrepareChildEnvironment();
  const auto files = tarvendo::MakeFileSystem();
  const auto processes = tarvendo::MakeProcesses();
  const auto clock = tarvendo::MakeClock();
  tarvendo::Host host{*files, *processes, *clock};
  return tarvendo::RunProgram(host, {words + 1, words + count});
}
