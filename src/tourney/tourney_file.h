#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "base/record_file.h"
#include "platform/files.h"

namespace tarvendo {

class Tourney;

/// The file that the tourney is kept in (docs/files.md): its name, what is known of its content,
/// saving and loading. There is one for the tourney, as long as the program runs; used by the
/// tourney's holder only.
///
/// A name without a directory is meant from the directory that is the current one when it is given:
/// later changes of the directory do not move the file. It is shown and saved as it was typed.
class TourneyFile {
 public:
  /// The file that the program saves to when it ends through an error, and the one before.
  static constexpr const char* kEmergencyName = "emergency.ini";
  static constexpr const char* kOldEmergencyName = "emergency.old.ini";

  /// Whether a file of that name (with or without a directory) is one of these two.
  static bool IsOfEmergency(const std::string& name);

  /// Whether the file can be read and begins as a tourney file does.
  static bool IsTourneyFile(FileSystem& files, const std::string& path);

  /// `most_empty_records`: as RecordReader counts them.
  explicit TourneyFile(FileSystem& files, int most_empty_records = kMostEmptyRecords)
      : files_(files), most_empty_records_(most_empty_records) {}

  /// The name of a save without a name, as it was typed; empty when none was given so far.
  const std::string& Name() const { return target_.name; }
  void SetName(const std::string& name);

  /// Saves to the file `name`, which is kept as the name from then on, or without a name to that
  /// one, or to "tourney.ini" behind FilesPath when there is none. A save without a name never
  /// replaces a file that is no tourney file. What was saved is on the disk. False on failure,
  /// about which nothing is printed. A text for which its line has no room is cut in the file, and
  /// a file that has to be written in place is not safe meanwhile: both are said once.
  bool Save(const Tourney& tourney, const std::string& name);

  /// Loads the file `name`, chosen as in Save; the name becomes the one that stands in it; of a
  /// file of an emergency save it is said which name that is. A file that cannot be opened gives
  /// false; one that is no tourney file prints "Not a tourney file.\n" and gives false; either
  /// changes nothing but the name. One that holds too much (kTourneyFileLimit, Tourney::ReadRecord)
  /// is told and gives false, and the name stays what it was: nobody saves to a file that could not
  /// be loaded. So it does when Terminated is thrown because the process is asked to end meanwhile.
  bool Load(Tourney& tourney, const std::string& name);

  /// Saves to the file `path` in `directory`, and nothing of what this object knows changes: the
  /// name that stands in that file is the one for saves without a name, so that a load of it leads
  /// back to the tourney's own file. False on failure.
  bool SaveBeside(const Tourney& tourney, const std::string& directory, const std::string& path);

  /// Has `before_save` called before each save to the file: for what must be on the disk first.
  void SetBeforeSave(std::function<void(const Tourney&)> before_save) {
    before_save_ = std::move(before_save);
  }

  /// With AutoSave on, saves without a name; prints "Saving tourney failed!\n" when that fails. A
  /// file that another program has changed since it was loaded or saved here is not replaced: this
  /// is said, and the runner is stopped. False when what was to be saved was not.
  bool AutoSave(Tourney& tourney);

  /// Whether the tourney is another one than it was when it was loaded or saved last.
  bool HasChanged(const Tourney& tourney) const;

  /// When another program has changed the file since it was loaded or saved here: says so and stops
  /// the runner, for what is in the file and what is here are two tourneys now.
  void StopIfChangedByOthers(Tourney& tourney);

  /// Deletes what a program that ended in the middle of a save has left beside the file. A file of
  /// such a name that does not begin as a tourney file does is left alone.
  void RemoveHalfSaved();

  /// With AutoSave on, saves in the same way, but says nothing when that fails: for a save that
  /// AutoSave follows, which then fails too. True when nothing was to be saved.
  bool TryAutoSave(const Tourney& tourney);

 private:
  /// A content of the file at a path.
  struct Content {
    std::string path;
    std::size_t size = 0;
    std::size_t hash = 0;

    bool operator==(const Content&) const = default;
  };

  /// Which file is meant by saves without a name.
  struct Target {
    std::string name;       ///< as it was typed
    std::string path;       ///< of the file with that name
    std::string directory;  ///< from which the name is meant
  };

  /// Puts the target back as it was when it is destroyed, unless it is told not to.
  class TargetKeeper;

  /// Makes a given name the name, and sees to it that there is one.
  void ChooseName(const Tourney& tourney, const std::string& name);
  /// The name in a file that was just loaded becomes the name.
  void TakeLoadedName(const Tourney& tourney, const std::string& save_file);
  bool Write(const Tourney& tourney);

  /// Whether the file holds something else than what was loaded from it or saved to it last. It is
  /// read only when its stamp is another one.
  bool WasChangedByOthers();

  /// Remembers what is in the file now; nothing when there is none.
  void Know(std::optional<std::string> text);
  Content ContentOf(const std::string& text) const;
  void ReportCutText(const std::string& text);

  FileSystem& files_;
  int most_empty_records_;
  std::function<void(const Tourney&)> before_save_;
  Target target_;
  std::optional<Content> known_;                ///< what was loaded or saved last
  std::optional<FileStamp> known_stamp_;        ///< of the file then
  std::optional<std::uint64_t> known_version_;  ///< of the tourney that was loaded or saved last
  std::set<std::string> told_in_place_;         ///< paths that were said to be written in place
  std::set<std::string> reported_;              ///< texts that were said to be cut
};

}  // namespace tarvendo
