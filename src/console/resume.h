#pragma once

#include <string>

namespace tarvendo {

class FileSystem;
struct TourneyRoom;

/// Why the tourney in that file cannot be gone on with, and what to do, in lines without a line
/// feed at the end; empty when it can. Nothing is touched.
std::string WhyNotResumed(FileSystem& files, const std::string& path);

/// Does what the commands load, set autosave on, spool -all and run do, and prints what they print.
/// The tourney is saved to the file that it was loaded from, whatever name stands in it. False,
/// with load's message and nothing else done, when it cannot be loaded.
bool ResumeTourney(TourneyRoom& room, const std::string& path);

}  // namespace tarvendo
