#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>

#include "fakes/disk_steps.h"

namespace tarvendo {

class MemoryFileSystem;

/// What a machine finds on its disk when its power comes back.
struct LeftOnDisk {
  std::map<std::string, std::string> files;
  std::set<std::string> directories;

  /// The text of a file; empty when it is not there.
  std::string Text(const std::string& path) const;
};

/// Puts it into a file system that has nothing of it yet.
void PutOnDisk(const LeftOnDisk& left, MemoryFileSystem& files);

/// A power failure, and what it does to everything that nobody has waited for: bytes of files and
/// names in directories.
class PowerFailure {
 public:
  /// All of that is lost.
  PowerFailure() = default;

  /// Some of it is lost, at random: a file has some of its earlier contents, or half of the next
  /// one, or that with holes of NUL bytes; a name is there or not, whatever became of others. Names
  /// for which `keep_order` says so are lost from the last one on, as in a directory that is kept
  /// in a journal: for files of which nobody ever waits.
  PowerFailure(unsigned seed, std::function<bool(const std::string& path)> keep_order)
      : loses_all_(false), random_(seed), keep_order_(std::move(keep_order)) {}

  /// What is left when the power goes behind the first `cut` of the steps.
  LeftOnDisk Behind(const DiskSteps& steps, std::size_t cut);

 private:
  struct Contents;

  std::size_t UpTo(std::size_t most);
  bool Coin() { return UpTo(1) == 1; }
  std::string Torn(const std::string& before, const std::string& after);
  std::string ContentLeft(const Contents& contents);
  std::map<std::uint64_t, std::string> ContentsLeft(const DiskSteps& steps, std::size_t cut);
  /// Which of the steps have reached the directories, one flag a step.
  std::vector<bool> NamesLeft(const DiskSteps& steps, std::size_t cut);

  bool loses_all_ = true;
  std::mt19937 random_;
  std::function<bool(const std::string&)> keep_order_;
};

}  // namespace tarvendo
