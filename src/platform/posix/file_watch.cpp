#include "platform/file_watch.h"

#include <poll.h>
#include <sys/inotify.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/paths.h"
#include "platform/posix/descriptor.h"
#include "platform/posix/wake_up.h"

namespace tarvendo {
namespace {

/// Directories on other machines, or handed in by a program: what others change there the kernel
/// does not see.
bool GivesNotices(const std::string& directory) {
  constexpr std::array<unsigned long, 10> kElsewhere = {
      0x6969,                  // NFS
      0x517B,                  // SMB
      0xFF534D42, 0xFE534D42,  // CIFS, SMB2
      0x65735546,              // FUSE
      0x01021997,              // 9P, as in virtual machines
      0x00C36400,              // CEPH
      0x5346414F, 0x6B414653,  // AFS
      0x73757245               // CODA
  };
  struct statfs system {};
  if (statfs(directory.c_str(), &system) != 0) return false;
  // The number is signed on some hosts.
  const auto kind = static_cast<unsigned long>(system.f_type) & 0xFFFFFFFFUL;
  return std::find(kElsewhere.begin(), kElsewhere.end(), kind) == kElsewhere.end();
}

class InotifyWatches : public FileWatches {
 public:
  InotifyWatches() = default;
  ~InotifyWatches() override;
  InotifyWatches(const InotifyWatches&) = delete;
  InotifyWatches& operator=(const InotifyWatches&) = delete;

  std::unique_ptr<FileWatch> Watch(const std::string& path,
                                   std::function<void()> on_change) override;

 private:
  class Entry : public FileWatch {
   public:
    Entry(InotifyWatches& owner, int directory, std::string name, std::function<void()> on_change)
        : owner_(owner),
          directory_(directory),
          name_(std::move(name)),
          on_change_(std::move(on_change)) {}
    ~Entry() override { owner_.Forget(*this); }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

    int Directory() const { return directory_; }
    const std::string& Name() const { return name_; }
    void Tell() const { on_change_(); }

   private:
    InotifyWatches& owner_;
    int directory_;  ///< as inotify knows it
    std::string name_;
    std::function<void()> on_change_;
  };
  struct Directory {
    std::multimap<std::string, Entry*> entries;  ///< by the name of the file
    std::string path;                            ///< with its separator
    bool has_gone = false;
  };

  bool Start();
  void Forget(const Entry& entry);
  void KeepOrDrop(int directory);
  void Drop(int directory);
  void Run();
  void ReadEvents();
  void Take(const inotify_event& event, std::set<Entry*>& told);

