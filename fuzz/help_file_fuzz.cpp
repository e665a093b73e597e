// Any bytes as the help file; their first line is what help is asked for.
#include "console/help.h"
#include "fakes/captured_log.h"
#include "fuzz_input.h"
#include "fuzzers.h"

namespace tarvendo {

void FuzzHelpFile(const std::uint8_t* data, std::size_t size) {
  CapturedLog machine;
  const std::string text = FuzzText(data, size);
  const std::size_t end = text.find('\n');
  machine.files.Put("/program/TourneyHelp.txt", end == std::string::npos ? text : text.substr(end));
  Help("help " + text.substr(0, end) + "\n", machine.files, "/program/");
}

}  // namespace tarvendo
