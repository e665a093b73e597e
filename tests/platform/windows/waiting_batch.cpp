#include "platform/waiting_batch.h"

namespace tarvendo {

std::string MakeWaitingBatch(const ScratchDirectory& directory, const std::string& awaited) {
  const std::string inner = directory.File("await." + awaited + ".BAT");
  directory.Put("await." + awaited + ".BAT", "@echo off\r\n:again\r\nif exist \"" +
                                                 directory.File(awaited) + "\" goto again\r\n");
  directory.Put(awaited + ".BAT", "@cmd /c \"" + inner + "\"\r\n");
  return directory.File(awaited + ".BAT");
}

}  // namespace tarvendo
