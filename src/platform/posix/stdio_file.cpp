#include "platform/posix/stdio_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <utility>

namespace tarvendo {
namespace {

class StdioFile : public OutputFile {
 public:
  StdioFile(std::FILE* stream, Descriptor lock) : stream_(stream), lock_(std::move(lock)) {}
  ~StdioFile() override {
    if (stream_ != nullptr) std::fclose(stream_);
  }
  StdioFile(const StdioFile&) = delete;
  StdioFile& operator=(const StdioFile&) = delete;

  bool Write(std::string_view text) override {
    return Keep(stream_ != nullptr &&
                std::fwrite(text.data(), 1, text.size(), stream_) == text.size());
  }

  bool Flush() override { return Keep(stream_ != nullptr && std::fflush(stream_) == 0); }

  bool Sync() override { return Flush() && Keep(SyncDescriptor(fileno(stream_))); }

  std::int64_t Size() override {
    struct stat status {};
    if (!Flush() || fstat(fileno(stream_), &status) != 0) return 0;
    return status.st_size;
  }

  bool Close() override {
    Flush();
    if (stream_ != nullptr) Keep(std::fclose(stream_) == 0);
    stream_ = nullptr;
    return taken_;
  }

 private:
  /// Keeps the first failure for Close: what was lost once stays lost.
  bool Keep(bool succeeded) {
    taken_ = taken_ && succeeded;
    return taken_;
  }

  std::FILE* stream_;
  Descriptor lock_;
  bool taken_ = true;
};

}  // namespace

std::unique_ptr<OutputFile> OpenStdioFile(const std::string& host_path, const char* mode) {
  std::FILE* const stream = std::fopen(host_path.c_str(), mode);
  if (stream == nullptr) return nullptr;
  return std::make_unique<StdioFile>(stream, Descriptor());
}

std::unique_ptr<OutputFile> MakeStdioFile(Descriptor file, Descriptor lock) {
  std::FILE* const stream = fdopen(file.Get(), "w");
  if (stream == nullptr) return nullptr;
  file.Release();
  return std::make_unique<StdioFile>(stream, std::move(lock));
}

}  // namespace tarvendo
