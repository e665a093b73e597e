#pragma once

#include <filesystem>
#include <random>
#include <string>

namespace tarvendo {

/// A new directory of the real file system, deleted with everything in it at the end.
class ScratchDirectory {
 public:
  ScratchDirectory()
      : path_(std::filesystem::temp_directory_path() /
              ("tarvendo-bench-" + std::to_string(std::random_device()()))) {
    std::filesystem::create_directory(path_);
  }
  ~ScratchDirectory() {
    std::error_code left_to_the_system;
    std::filesystem::remove_all(path_, left_to_the_system);
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

}  // namespace tarvendo
