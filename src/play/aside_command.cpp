#include "play/aside_command.h"

#include <utility>

#include "base/read_file.h"
#include "base/whole_file.h"

namespace tarvendo {
namespace {

/// A hundred thousand jobs take ten megabytes.
constexpr std::size_t kOutputLimit = std::size_t{256} << 20U;

}  // namespace

AsideCommand::AsideCommand(const Host& host, const std::string& line, std::string output_file,
                           std::unique_ptr<LockedFile> lock)
    : host_(host),
      output_file_(std::move(output_file)),
      process_(host_.processes.StartShell(line, output_file_, lock.get())),
      started_(host_.clock.Steady()) {}

bool AsideCommand::HasEnded() const {
  return !process_ || !host_.processes.IsRunning(*process_);
}

std::string AsideCommand::TakeOutput() {
  std::string output = ReadFile(host_.files, output_file_, kOutputLimit).value_or("");
  RemoveIfThere(host_.files, output_file_);
  return output;
}

void AsideCommand::End() {
  if (process_) host_.processes.EndBatch(*process_);
}

}  // namespace tarvendo
