#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "platform/files.h"

namespace tarvendo {

/// What the operating system knows a file by, whatever its name is.
struct FileIdentity {
  dev_t device;
  ino_t number;
};

/// FileSystem::Lock and IsLocked, for a path in the host's form.
LockAttempt LockHostFile(const std::string& host_path);
bool IsHostFileLocked(const std::string& host_path);

/// Whether the path, in the host's form, leads to the open file.
bool IsNameOf(const std::string& host_path, int descriptor);

/// The file behind a lock that is held.
FileIdentity IdentityOf(const LockedFile& lock);

/// The file of that name, a path in the host's form; nothing when there is none.
std::optional<FileIdentity> IdentityOfHostFile(const std::string& host_path);

/// The processes, but for this one, in which the lock of the file is held: not those that only have
/// the file open. Those that belong to other users cannot be seen.
std::vector<pid_t> LockHolders(const FileIdentity& file);

/// Whether the lock of the file is held in that process.
bool HoldsLock(pid_t process, const FileIdentity& file);

}  // namespace tarvendo
