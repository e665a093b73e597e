#include "tourney/tourney_file.h"

#include <functional>

#include "base/line_reader.h"
#include "base/log.h"
#include "base/long_read.h"
#include "base/read_file.h"
#include "base/record_file.h"
#include "base/whole_file.h"
#include "platform/files.h"
#include "platform/line_ends.h"
#include "platform/paths.h"
#include "tourney/runner_switch_commands.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr const char* kHeader = "TOURNEY_FILE";

/// So much of a text that was cut tells which one it is.
constexpr std::size_t kShownText = 60;

/// The first line of a file; nothing when it cannot be read or is empty.
std::optional<std::string> FirstLine(FileSystem& files, const std::string& path) {
  auto beginning = files.ReadPart(path, 0, kRecordLine);
  if (!beginning || beginning->empty()) return std::nullopt;
  FoldLineEnds(*beginning);
  return WithoutLineFeed(LineReader(*beginning).Read(kRecordLine).value_or(""));
}

/// Whether a save without a name would destroy something that is no tourney file.
bool IsForeign(FileSystem& files, const std::string& path) {
  return FirstLine(files, path).value_or(kHeader) != kHeader;
}

}  // namespace

class TourneyFile::TargetKeeper {
 public:
  explicit TargetKeeper(Target& target) : target_(target), before_(target) {}
  ~TargetKeeper() {
    if (keeps_) target_ = before_;
  }
  TargetKeeper(const TargetKeeper&) = delete;
  TargetKeeper& operator=(const TargetKeeper&) = delete;

  void LetGo() { keeps_ = false; }

 private:
  Target& target_;
  const Target before_;
  bool keeps_ = true;
};

bool TourneyFile::IsOfEmergency(const std::string& name) {
  const std::size_t separator = LastSeparator(name);
  const std::string bare = separator == std::string::npos ? name : name.substr(separator + 1);
  return bare == kEmergencyName || (bare.starts_with("emergency.old") && bare.ends_with(".ini"));
}

bool TourneyFile::IsTourneyFile(FileSystem& files, const std::string& path) {
  return FirstLine(files, path) == kHeader;
}

void TourneyFile::SetName(const std::string& name) {
  target_ = {name, name.empty() ? name : files_.FullPath(name), files_.FullPath(".")};
}

bool TourneyFile::SaveBeside(const Tourney& tourney, const std::string& directory,
                             const std::string& path) {
  RecordWriter writer;
  writer.WriteString(kHeader);
  tourney.WriteRecord(writer, directory == target_.directory ? target_.name : target_.path);
  return SaveDurably(files_, path, writer.Text()) != SaveOutcome::kFailed;
}

void TourneyFile::ChooseName(const Tourney& tourney, const std::string& name) {
  if (!name.empty()) {
    SetName(name);
  } else if (target_.name.empty()) {
    SetName(tourney.Settings().files_path + "tourney.ini");
  }
}

bool TourneyFile::Save(const Tourney& tourney, const std::string& name) {
  ChooseName(tourney, name);
  if (name.empty() && IsForeign(files_, target_.path)) return false;
  return Write(tourney);
}

bool TourneyFile::Write(const Tourney& tourney) {
  if (before_save_) before_save_(tourney);
  RecordWriter writer;
  writer.WriteString(kHeader);
  tourney.WriteRecord(writer, target_.name);
  const SaveOutcome outcome = SaveDurably(files_, target_.path, writer.Text(), &known_stamp_);
  const bool saved = outcome != SaveOutcome::kFailed;
  // What a failed save has left is nobody else's work.
  Know(saved ? writer.Text() : ReadFile(files_, target_.path, kTourneyFileLimit));
  if (!saved) return false;
  known_version_ = tourney.Version();
  if (outcome == SaveOutcome::kInPlace && told_in_place_.insert(target_.path).second) {
    TellOfSaveInPlace(target_.name);
  }
  for (const std::string& text : writer.CutTexts())
    ReportCutText(text);
  return true;
}

