#include "platform/posix/new_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "platform/posix/descriptor.h"
#include "platform/posix/file_lock.h"
#include "platform/posix/stdio_file.h"

namespace tarvendo {
namespace {

/// So often somebody may be faster before he is taken to hold the name.
constexpr int kNamesTried = 10;

/// Makes a new file look like the one that it will replace. What the host refuses (only the
/// superuser gives files away) is no failure, but then nobody gets more rights than before: what
/// the old group was allowed, the new one, which is another, is not.
void TakeOver(int descriptor, const struct stat& model) {
  const bool keeps_group = fchown(descriptor, static_cast<uid_t>(-1), model.st_gid) == 0;
  const bool keeps_owner = fchown(descriptor, model.st_uid, static_cast<gid_t>(-1)) == 0;
  mode_t permissions = model.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO);
  if (!keeps_group) permissions &= ~static_cast<mode_t>(S_IRWXG);
  if (!keeps_owner) permissions |= S_IRUSR | S_IWUSR;
  fchmod(descriptor, permissions);
}

/// Deletes what an ended process has left. Only who has the lock of a file deletes it, so that
/// nobody deletes the file of another one.
bool RemoveLeftOver(const std::string& host_path) {
  const Descriptor file(open(host_path.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  return file.IsOpen() && fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode) &&
         flock(file.Get(), LOCK_EX | LOCK_NB) == 0 && IsNameOf(host_path, file.Get()) &&
         unlink(host_path.c_str()) == 0;
}

/// Where the file system has no locks, files cannot be told from left-over ones, and none is
/// deleted: then a new file needs no lock.
bool TakeOwnLock(const Descriptor& file, const std::string& host_path) {
  const bool is_taken_away = flock(file.Get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
  return !is_taken_away && IsNameOf(host_path, file.Get());
}

/// Whether it is the directory that refuses, and not the moment.
bool IsForbidden(int error) {
  return error == EACCES || error == EPERM || error == EROFS || error == ENAMETOOLONG;
}

NewFileAttempt Finish(Descriptor file, const std::string& host_path) {
  Descriptor lock(fcntl(file.Get(), F_DUPFD_CLOEXEC, 0));
  NewFileAttempt attempt;
  if (lock.IsOpen()) attempt.file = MakeStdioFile(std::move(file), std::move(lock));
  if (!attempt.file) unlink(host_path.c_str());
  return attempt;
}

}  // namespace

NewFileAttempt MakeNewFile(const std::string& host_path, const std::string& model) {
  struct stat status {};
  const bool has_model = stat(model.c_str(), &status) == 0;
  const mode_t permissions = has_model ? S_IRUSR | S_IWUSR : 0666;
  for (int i = 0; i < kNamesTried; ++i) {
    Descriptor file(open(host_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions));
    if (file.IsOpen()) {
      if (!TakeOwnLock(file, host_path)) continue;
      if (has_model) TakeOver(file.Get(), status);
      return Finish(std::move(file), host_path);
    }
    if (errno != EEXIST) return {nullptr, IsForbidden(errno)};
    if (!RemoveLeftOver(host_path)) return {};
  }
  return {};
}

bool SyncDirectoryOf(const std::string& host_path) {
  const std::size_t slash = host_path.rfind('/');
  const std::string directory = slash == std::string::npos ? "." : host_path.substr(0, slash + 1);
  const Descriptor opened(open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!opened.IsOpen()) return errno == EACCES;
  return SyncDescriptor(opened.Get());
}

}  // namespace tarvendo
