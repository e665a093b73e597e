#pragma once

namespace tarvendo {

class FileSystem;
class Tourney;
class TourneyFile;

/// Deletes what a program that ended in the middle of a save has left of the files that a runner
/// writes: the tourney file, the table and the games' batch files (gN.BAT.new). Called when the
/// runner begins in a FilesPath and has its lock, so that no other runner is writing them. A save
/// that the user types at this very moment would fail and say so.
void RemoveHalfSaved(const Tourney& tourney, FileSystem& files, TourneyFile& file);

}  // namespace tarvendo
