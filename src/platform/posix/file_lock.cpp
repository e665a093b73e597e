#include "platform/posix/file_lock.h"

#include <fcntl.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <thread>
#include <utility>

#include "platform/posix/descriptor.h"
#include "platform/posix/directory.h"

namespace tarvendo {
namespace {

/// Scripts use the descriptors below 10 for themselves: one of them would drop a lock that lies
/// there.
constexpr int kFirstDescriptor = 64;

/// So often another way is tried, and then somebody is taken to hold it.
constexpr int kTries = 1000;
constexpr int kQuickTries = 20;

bool FileOf(const Descriptor& file, struct stat& status) {
  return file.IsOpen() && fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode);
}

Descriptor OpenLockFile(const std::string& host_path) {
  Descriptor file(open(host_path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666));
  if (!file.IsOpen()) return file;
  Descriptor high(fcntl(file.Get(), F_DUPFD_CLOEXEC, kFirstDescriptor));
  return high.IsOpen() ? std::move(high) : std::move(file);
}

bool TakeLock(const Descriptor& file, int kind) {
  int result = 0;
  do {
    result = flock(file.Get(), kind | LOCK_NB);
  } while (result != 0 && errno == EINTR);
  return result == 0;
}

enum class Taken { kYes, kHeld, kImpossible };

/// A look (IsLocked) shares the lock for a moment and must not be mistaken for a holder: only where
/// the lock cannot even be shared somebody really holds it. Who looks may have been put to sleep in
/// the middle of it, so it gets a second at the most.
Taken TakeWholeLock(const Descriptor& file) {
  for (int i = 0; i < kTries; ++i) {
    if (TakeLock(file, LOCK_EX)) return Taken::kYes;
    if (errno != EWOULDBLOCK) return Taken::kImpossible;
    if (!TakeLock(file, LOCK_SH)) return errno == EWOULDBLOCK ? Taken::kHeld : Taken::kImpossible;
    flock(file.Get(), LOCK_UN);
    if (i < kQuickTries) {
      sched_yield();
    } else {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  }
  return Taken::kHeld;
}

class PosixLockedFile : public LockedFile {
 public:
  explicit PosixLockedFile(Descriptor file) : file_(std::move(file)) {}

  bool Replace(std::string_view text) override {
    // What was there before is cut off last: a full disk leaves more than nothing.
    return lseek(file_.Get(), 0, SEEK_SET) == 0 && WriteAll(file_.Get(), std::string(text)) &&
           ftruncate(file_.Get(), static_cast<off_t>(text.size())) == 0;
  }

  std::intptr_t HostHandle() const override { return file_.Get(); }

 private:
  Descriptor file_;
};

/// What the kernel tells of an open file: its locks too, each on a line like
///     lock:   1: FLOCK  ADVISORY  WRITE 359 00:13:11691 0 EOF
/// with the number of the file behind the last colon.
std::string InfoText(int directory, const char* name) {
  const Descriptor file(openat(directory, name, O_RDONLY | O_CLOEXEC));
  std::string text(4096, '\0');
  const ssize_t count = file.IsOpen() ? read(file.Get(), text.data(), text.size()) : -1;
  text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return text;
}

/// The device is not compared here: some file systems name another one in this text.
bool TellsOfLock(const std::string& info, ino_t number) {
  const std::size_t lock = info.find("FLOCK");
  return lock != std::string::npos && info.find("WRITE", lock) != std::string::npos &&
         info.find(std::string(":").append(std::to_string(number)).append(" "), lock) !=
             std::string::npos;
}

std::string PathOf(pid_t process, const char* what) {
  return std::string("/proc/").append(std::to_string(process)).append("/").append(what);
}

}  // namespace

LockAttempt LockHostFile(const std::string& host_path) {
  for (int i = 0; i < kTries; ++i) {
    struct stat status {};
    Descriptor file = OpenLockFile(host_path);
    if (!FileOf(file, status)) return {};
    const Taken taken = TakeWholeLock(file);
    if (taken != Taken::kYes) return {nullptr, taken == Taken::kHeld};
    // Whoever held it may have removed the file meanwhile: then this is the lock of no file.
    if (IsNameOf(host_path, file.Get())) {
      return {std::make_unique<PosixLockedFile>(std::move(file)), false};
    }
  }
  return {nullptr, true};
}

bool IsHostFileLocked(const std::string& host_path) {
  struct stat status {};
  const Descriptor file(open(host_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  return FileOf(file, status) && !TakeLock(file, LOCK_SH) && errno == EWOULDBLOCK;
}

bool IsNameOf(const std::string& host_path, int descriptor) {
  struct stat open_file {};
  struct stat named {};
  return fstat(descriptor, &open_file) == 0 && stat(host_path.c_str(), &named) == 0 &&
         open_file.st_dev == named.st_dev && open_file.st_ino == named.st_ino;
}

FileIdentity IdentityOf(const LockedFile& lock) {
  struct stat status {};
  fstat(static_cast<int>(lock.HostHandle()), &status);
  return {status.st_dev, status.st_ino};
}

std::optional<FileIdentity> IdentityOfHostFile(const std::string& host_path) {
  struct stat status {};
  if (stat(host_path.c_str(), &status) != 0) return std::nullopt;
  return FileIdentity{status.st_dev, status.st_ino};
}

bool HoldsLock(pid_t process, const FileIdentity& file) {
  const OpenedDirectory infos(opendir(PathOf(process, "fdinfo").c_str()));
  while (infos) {
    const dirent* const entry = readdir(infos.get());
    if (entry == nullptr) break;
    const char* const name = static_cast<const char*>(entry->d_name);
    if (std::isdigit(static_cast<unsigned char>(*name)) == 0) continue;
    if (!TellsOfLock(InfoText(dirfd(infos.get()), name), file.number)) continue;
    struct stat status {};
    const std::string opened = PathOf(process, "fd/") + name;
    if (stat(opened.c_str(), &status) == 0 && status.st_dev == file.device &&
        status.st_ino == file.number) {
      return true;
    }
  }
  return false;
}

std::vector<pid_t> LockHolders(const FileIdentity& file) {
  std::vector<pid_t> holders;
  const OpenedDirectory processes(opendir("/proc"));
  while (processes) {
    const dirent* const entry = readdir(processes.get());
    if (entry == nullptr) break;
    const pid_t process = std::atoi(static_cast<const char*>(entry->d_name));
    if (process > 0 && process != getpid() && HoldsLock(process, file)) {
      holders.push_back(process);
    }
  }
  return holders;
}

}  // namespace tarvendo
