#include "fakes/power_failure.h"

#include <algorithm>

#include "fakes/memory_file_system.h"

namespace tarvendo {
namespace {

std::string DirectoryOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == 0 ? "/" : path.substr(0, slash);
}

bool IsOfNames(const DiskStep& step) {
  switch (step.kind) {
    case DiskStepKind::kName:
    case DiskStepKind::kNoName:
    case DiskStepKind::kRename:
    case DiskStepKind::kDirectory:
    case DiskStepKind::kNoDirectory:
      return true;
    case DiskStepKind::kData:
    case DiskStepKind::kDataSynced:
    case DiskStepKind::kNamesSynced:
      return false;
  }
  return false;
}

/// The name that tells in which directory the step was done.
const std::string& NameOf(const DiskStep& step) {
  return step.kind == DiskStepKind::kRename ? step.to : step.path;
}

using Names = std::map<std::string, std::uint64_t>;

void Apply(const DiskStep& step, Names& names, std::set<std::string>& directories) {
  switch (step.kind) {
    case DiskStepKind::kName:
      names[step.path] = step.file;
      break;
    case DiskStepKind::kNoName:
      names.erase(step.path);
      break;
    case DiskStepKind::kRename:
      names.erase(step.path);
      names[step.to] = step.file;
      break;
    case DiskStepKind::kDirectory:
      directories.insert(step.path);
      break;
    case DiskStepKind::kNoDirectory:
      directories.erase(step.path);
      break;
    case DiskStepKind::kData:
    case DiskStepKind::kDataSynced:
    case DiskStepKind::kNamesSynced:
      break;
  }
}

}  // namespace

/// What a file held, from what was on the disk for certain to what it held at last.
struct PowerFailure::Contents {
  std::vector<std::string> texts{""};
};

std::string LeftOnDisk::Text(const std::string& path) const {
  const auto found = files.find(path);
  return found == files.end() ? "" : found->second;
}

void PutOnDisk(const LeftOnDisk& left, MemoryFileSystem& files) {
  for (const std::string& directory : left.directories)
    files.PutDirectory(directory);
  for (const auto& [path, bytes] : left.files)
    files.Put(path, bytes);
}

LeftOnDisk PowerFailure::Behind(const DiskSteps& steps, std::size_t cut) {
  const std::map<std::uint64_t, std::string> contents = ContentsLeft(steps, cut);
  const std::vector<bool> has_arrived = NamesLeft(steps, cut);
  Names names;
  LeftOnDisk left;
  for (std::size_t i = 0; i < cut; ++i) {
    if (has_arrived[i]) Apply(steps[i], names, left.directories);
  }
  for (const auto& [path, file] : names) {
    if (left.directories.contains(DirectoryOf(path))) left.files[path] = contents.at(file);
  }
  return left;
}

std::size_t PowerFailure::UpTo(std::size_t most) {
  return random_() % (most + 1);
}

std::string PowerFailure::Torn(const std::string& before, const std::string& after) {
  const std::size_t kept = UpTo(after.size());
  if (!after.starts_with(before)) {
    return after.substr(0, kept) + before.substr(std::min(kept, before.size()));
  }
  std::string text = after.substr(0, before.size() + UpTo(after.size() - before.size()));
  if (Coin()) {
    const std::size_t hole = before.size() + UpTo(text.size() - before.size());
    const std::size_t size = UpTo(text.size() - hole);
    text.replace(hole, size, size, '\0');
  }
  return text;
}

std::string PowerFailure::ContentLeft(const Contents& contents) {
  if (loses_all_) return contents.texts.front();
  const std::size_t n = UpTo(contents.texts.size() - 1);
  const bool is_last = n + 1 == contents.texts.size();
  return is_last || Coin() ? contents.texts[n] : Torn(contents.texts[n], contents.texts[n + 1]);
}

std::map<std::uint64_t, std::string> PowerFailure::ContentsLeft(const DiskSteps& steps,
                                                                std::size_t cut) {
  std::map<std::uint64_t, Contents> all;
  for (std::size_t i = 0; i < cut; ++i) {
    const DiskStep& step = steps[i];
    if (step.kind == DiskStepKind::kName) all[step.file];
    if (step.kind == DiskStepKind::kData) all[step.file].texts.push_back(step.bytes);
    if (step.kind == DiskStepKind::kDataSynced) {
      std::vector<std::string>& texts = all[step.file].texts;
      texts.erase(texts.begin(), texts.end() - 1);
    }
  }
  std::map<std::uint64_t, std::string> left;
  for (const auto& [file, contents] : all)
    left[file] = ContentLeft(contents);
  return left;
}

std::vector<bool> PowerFailure::NamesLeft(const DiskSteps& steps, std::size_t cut) {
  std::map<std::string, std::size_t> synced;
  for (std::size_t i = 0; i < cut; ++i) {
    if (steps[i].kind == DiskStepKind::kNamesSynced) synced[steps[i].path] = i;
  }
  std::vector<bool> has_arrived(cut, false);
  std::vector<std::size_t> in_order;
  for (std::size_t i = 0; i < cut; ++i) {
    if (!IsOfNames(steps[i])) continue;
    const auto sync = synced.find(DirectoryOf(NameOf(steps[i])));
    if (sync != synced.end() && i < sync->second) {
      has_arrived[i] = true;
    } else if (!loses_all_ && keep_order_(NameOf(steps[i]))) {
      in_order.push_back(i);
    } else {
      has_arrived[i] = !loses_all_ && Coin();
    }
  }
  for (std::size_t n = UpTo(in_order.size()); n > 0; --n)
    has_arrived[in_order[n - 1]] = true;
  return has_arrived;
}

}  // namespace tarvendo
