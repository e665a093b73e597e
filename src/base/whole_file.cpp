#include "base/whole_file.h"

#include "platform/files.h"

namespace tarvendo {
namespace {

bool WriteAndClose(OutputFile& file, const std::string& text) {
  const bool written = file.Write(text);
  return file.Close() && written;
}

bool WriteInPlace(FileSystem& files, const std::string& path, const std::string& text) {
  const std::unique_ptr<OutputFile> file = files.Create(path);
  return file && WriteAndClose(*file, text);
}

}  // namespace

bool SaveWholeFile(FileSystem& files, const std::string& path, const std::string& text) {
  if (path.empty()) return false;
  if (files.Exists(path) && !files.IsPlainFile(path)) return WriteInPlace(files, path, text);
  const std::string temporary = path + ".new";
  const std::unique_ptr<OutputFile> file = files.Create(temporary);
  if (!file) return WriteInPlace(files, path, text);
  if (WriteAndClose(*file, text) && files.Rename(temporary, path)) return true;
  files.Remove(temporary);
  return false;
}

}  // namespace tarvendo
