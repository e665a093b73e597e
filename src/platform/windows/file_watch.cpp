#include "platform/file_watch.h"

#include <windows.h>

#include <array>
#include <cstddef>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/windows/handle.h"

namespace tarvendo {
namespace {

constexpr DWORD kChanges =
    FILE_NOTIFY_CHANGE_FILE_NAME | FILE_NOTIFY_CHANGE_SIZE | FILE_NOTIFY_CHANGE_LAST_WRITE;

/// What wakes the thread for its end; the watches have numbers from 1.
constexpr ULONG_PTR kEnd = 0;

std::wstring Wide(const std::string& text) {
  const int size = static_cast<int>(text.size());
  const int room = MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(room), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), room);
  return wide;
}

/// The host takes capitals for small letters, and may tell a long name by its short form, with a
/// tilde: that one might be any.
bool MayBe(const std::wstring& name, const WCHAR* told, std::size_t told_size) {
  const std::wstring other(told, told_size);
  return other.find(L'~') != std::wstring::npos ||
         CompareStringOrdinal(name.data(), static_cast<int>(name.size()), other.data(),
                              static_cast<int>(other.size()), TRUE) == CSTR_EQUAL;
}

/// The reading of one directory's news, for one watch.
class Reading {
 public:
  Reading(Handle directory, std::wstring name, std::function<void()> on_change)
      : directory_(std::move(directory)),
        name_(std::move(name)),
        on_change_(std::move(on_change)) {}

  /// Has the news come to `port` under the number `key`.
  bool Attach(const Handle& port, ULONG_PTR key) {
    return CreateIoCompletionPort(directory_.Get(), port.Get(), key, 0) != nullptr && Ask();
  }

  /// Asks for the next news. False when there will be none any more.
  bool Ask() {
    overlapped_ = OVERLAPPED{};
    is_pending_ =
        ReadDirectoryChangesW(directory_.Get(), buffer_.data(), static_cast<DWORD>(buffer_.size()),
                              FALSE, kChanges, nullptr, &overlapped_, nullptr) != 0;
    return is_pending_;
  }

  /// The host still has the buffer.
  bool IsPending() const { return is_pending_; }
  bool IsWanted() const { return on_change_ != nullptr; }

  void Stop() {
    on_change_ = nullptr;
    if (is_pending_) CancelIoEx(directory_.Get(), &overlapped_);
  }

  /// News of `size` bytes have come; none at all: too many, or the directory has gone.
  void Take(DWORD size) {
    is_pending_ = false;
    if (!IsWanted()) return;
    const bool concerns = size == 0 || TellsOfName();
    Ask();
    if (concerns) on_change_();
  }

 private:
  bool TellsOfName() const {
    const std::byte* at = buffer_.data();
    while (true) {
      const auto* const news = reinterpret_cast<const FILE_NOTIFY_INFORMATION*>(at);
      const WCHAR* const told = &news->FileName[0];
      if (MayBe(name_, told, news->FileNameLength / sizeof(WCHAR))) return true;
      if (news->NextEntryOffset == 0) return false;
      at += news->NextEntryOffset;
    }
  }

  Handle directory_;
  std::wstring name_;
  std::function<void()> on_change_;  ///< empty when nobody wants the news any more
  bool is_pending_ = false;
  OVERLAPPED overlapped_{};
  alignas(8) std::array<std::byte, 16384> buffer_{};
};

class WindowsWatches : public FileWatches {
 public:
  WindowsWatches() = default;
  ~WindowsWatches() override;
  WindowsWatches(const WindowsWatches&) = delete;
  WindowsWatches& operator=(const WindowsWatches&) = delete;

  std::unique_ptr<FileWatch> Watch(const std::string& path,
                                   std::function<void()> on_change) override;

 private:
  class Entry : public FileWatch {
   public:
    Entry(WindowsWatches& owner, ULONG_PTR key) : owner_(owner), key_(key) {}
    ~Entry() override { owner_.Forget(key_); }
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

