#include "base/whole_file.h"

#include <utility>

#include "base/log.h"
#include "platform/files.h"

namespace tarvendo {
namespace {

/// So many processes may save one file at the same time.
constexpr int kMostNames = 9;

/// Behind the name of the file that is being saved.
constexpr const char* kNew = ".tarvendo.new";

/// Whether a save waits for the disk.
enum class Wait { kNo, kForDisk };

using Stamp = std::optional<FileStamp>;

std::string TemporaryName(const std::string& path, int n) {
  return path + kNew + (n == 1 ? "" : std::to_string(n));
}

bool WriteAndClose(OutputFile& file, const std::string& text, Wait wait) {
  const bool written = file.Write(text) && (wait == Wait::kNo || file.Sync());
  return file.Close() && written;
}

bool WriteInPlace(FileSystem& files, const std::string& path, const std::string& text, Wait wait) {
  const std::unique_ptr<OutputFile> file = files.Create(path);
  return file && WriteAndClose(*file, text, wait);
}

/// A file that is being written, and its name.
struct Temporary {
  std::string path;
  NewFileAttempt attempt;
};

/// A new file beside `path`, with its permissions. No file when none can be made there.
Temporary MakeTemporary(FileSystem& files, const std::string& path) {
  for (int n = 1; n <= kMostNames; ++n) {
    const std::string name = TemporaryName(path, n);
    NewFileAttempt attempt = files.CreateNew(name, path);
    if (attempt.file || attempt.is_forbidden) return {name, std::move(attempt)};
    if (!files.Exists(name)) break;
  }
  return {};
}

/// Deletes what ended processes have left under the further names. CreateNew tells that from what
/// somebody is still writing: it replaces the one and refuses the other.
void RemoveLeftOvers(FileSystem& files, const std::string& path) {
  for (int n = 2; n <= kMostNames; ++n) {
    const std::string name = TemporaryName(path, n);
    if (!files.Exists(name)) continue;
    const NewFileAttempt taken = files.CreateNew(name, path);
    if (!taken.file) continue;
    taken.file->Close();
    files.Remove(name);
  }
}

/// Whether the old file may be changed, which a rename does not ask. Opening for appending leaves
/// what is in it alone.
bool MayBeChanged(FileSystem& files, const std::string& path) {
  return files.Append(path) != nullptr;
}

bool PutInPlaceOf(FileSystem& files, const Temporary& temporary, const std::string& path,
                  const std::string& text, Wait wait, Stamp& stamp) {
  if (!WriteAndClose(*temporary.attempt.file, text, wait)) return false;
  // Behind the rename it may be somebody else's file already.
  if (wait == Wait::kForDisk) stamp = files.Stamp(temporary.path);
  return wait == Wait::kNo ? files.Rename(temporary.path, path)
                           : files.RenameDurably(temporary.path, path);
}

/// The file is there under this very name, or nothing is.
SaveOutcome ReplaceWhole(FileSystem& files, const std::string& path, const std::string& text,
                         Wait wait, Stamp& stamp) {
  if (files.Exists(path) && !MayBeChanged(files, path)) return SaveOutcome::kFailed;
  const Temporary temporary = MakeTemporary(files, path);
  if (temporary.attempt.is_forbidden) {
    return WriteInPlace(files, path, text, wait) ? SaveOutcome::kInPlace : SaveOutcome::kFailed;
  }
  if (!temporary.attempt.file) return SaveOutcome::kFailed;
  if (!PutInPlaceOf(files, temporary, path, text, wait, stamp)) {
    RemoveIfThere(files, temporary.path);
    return SaveOutcome::kFailed;
  }
  RemoveLeftOvers(files, path);
  return SaveOutcome::kSaved;
}

SaveOutcome Save(FileSystem& files, const std::string& path, const std::string& text, Wait wait,
                 Stamp& stamp) {
  if (path.empty()) return SaveOutcome::kFailed;
  if (!IsNoOrdinaryFile(files, path)) {
    return ReplaceWhole(files, files.FollowLinks(path), text, wait, stamp);
  }
  return WriteInPlace(files, path, text, wait) ? SaveOutcome::kSaved : SaveOutcome::kFailed;
}

}  // namespace

bool SaveWholeFile(FileSystem& files, const std::string& path, const std::string& text) {
  Stamp unused;
  return Save(files, path, text, Wait::kNo, unused) != SaveOutcome::kFailed;
}

SaveOutcome SaveDurably(FileSystem& files, const std::string& path, const std::string& text,
                        std::optional<FileStamp>* stamp) {
  Stamp known;
  const SaveOutcome outcome = Save(files, path, text, Wait::kForDisk, known);
  if (stamp != nullptr) *stamp = known;
  return outcome;
}

void TellOfSaveInPlace(const std::string& name) {
  PrintText("No file can be made beside '" + name +
            "', so it is written in place:\nshould the machine stop meanwhile, it is lost.\n");
}

std::vector<std::string> HalfSavedFiles(FileSystem& files, const std::string& path) {
  const std::string first = files.FollowLinks(path) + kNew;
  std::vector<std::string> found = files.PathsWithPrefix(first);
  std::erase_if(found, [&](const std::string& name) {
    const bool is_another = name.find_first_not_of("0123456789", first.size()) != std::string::npos;
    return is_another || files.IsLocked(name);
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
