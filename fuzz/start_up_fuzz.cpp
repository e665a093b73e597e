// Any words on the command line: what they ask for lies within its limits, or it is said why they
// make no sense.
#include <algorithm>
#include <vector>

#include "console/command_line.h"
#include "fakes/memory_file_system.h"
#include "fuzz_input.h"
#include "fuzzers.h"

namespace tarvendo {

void FuzzStartUp(const std::uint8_t* data, std::size_t size) {
  const std::string text = FuzzText(data, size);
  std::vector<std::string> words;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    words.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  StartUp start = ReadCommandLine(words);
  Demand(start.error.find('\n') == std::string::npos);
  if (!start.error.empty()) return;
  Demand(start.games >= 0 && start.games <= 512 && start.patience >= 0);
  Demand(start.script.empty() ||
         std::find(words.begin(), words.end(), start.script) != words.end());
  MemoryFileSystem files;
  MakePathsFull(start, files);
}

}  // namespace tarvendo
