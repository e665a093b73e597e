#include "platform/waiting_batch.h"

#include "platform/paths.h"

namespace tarvendo {

std::string MakeWaitingBatch(const ScratchDirectory& directory, const std::string& awaited) {
  const std::string program = HostPath(directory.File("await." + awaited));
  const std::string file = HostPath(directory.File(awaited));
  directory.Put("await." + awaited,
                "#!/bin/sh\nsh -c 'while [ -e \"$0\" ]; do sleep 0.01; done' " + file + "\n");
  std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  directory.Put(awaited + ".BAT", program + "\n");
  return directory.File(awaited + ".BAT");
}

}  // namespace tarvendo
