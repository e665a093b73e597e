#pragma once

#include <optional>
#include <string>
#include <vector>

namespace tarvendo {

class FileSystem;
struct FileStamp;

/// How a durable save has ended.
enum class SaveOutcome {
  kFailed,   ///< the text did not arrive
  kSaved,    ///< it is on the disk
  kInPlace,  ///< likewise, but a stop of the machine meanwhile would have destroyed the old text
};

/// Makes `text` the content of a file, whole or not at all: the text goes to a new file in the same
/// directory, which then replaces the old one by a rename and has its permissions. The new file's
/// name is the old one's with ".tarvendo.new" behind it or, while another process writes that,
/// ".tarvendo.new2" and so on to 9; what an ended process has left under these names goes. A
/// symbolic link is followed, and what it leads to is replaced. Where the directory takes no new
/// file, or where the name stands for something else than an ordinary file (a device), the file is
/// written in place. False when the text did not arrive, also because the old file may not be
/// changed; it is then as it was, unless it was written in place.
bool SaveWholeFile(FileSystem& files, const std::string& path, const std::string& text);

/// Saves in the same way, and whoever loses power afterwards finds the new text, or, before, the
/// old one. `stamp` gets that of the new file, or nothing when it was written in place.
SaveOutcome SaveDurably(FileSystem& files, const std::string& path, const std::string& text,
                        std::optional<FileStamp>* stamp = nullptr);

/// Tells the user of an ordinary file that was written in place, under the name that he gave it.
void TellOfSaveInPlace(const std::string& name);

/// The new files that a program which ended in the middle of a save has left beside the file, and
/// that nobody is writing any more: "table.htm.tarvendo.new" for "table.htm".
std::vector<std::string> HalfSavedFiles(FileSystem& files, const std::string& path);

/// Whether something is there that is no ordinary file, nor a link to one: a device, a directory.
bool IsNoOrdinaryFile(FileSystem& files, const std::string& path);

/// Deletes the file when it is there and has a name. One that cannot be deleted is left.
void RemoveIfThere(FileSystem& files, const std::string& path);

}  // namespace tarvendo
