// Any bytes as the output of another program, which goes through the log, and as the log itself,
// which is cut down: every byte arrives once, but for a last line, and an end of the log stays.
#include "fakes/captured_log.h"
#include "fuzz_input.h"
#include "fuzzers.h"

namespace tarvendo {
namespace {

void DemandOutputArrives(CapturedLog& machine, const std::string& text) {
  machine.processes.on_shell = [&](const std::string&) { return text; };
  Demand(machine.log.RunShellCommand("x\n"));
  const bool is_plain =
      text.find('\0') == std::string::npos && text.find('\r') == std::string::npos;
  if (is_plain) Demand(machine.TakeOutput().starts_with(text));
  Demand(!machine.files.Has("tmpfile.$$$"));
}

}  // namespace

void FuzzLog(const std::uint8_t* data, std::size_t size) {
  CapturedLog machine;
  const std::string text = FuzzText(data, size);
  DemandOutputArrives(machine, text);
  LogFile log(machine.files, "/home/a.log");
  log.Write(text);
  log.CutDown(static_cast<std::int64_t>(size) / 2 + 1);
  Demand(machine.files.Bytes("/home/a.log").size() <= 2 * size);
  log.Write("more\n");
  Demand(machine.files.Bytes("/home/a.log").ends_with("more\n"));
}

}  // namespace tarvendo
