#include "platform/posix/history_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>

#include "platform/posix/descriptor.h"

namespace tarvendo {
namespace {

constexpr std::size_t kKept = 1000;
constexpr std::size_t kTooMany = 2000;
constexpr std::size_t kLongest = 4095;
constexpr off_t kMostRead = 4 * 1024 * 1024;

/// Everything that is there, or the end of it when that is more than anybody types.
std::string ReadEnd(const std::string& path) {
  const Descriptor file = OpenToRead(path);
  struct stat status {};
  if (!file.IsOpen() || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return "";
  if (status.st_size > kMostRead) lseek(file.Get(), status.st_size - kMostRead, SEEK_SET);
  std::string text;
  std::array<char, 65536> piece{};
  while (text.size() <= static_cast<std::size_t>(kMostRead)) {
    const ssize_t count = read(file.Get(), piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    text.append(piece.data(), static_cast<std::size_t>(count));
  }
  return text;
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::size_t begin = 0;
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n', begin)) {
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

bool CanBeTyped(const std::string& line) {
  return !line.empty() && line.size() <= kLongest && line.find('\0') == std::string::npos;
}

/// Those above it too, as the convention for such directories wants: for their owner alone.
void MakeDirectoryOf(const std::string& path) {
  for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
    mkdir(path.substr(0, end).c_str(), 0700);
}

/// The whole file or, should anything fail, the one that is there.
void Replace(const std::string& path, const std::vector<std::string>& lines) {
  std::string name = path + ".XXXXXX";
  const Descriptor file(mkostemp(name.data(), O_CLOEXEC));
  if (!file.IsOpen()) return;
  std::string text;
  for (const std::string& line : lines)
    text += line + '\n';
  if (!WriteAll(file.Get(), text) || std::rename(name.c_str(), path.c_str()) != 0) {
    unlink(name.c_str());
  }
}

}  // namespace

std::vector<std::string> HistoryFile::Load() {
  if (path_.empty()) return {};
  std::vector<std::string> lines = LinesOf(ReadEnd(path_));
  const bool too_many = lines.size() > kTooMany;
  std::erase_if(lines, [](const std::string& line) { return !CanBeTyped(line); });
  if (lines.size() > kKept) lines.erase(lines.begin(), lines.end() - kKept);
  if (too_many) Replace(path_, lines);
  last_ = lines.empty() ? "" : lines.back();
  return lines;
}

void HistoryFile::Add(const std::string& line) {
  if (path_.empty() || line == last_ || !CanBeTyped(line)) return;
  last_ = line;
  constexpr int kFlags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  int descriptor = open(path_.c_str(), kFlags, 0600);
  if (descriptor < 0 && errno == ENOENT) {
    MakeDirectoryOf(path_);
    descriptor = open(path_.c_str(), kFlags, 0600);
  }
  const Descriptor file(descriptor);
  if (file.IsOpen()) WriteAll(file.Get(), line + '\n');
}

}  // namespace tarvendo
