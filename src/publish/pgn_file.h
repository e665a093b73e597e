#pragma once

#include <string>

namespace tarvendo {

class FileSystem;
class PgnRecords;
struct Report;

/// The records of the report's games, in the order of the list, as they stand in the tourney's PGN
/// file, but in UTF-8 and with a tag Termination where it is known. Reads that file; empty when it
/// cannot be read.
std::string GamesPgn(const Report& report, const PgnRecords& records, FileSystem& files);

/// A record with that Termination tag behind its other tags; as it is when it has one already, or
/// when `termination` is empty.
std::string WithTermination(const std::string& record, const std::string& termination);

}  // namespace tarvendo
