#pragma once

#include <string>

namespace tarvendo {

class FileSystem;
class LineReader;
class PlayerDatabase;

/// Writes every player of the database to a player file (docs/files.md), whole or not at all, and
/// it is on the disk then. False when the file could not be written; nothing is printed of that.
bool WritePlayerFile(FileSystem& files, const std::string& path, const PlayerDatabase& database);

/// Adds the players of a player file to the database. A text whose first line is not "PLAYER_FILE"
/// is read as a list of engines in JSON (players/engines_json.h) when it begins with a "[", and
/// otherwise as WinBoard's configuration. With an empty path the "winboard.ini" beside WinBoard
/// (`winboard_path`) is tried, and said so; without a separator in that path nothing happens.
/// Prints "Error opening file '%s'\n" when the file cannot be read. False when nothing could be
/// read.
bool ReadPlayerFile(FileSystem& files, const std::string& path, const std::string& winboard_path,
                    PlayerDatabase& database);

/// Reads the next block of a player file and creates (or merges) its player. False when no value
/// was read: the end of the file, or no more blocks.
bool ReadPlayerBlock(LineReader& lines, PlayerDatabase& database);

}  // namespace tarvendo
