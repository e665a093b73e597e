#pragma once

namespace tarvendo {

class FileSystem;
class Tourney;
class TourneyFile;

/// Deletes what a program that ended in the middle of a save has left of the files that a runner
/// writes: the tourney file, the table and the games' batch files (gN.BAT.new). Called when the
/// runner begins in a FilesPath: whoever holds its lock is the only one who writes them, but for
/// what somebody types at that moment, whose save would fail and say so.
void RemoveHalfSaved(const Tourney& tourney, FileSystem& files, TourneyFile& file);

}  // namespace tarvendo
