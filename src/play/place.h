#pragma once

#include <string>

#include "play/game_order.h"

namespace tarvendo {

class FileSystem;

// Where WinBoard writes its debug file. One game at a time uses the file winboard.debug in
// FilesPath; every other one has a directory of its own for it, named after the game, and is
// started from a copy of its batch file that names it. A game with words that its batch file
// does not have is started from such a copy, too. What a batch file says of paths means the same
// everywhere, because the current directory is FilesPath for all of them.

/// "winboard.debug" behind FilesPath.
std::string FirstDebugFile(const std::string& files_path);

/// "g7.place\winboard.debug" behind FilesPath.
std::string OwnDebugFile(const std::string& files_path, int number);

/// The directory of that file, for an order that has one of its own; otherwise empty.
std::string OwnDirectory(const GameOrder& order);

/// The debug file of a game that was begun, when nothing else tells it: the one of its own where it
/// has a directory, otherwise the first place's.
std::string DebugFileOfBegun(FileSystem& files, const std::string& files_path, int number);

/// Makes the directory for the order's debug file, when it has one of its own, and the copy of its
/// batch file, when it needs one. Returns the batch file to be started; empty when that could not
/// be made.
std::string PreparePlace(FileSystem& files, const GameOrder& order);

/// The copy of the order's batch file, for an order that has a directory of its own or further
/// words: in that directory, or beside the batch file.
std::string CopyOfBatch(const GameOrder& order);

/// The file for what a scheduler says when it gets the order's job, in the directory of the order's
/// debug file.
std::string SubmissionFile(const GameOrder& order);

/// Removes the copy of the batch file and, for an order that has one, the directory of its debug
/// file with what is in it, the tries of a scheduler's job too. False when the directory is still
/// there.
bool RemovePlace(FileSystem& files, const GameOrder& order);

}  // namespace tarvendo
