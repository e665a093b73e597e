#pragma once

#include <string>
#include <vector>

namespace tarvendo {

class FileSystem;

/// Makes `text` the content of a file, whole or not at all: the text goes to a new file in the same
/// directory, which then replaces the old one by a rename and has its permissions. The new file's
/// name is the old one's with ".new" behind it, or, when that is taken, ".new2" and so on. A
/// symbolic link is followed, and what it leads to is replaced. Where no new file can be made, or
/// where the name stands for something else than an ordinary file (a device), the file is written
/// in place. False when the text did not arrive, also because the old file may not be changed; it
/// is then as it was, unless it was written in place.
bool SaveWholeFile(FileSystem& files, const std::string& path, const std::string& text);

/// The new files that a program which ended in the middle of SaveWholeFile has left beside the
/// file, or that one is writing now: "table.htm.new", "table.htm.new2" for "table.htm".
std::vector<std::string> HalfSavedFiles(FileSystem& files, const std::string& path);

/// Whether something is there that is no ordinary file, nor a link to one: a device, a directory.
bool IsNoOrdinaryFile(FileSystem& files, const std::string& path);

/// Deletes the file when it is there and has a name. One that cannot be deleted is left.
void RemoveIfThere(FileSystem& files, const std::string& path);

}  // namespace tarvendo
