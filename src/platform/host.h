#pragma once

namespace tarvendo {

class Clock;
class FileSystem;
class FileWatches;
class Processes;

/// What the program uses of the machine it runs on. Owned by main (or by a test); everything that
/// is handed a Host may keep the reference as long as the program runs.
struct Host {
  FileSystem& files;
  Processes& processes;
  Clock& clock;
  FileWatches& watches;
};

}  // namespace tarvendo
