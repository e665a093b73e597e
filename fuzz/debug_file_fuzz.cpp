// Any bytes as WinBoard's debug file, which grows while it is read: the first byte says in what
// steps. The end that is found when it has come in steps is there when it comes at once, too.
#include "base/text.h"
#include "fakes/memory_file_system.h"
#include "fuzz_input.h"
#include "fuzzers.h"
#include "play/debug_watch.h"

namespace tarvendo {
namespace {

constexpr const char* kHeader = "1\n2\n3\n4\n5\n";

/// Reads the file until it is whole and the last line has stopped growing.
bool EndsInSteps(const std::string& text, std::size_t step) {
  MemoryFileSystem files;
  files.Put("debug", kHeader);
  DebugWatch watch;
  watch.Begin("debug");
  for (std::size_t at = 0; at < text.size(); at += step) {
    files.PutMore("debug", text.substr(at, step));
    if (watch.Look(files) == DebugNews::kGameOver) return true;
  }
  watch.Look(files);
  return watch.Look(files) == DebugNews::kGameOver;
}

}  // namespace

void FuzzDebugFile(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return;
  const std::string text = FuzzText(data + 1, size - 1);
  const bool in_steps = EndsInSteps(text, std::size_t{1} + data[0]);
  const bool at_once = EndsInSteps(text, text.size() + 1);
  Demand(in_steps == at_once);
}

}  // namespace tarvendo