  std::mutex mutex_;  ///< held while notices are given, so that none is under way behind a Forget
  bool is_over_ = false;
  std::map<int, Directory> directories_;
  /// A directory that stays watched although nobody wants its news at the moment; 0 for none. When
  /// a directory is watched anew, the kernel goes through all names that it remembers in it, also
  /// those of deleted files: done for each game, that would make a long tourney slow.
  int idle_ = 0;
  std::unique_ptr<Descriptor> events_;
  WakeUp wake_up_;
  std::thread thread_;
};

InotifyWatches::~InotifyWatches() {
  {
    const std::lock_guard<std::mutex> guard(mutex_);
    is_over_ = true;
  }
  wake_up_.Wake();
  if (thread_.joinable()) thread_.join();
}

std::unique_ptr<FileWatch> InotifyWatches::Watch(const std::string& path,
                                                 std::function<void()> on_change) {
  constexpr std::uint32_t kChanges = IN_CREATE | IN_MODIFY | IN_DELETE | IN_MOVED_FROM |
                                     IN_MOVED_TO | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
  if (path.find('\0') != std::string::npos) return nullptr;
  const std::string host_path = HostPath(path);
  const std::size_t separator = host_path.rfind('/');
  const std::size_t name_at = separator == std::string::npos ? 0 : separator + 1;
  const std::string directory = name_at == 0 ? "." : host_path.substr(0, name_at);
  if (!GivesNotices(directory)) return nullptr;
  const std::lock_guard<std::mutex> guard(mutex_);
  if (!Start()) return nullptr;
  // A directory that is being watched already gets its old number here.
  const int number = inotify_add_watch(events_->Get(), directory.c_str(), kChanges);
  if (number < 0) return nullptr;
  auto entry =
      std::make_unique<Entry>(*this, number, host_path.substr(name_at), std::move(on_change));
  Directory& watched = directories_[number];
  watched.entries.emplace(entry->Name(), entry.get());
  watched.path = directory;
  if (number == idle_) idle_ = 0;
  return entry;
}

/// The thread and what it reads from, at the first watch. Under the lock.
bool InotifyWatches::Start() {
  if (thread_.joinable()) return true;
  events_ = std::make_unique<Descriptor>(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  if (!events_->IsOpen() || !wake_up_.IsOpen()) return false;
  try {
    thread_ = std::thread([this] { Run(); });
  } catch (const std::system_error&) {
    return false;
  }
  return true;
}

void InotifyWatches::Forget(const Entry& entry) {
  const std::lock_guard<std::mutex> guard(mutex_);
  auto& entries = directories_.at(entry.Directory()).entries;
  const auto range = entries.equal_range(entry.Name());
  entries.erase(std::find_if(range.first, range.second,
                             [&](const auto& other) { return other.second == &entry; }));
  if (entries.empty()) KeepOrDrop(entry.Directory());
}

/// Of the directories without a watch one stays: that of the tourney, not that of a game within it.
void InotifyWatches::KeepOrDrop(int directory) {
  const Directory& left = directories_.at(directory);
  const bool is_within = idle_ != 0 && left.path.starts_with(directories_.at(idle_).path);
  const bool is_kept = !left.has_gone && !is_within;
  const int dropped = is_kept ? std::exchange(idle_, directory) : directory;
  if (dropped != 0) Drop(dropped);
}

void InotifyWatches::Drop(int directory) {
  // It fails when the directory itself has gone, and its number with it.
  inotify_rm_watch(events_->Get(), directory);
  directories_.erase(directory);
}

void InotifyWatches::Run() {
  while (true) {
    std::array<pollfd, 2> awaited = {pollfd{events_->Get(), POLLIN, 0},
                                     pollfd{wake_up_.Get(), POLLIN, 0}};
    poll(awaited.data(), awaited.size(), -1);
    const std::lock_guard<std::mutex> guard(mutex_);
    if (is_over_) return;
    ReadEvents();
  }
}

/// Reads what is there and gives each watch one notice. Under the lock.
void InotifyWatches::ReadEvents() {
  alignas(inotify_event) std::array<char, 65536> buffer;
  const ssize_t count = read(events_->Get(), buffer.data(), buffer.size());
  std::set<Entry*> told;
  for (ssize_t at = 0; at < count;) {
    // The kernel keeps them aligned.
    const auto* const event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
    Take(*event, told);
    at += static_cast<ssize_t>(sizeof(*event) + event->len);
  }
  for (const Entry* entry : told) {
    entry->Tell();
  }
}

void InotifyWatches::Take(const inotify_event& event, std::set<Entry*>& told) {
  const bool is_lost = (event.mask & IN_Q_OVERFLOW) != 0;
  const bool has_gone = (event.mask & IN_IGNORED) != 0;
  if (has_gone && event.wd == idle_) Drop(std::exchange(idle_, 0));
  for (auto& [number, directory] : directories_) {
    if (!is_lost && number != event.wd) continue;
    directory.has_gone = directory.has_gone || has_gone;
    const auto& entries = directory.entries;
    // Without a name the directory itself has gone.
    auto range = std::pair(entries.begin(), entries.end());
    if (!is_lost && event.len > 0)
      range = entries.equal_range(static_cast<const char*>(event.name));
    for (auto entry = range.first; entry != range.second; ++entry) {
      told.insert(entry->second);
    }
  }
}

}  // namespace

std::unique_ptr<FileWatches> MakeFileWatches() {
  return std::make_unique<InotifyWatches>();
}

}  // namespace tarvendo
