#pragma once

#include <string>

namespace tarvendo {

class FileSystem;
class Tourney;

/// The path of one of a game's files as the user knows it: with FilesPath as it was typed, where
/// the file lies there. Orders know full paths only, which each host makes in its own way.
std::string AsTyped(const Tourney& tourney, FileSystem& files, const std::string& path);

/// Deletes a file when it has a name and is there. When it cannot be deleted: false, and "Error
/// deleting file:  %s\n", unless that `is_told` already.
bool DeleteOrTell(const Tourney& tourney, FileSystem& files, const std::string& path,
                  bool is_told = false);

/// Says that a file or a directory of that name cannot be deleted.
void TellUndeleted(const Tourney& tourney, FileSystem& files, const std::string& path);

}  // namespace tarvendo
