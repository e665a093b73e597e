#include "console/start_check.h"

#include "console/resume.h"
#include "console/start_up.h"
#include "platform/files.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

/// Why the file of --log cannot be it, a line; empty when it can.
std::string WhyNoLog(const StartUp& start, FileSystem& files) {
  if (start.log.empty()) return "";
  if (start.log == files.FullPath(kLogFile)) {
    return "--log: '" + start.log + "' is the program's own log, which begins anew at each start.";
  }
  const bool is_tourney = TourneyFile::IsTourneyFile(files, start.log);
  return is_tourney ? "--log: '" + start.log + "' is a tourney file." : "";
}

}  // namespace

std::string WhyRefused(const StartUp& start, FileSystem& files) {
  std::string why = start.error;
  if (why.empty() && !start.resume.empty()) why = WhyNotResumed(files, start.resume);
  if (why.empty()) why = WhyNoLog(start, files);
  if (why.empty() && start.gives_code && !start.script.empty() && !files.IsReadable(start.script)) {
    why = "The script '" + start.script + "' cannot be read.";
  }
  return why;
}

}  // namespace tarvendo
