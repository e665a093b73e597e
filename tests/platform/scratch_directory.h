#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

namespace tarvendo {

/// An empty directory of a test's or a benchmark's own, removed with everything in it at the end.
class ScratchDirectory {
 public:
  ScratchDirectory() {
    std::random_device device;
    do {
      path_ = std::filesystem::temp_directory_path() / ("tarvendo-" + std::to_string(device()));
    } while (!std::filesystem::create_directory(path_));
  }
  ~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  std::string Path() const { return path_.string(); }

  /// The full name of a file in it, with the separator that the program adds.
  std::string File(const std::string& name) const { return path_.string() + "\\" + name; }

  /// The bytes of a file in it, read by the standard library; "(missing)" when it is not there.
  std::string Bytes(const std::string& name) const {
    std::ifstream file(path_ / name, std::ios::binary);
    if (!file) return "(missing)";
    return std::string(std::istreambuf_iterator<char>(file), {});
  }

  void Put(const std::string& name, const std::string& bytes) const {
    std::ofstream file(path_ / name, std::ios::binary | std::ios::trunc);
    file << bytes;
  }

 private:
  std::filesystem::path path_;
};

}  // namespace tarvendo
