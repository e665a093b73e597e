#include "console/timed_log.h"

#include <utility>

#include "base/text.h"

namespace tarvendo {
namespace {

std::string TimeText(std::int64_t now) {
  const CalendarTime time = LocalCalendar(now);
  return Format("%04d-%02d-%02d %02d:%02d:%02d", time.year, time.month, time.day, time.hour,
                time.minute, time.second);
}

/// An earlier run may have ended behind a prompt.
bool EndsInsideLine(FileSystem& files, const std::string& path) {
  const auto stamp = files.Stamp(path);
  if (!stamp || stamp->size <= 0) return false;
  const auto last = files.ReadPart(path, static_cast<std::uint64_t>(stamp->size) - 1, 1);
  return last && *last != "\n";
}

}  // namespace

TimedLog::TimedLog(FileSystem& files, Clock& clock, const std::string& path)
    : clock_(clock), begins_inside_line_(EndsInsideLine(files, path)), file_(files.Append(path)) {}

bool TimedLog::Write(const std::string& text) {
  const std::lock_guard guard(mutex_);
  return Add(text);
}

bool TimedLog::TryWrite(const std::string& text) {
  const std::unique_lock guard(mutex_, std::try_to_lock);
  return guard.owns_lock() && Add(text);
}

bool TimedLog::Add(const std::string& text) {
  if (!file_) return false;
  const std::string time = TimeText(clock_.Now());
  std::string timed;
  if (std::exchange(begins_inside_line_, false)) timed += '\n';
  for (const char character : text) {
    if (!is_line_begun_) timed += character == '\n' ? time : time + " ";
    is_line_begun_ = character != '\n';
    timed += character;
  }
  return file_->Write(timed) && file_->Flush();
}

}  // namespace tarvendo
