#include "base/whole_file.h"

#include "platform/files.h"

namespace tarvendo {
namespace {

/// So many files that a crash has left are passed by.
constexpr int kMostNames = 100;

/// Behind the name of the file that is being saved.
constexpr const char* kNew = ".new";

bool WriteAndClose(OutputFile& file, const std::string& text) {
  const bool written = file.Write(text);
  return file.Close() && written;
}

bool WriteInPlace(FileSystem& files, const std::string& path, const std::string& text) {
  const std::unique_ptr<OutputFile> file = files.Create(path);
  return file && WriteAndClose(*file, text);
}

/// A file that is being written, and its name.
struct Temporary {
  std::string path;
  std::unique_ptr<OutputFile> file;
};

/// A new file beside `path`, with its permissions, under a name that nobody uses. No file when none
/// can be made there.
Temporary MakeTemporary(FileSystem& files, const std::string& path) {
  for (int n = 1; n <= kMostNames; ++n) {
    const std::string name = path + kNew + (n == 1 ? "" : std::to_string(n));
    std::unique_ptr<OutputFile> file = files.CreateNew(name, path);
    if (file) return {name, std::move(file)};
    if (!files.Exists(name)) break;
  }
  return {};
}

/// A rename asks nobody whether the old file may be changed, so this does. Opening for appending
/// leaves what is in it alone.
bool MayBeChanged(FileSystem& files, const std::string& path) {
  return files.Append(path) != nullptr;
}

/// The file is there under this very name, or nothing is.
bool ReplaceWhole(FileSystem& files, const std::string& path, const std::string& text) {
  if (files.Exists(path) && !MayBeChanged(files, path)) return false;
  const Temporary temporary = MakeTemporary(files, path);
  if (!temporary.file) return WriteInPlace(files, path, text);
  if (WriteAndClose(*temporary.file, text) && files.Rename(temporary.path, path)) return true;
  files.Remove(temporary.path);
  return false;
}

}  // namespace

bool SaveWholeFile(FileSystem& files, const std::string& path, const std::string& text) {
  if (path.empty()) return false;
  if (IsNoOrdinaryFile(files, path)) return WriteInPlace(files, path, text);
  return ReplaceWhole(files, files.FollowLinks(path), text);
}

std::vector<std::string> HalfSavedFiles(FileSystem& files, const std::string& path) {
  const std::string first = files.FollowLinks(path) + kNew;
  std::vector<std::string> found = files.PathsWithPrefix(first);
  std::erase_if(found, [&](const std::string& name) {
    return name.find_first_not_of("0123456789", first.size()) != std::string::npos;
  });
  return found;
}

void RemoveIfThere(FileSystem& files, const std::string& path) {
  if (!path.empty() && files.Exists(path)) files.Remove(path);
}

bool IsNoOrdinaryFile(FileSystem& files, const std::string& path) {
  const std::string target = files.FollowLinks(path);
  return files.Exists(target) && !files.IsPlainFile(target);
}

}  // namespace tarvendo
