#include "base/log.h"

#include <algorithm>
#include <cstdarg>
#include <utility>

#include "base/line_reader.h"
#include "base/long_read.h"
#include "base/text.h"
#include "platform/faults.h"
#include "platform/files.h"
#include "platform/line_ends.h"
#include "platform/processes.h"

namespace tarvendo {
namespace {

constexpr std::int64_t kSmallestLimit = 2048;
constexpr std::size_t kCutLine = 1023;

/// So much of another program's output is written as one message; whoever asks this program to end
/// is heard before the next.
constexpr std::size_t kMostAtOnce = std::size_t{1} << 16U;

constexpr const char* kStars = "**********************************************";

std::string Framed(const std::string& message) {
  std::string framed("\n");
  for (const std::string& part : {std::string(kStars), message, std::string(kStars)})
    framed += part + "\n";
  return framed;
}

/// Gives `take` the pieces of the rest of a text, as a loop that writes its buffer after every read
/// does: a text that ends in a line feed has its last line twice, an empty one gives one empty
/// piece.
template <typename Take>
void CopyLineByLine(LineReader reader, std::size_t size, const Take& take) {
  std::string buffer;
  while (!reader.AtEnd()) {
    if (const auto line = reader.Read(size)) buffer = *line;
    take(buffer);
  }
}

/// The name of the working file: ".$$$" in place of the extension.
std::string WorkingName(const std::string& name) {
  const std::size_t dot = name.rfind('.');
  const std::size_t separator = name.find_last_of("/\\");
  const bool has_extension =
      dot != std::string::npos && (separator == std::string::npos || dot > separator);
  return name.substr(0, has_extension ? dot : name.size()) + ".$$$";
}

}  // namespace

Log* TheLog = nullptr;

LogFile::LogFile(FileSystem& files, std::string full_name)
    : files_(files), name_(std::move(full_name)), stream_(files.Create(name_)) {}

LogFile::~LogFile() = default;

void LogFile::Write(const std::string& text) {
  if (!stream_) return;
  // A full disk must not stop the tourney, and there is no other place to tell of it than the
  // console, which gets the message all the same.
  stream_->Write(text);
  stream_->Flush();
}

void LogFile::CutDown(std::int64_t limit) {
  if (!stream_ || stream_->Size() < limit) return;
  const std::int64_t size = stream_->Size();
  stream_.reset();
  const auto newest = static_cast<std::int64_t>(kMostLogKept);
  const std::int64_t middle = std::max(size / 2, size - newest);
  auto newer_half = files_.ReadPart(name_, static_cast<std::uint64_t>(middle), kMostLogKept);
  const std::unique_ptr<OutputFile> working = files_.Create(WorkingName(name_));
  if (newer_half && working) {
    FoldLineEnds(*newer_half);
    LineReader reader(*newer_half);
    reader.Read(kCutLine);
    std::string kept;
    CopyLineByLine(reader, kCutLine, [&](const std::string& line) { kept += line; });
    const bool written = working->Write(kept);
    const bool whole = working->Close() && written;
    if (!whole || !files_.Rename(WorkingName(name_), name_)) files_.Remove(WorkingName(name_));
  }
  stream_ = files_.Append(name_);
}

Log::Log(Host& host, Sink console, Sink error)
    : host_(host), console_(std::move(console)), error_(std::move(error)) {}

Log::~Log() = default;

bool Log::AddFile(const std::string& name) {
  const std::lock_guard lock(mutex_);
  auto file = std::make_unique<LogFile>(host_.files, host_.files.FullPath(name));
  if (!file->IsOpen()) return false;
  const bool known = std::any_of(files_.begin(), files_.end(),
                                 [&](const auto& other) { return other->Name() == file->Name(); });
  if (!known) files_.push_back(std::move(file));
  return true;
}

void Log::Write(const std::string& text) {
  const std::lock_guard lock(mutex_);
  for (const auto& file : files_)
    file->Write(text);
  console_(text);
}

void Log::WriteError(const std::string& text) {
  const std::lock_guard lock(mutex_);
  error_(text);
}

void Log::Echo(const std::string& line) {
  const std::lock_guard lock(mutex_);
  for (const auto& file : files_)
    file->Write(line);
}

bool Log::RunShellCommand(const std::string& line) {
  // Made absolute now: the runner may change the current directory while the command runs.
  shell_output_ = host_.files.FullPath("tmpfile.$$$");
  if (host_.processes.RunShell(line, shell_output_) == ShellOutcome::kNoOutputFile) {
    shell_output_.clear();
    host_.processes.RunShell(line, "");
    error_(Framed("Error creating temporary file!"));
    return false;
  }
  const BoundedText output = ReadLongFile(host_.files, shell_output_, kShellOutputLimit);
  if (output.is_too_long) Write(TooLongMessage(shell_output_, kShellOutputLimit));
  if (!output.text) {
    shell_output_.clear();
    error_(Framed("Error reopening temporary file!"));
    return false;
  }
  WriteOutput(*output.text);
  DropShellOutput();
  return true;
}

void Log::WriteOutput(const std::string& output) {
  std::string part;
  CopyLineByLine(LineReader(output), kLongLine, [&](const std::string& line) {
    part += line;
    if (part.size() < kMostAtOnce) return;
    EndWhenAsked();
    Write(std::exchange(part, std::string()));
  });
  Write(part);
}

void Log::DropShellOutput() {
  if (!shell_output_.empty()) host_.files.Remove(shell_output_);
  shell_output_.clear();
}

void Log::Housekeep(std::int64_t limit) {
  const std::lock_guard lock(mutex_);
  if (files_.empty()) return;
  if (limit < 1) limit = default_limit_;
  files_.front()->CutDown(std::max(limit, kSmallestLimit));
}

void Print(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const std::string text = FormatList(format, arguments);
  va_end(arguments);
  PrintText(text);
}

void PrintError(const std::string& text) {
  if (TheLog != nullptr) TheLog->WriteError(text);
}

void PrintText(const std::string& text) {
  if (TheLog != nullptr) TheLog->Write(text);
}

}  // namespace tarvendo