   private:
    WindowsWatches& owner_;
    ULONG_PTR key_;
  };

  bool Start();
  void Forget(ULONG_PTR key);
  void Run();
  /// One piece of news; false when the thread is to end.
  bool Take(ULONG_PTR key, DWORD size);

  std::mutex mutex_;  ///< held while notices are given, so that none is under way behind a Forget
  bool is_over_ = false;
  ULONG_PTR last_key_ = kEnd;
  std::map<ULONG_PTR, std::unique_ptr<Reading>> readings_;
  std::unique_ptr<Handle> port_;
  std::thread thread_;
};

WindowsWatches::~WindowsWatches() {
  if (!thread_.joinable()) return;
  PostQueuedCompletionStatus(port_->Get(), 0, kEnd, nullptr);
  thread_.join();
}

std::unique_ptr<FileWatch> WindowsWatches::Watch(const std::string& path,
                                                 std::function<void()> on_change) {
  constexpr DWORD kEverybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  if (path.find('\0') != std::string::npos) return nullptr;
  const std::size_t separator = path.find_last_of("\\/:");
  const std::size_t name_at = separator == std::string::npos ? 0 : separator + 1;
  const std::string name = name_at == 0 ? "." : path.substr(0, name_at);
  Handle directory(CreateFileA(name.c_str(), FILE_LIST_DIRECTORY, kEverybody, nullptr,
                               OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OVERLAPPED,
                               nullptr));
  if (!directory.IsOpen()) return nullptr;
  const std::lock_guard<std::mutex> guard(mutex_);
  if (!Start()) return nullptr;
  const ULONG_PTR key = ++last_key_;
  auto reading = std::make_unique<Reading>(std::move(directory), Wide(path.substr(name_at)),
                                           std::move(on_change));
  if (!reading->Attach(*port_, key)) return nullptr;
  readings_.emplace(key, std::move(reading));
  return std::make_unique<Entry>(*this, key);
}

/// The thread and what it waits at, at the first watch. Under the lock.
bool WindowsWatches::Start() {
  if (thread_.joinable()) return true;
  port_ = std::make_unique<Handle>(CreateIoCompletionPort(INVALID_HANDLE_VALUE, nullptr, 0, 1));
  if (!port_->IsOpen()) return false;
  try {
    thread_ = std::thread([this] { Run(); });
  } catch (const std::system_error&) {
    return false;
  }
  return true;
}

void WindowsWatches::Forget(ULONG_PTR key) {
  const std::lock_guard<std::mutex> guard(mutex_);
  Reading& reading = *readings_.at(key);
  reading.Stop();
  // Otherwise the host still has the buffer, and says when it needs it no more.
  if (!reading.IsPending()) readings_.erase(key);
}

void WindowsWatches::Run() {
  while (true) {
    DWORD size = 0;
    ULONG_PTR key = kEnd;
    OVERLAPPED* read = nullptr;
    // A reading that was cancelled or that failed comes here as well, with its size 0.
    const BOOL succeeded = GetQueuedCompletionStatus(port_->Get(), &size, &key, &read, INFINITE);
    if (succeeded == 0 && read == nullptr) return;  // The port itself is of no use any more.
    if (!Take(key, size)) return;
  }
}

bool WindowsWatches::Take(ULONG_PTR key, DWORD size) {
  const std::lock_guard<std::mutex> guard(mutex_);
  if (key == kEnd) is_over_ = true;
  const auto found = readings_.find(key);
  if (found != readings_.end()) {
    found->second->Take(size);
    if (!found->second->IsWanted()) readings_.erase(found);
  }
  return !is_over_ || !readings_.empty();
}

}  // namespace

std::unique_ptr<FileWatches> MakeFileWatches() {
  return std::make_unique<WindowsWatches>();
}

}  // namespace tarvendo