bool TourneyFile::Load(Tourney& tourney, const std::string& name) {
  TargetKeeper keeper(target_);
  ChooseName(tourney, name);
  const auto stamp = files_.Stamp(target_.path);
  // Something else may be very long, or a device without an end: it is not read.
  BoundedText read = IsForeign(files_, target_.path)
                         ? BoundedText{""}
                         : ReadLongFile(files_, target_.path, kTourneyFileLimit);
  if (read.is_too_long) {
    PrintText(TooLongMessage(target_.path, kTourneyFileLimit));
    return false;
  }
  RecordReader reader(read.text ? *read.text : std::string_view(), most_empty_records_);
  std::string header;
  reader.ReadString(header);
  if (header != kHeader) {
    keeper.LetGo();
    if (read.text) Print("Not a tourney file.\n");
    return false;
  }
  std::string save_file = target_.name;
  if (!tourney.ReadRecord(reader, save_file)) {
    PrintText("The file '" + target_.path +
              "' holds more than a tourney can, so it is not read.\n");
    return false;
  }
  keeper.LetGo();
  Know(std::move(read.text));
  known_stamp_ = stamp;
  TakeLoadedName(tourney, save_file);
  known_version_ = tourney.Version();
  return true;
}

void TourneyFile::TakeLoadedName(const Tourney& tourney, const std::string& save_file) {
  const std::string loaded = target_.name;
  SetName(save_file);
  if (!IsOfEmergency(loaded) || loaded == save_file) return;
  ChooseName(tourney, "");
  PrintText("From now on the tourney is saved to '" + target_.name + "'.\n");
}

bool TourneyFile::AutoSave(Tourney& tourney) {
  if (TryAutoSave(tourney)) return true;
  if (WasChangedByOthers()) {
    StopIfChangedByOthers(tourney);
  } else {
    Print("Saving tourney failed!\n");
  }
  return false;
}

void TourneyFile::StopIfChangedByOthers(Tourney& tourney) {
  if (!WasChangedByOthers()) return;
  PrintText("The tourney file '" + target_.name +
            "' was changed by another program, so it is not saved.\n"
            "Save by hand replaces it, Load takes what is in it.\n");
  if (tourney.Switch().IsRunning()) SwitchRunnerOff(tourney);
  tourney.ChangeSwitch()->StopItself();
}

void TourneyFile::RemoveHalfSaved() {
  if (target_.path.empty()) return;
  for (const std::string& path : HalfSavedFiles(files_, target_.path)) {
    const auto text = files_.ReadText(path);
    const std::string_view header = kHeader;
    if (text && text->substr(0, header.size()) == header.substr(0, text->size())) {
      files_.Remove(path);
    }
  }
}

bool TourneyFile::HasChanged(const Tourney& tourney) const {
  return known_version_ != tourney.Version();
}

bool TourneyFile::TryAutoSave(const Tourney& tourney) {
  if (tourney.Settings().auto_save == 0) return true;
  ChooseName(tourney, "");
  return !WasChangedByOthers() && !IsForeign(files_, target_.path) && Write(tourney);
}

bool TourneyFile::WasChangedByOthers() {
  if (!known_ || known_->path != target_.path) return false;
  const auto stamp = files_.Stamp(target_.path);
  if (!stamp || stamp == known_stamp_) return false;
  if (stamp->size > static_cast<std::int64_t>(kTourneyFileLimit)) return true;
  const auto text = ReadFile(files_, target_.path, kTourneyFileLimit);
  if (text && !(ContentOf(*text) == *known_)) return true;
  if (text) known_stamp_ = stamp;
  return false;
}

void TourneyFile::Know(std::optional<std::string> text) {
  known_.reset();
  if (!text) return;
  // A text that ends in a carriage return makes CR LF with the line feed, which a read folds.
  FoldLineEnds(*text);
  known_ = ContentOf(*text);
}

TourneyFile::Content TourneyFile::ContentOf(const std::string& text) const {
  return {target_.path, text.size(), std::hash<std::string>()(text)};
}

void TourneyFile::ReportCutText(const std::string& text) {
  if (!reported_.insert(text).second) return;
  PrintText("In the tourney file a text of " + std::to_string(text.size()) + " bytes is cut to " +
            std::to_string(kRecordText) + ": '" + text.substr(0, kShownText) + "...'\n");
}

}  // namespace tarvendo
