// Any bytes as a file of openings: it is understood or refused with a reason, and every line that
// is found can be named.
#include "fakes/memory_file_system.h"
#include "fuzz_input.h"
#include "fuzzers.h"
#include "runner/openings.h"

namespace tarvendo {

void FuzzOpenings(const std::uint8_t* data, std::size_t size) {
  MemoryFileSystem files;
  files.Put("/openings", FuzzText(data, size));
  std::string error;
  auto openings = Openings::Read(files, "/openings", error);
  Demand(openings.has_value() == error.empty());
  if (!openings) return;
  Demand(openings->Lines() > 0 && openings->Lines() <= size);
  for (std::size_t line = 0; line < openings->Lines(); ++line)
    Demand(openings->WordsFor(line) == openings->WordsFor(line + openings->Lines()));
  Demand(openings->IsAsItWas(files));
}

}  // namespace tarvendo
