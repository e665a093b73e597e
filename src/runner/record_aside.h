#pragma once

#include <string>

namespace tarvendo {

class FileSystem;

/// Renames a record out of the way, to gN.KIND.PGN (gN.KIND2.PGN and so on when there is one).
/// Returns the new name; empty when that failed.
std::string SetRecordAside(FileSystem& files, const std::string& pgn_file, const std::string& kind);

}  // namespace tarvendo
