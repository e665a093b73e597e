#pragma once

#include <string>

#include "play/game_order.h"

namespace tarvendo {

class FileSystem;

// Where WinBoard writes its debug file. One game at a time uses the file winboard.debug in
// FilesPath; every other one has a directory of its own for it, named after the game, and is
// started from a copy of its batch file that names it. A game whose order has more words than its
// batch file has such a directory for the copy, too. What a batch file says of paths means the same
// everywhere, because the current directory is FilesPath for all of them.

/// "winboard.debug" behind FilesPath.
std::string FirstDebugFile(const std::string& files_path);

/// "g7.place\winboard.debug" behind FilesPath.
std::string OwnDebugFile(const std::string& files_path, int number);

/// Makes the directory for the order's debug file and the copy of its batch file, when it needs
/// one. Returns the batch file to be started; empty when that could not be made.
std::string PreparePlace(FileSystem& files, const GameOrder& order);

/// Removes that directory, when there is one, with what the program has put into it.
void RemovePlace(FileSystem& files, const GameOrder& order);

}  // namespace tarvendo
