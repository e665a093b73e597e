#include "console/emergency.h"

#include <chrono>

#include "base/log.h"
#include "console/outputs.h"
#include "platform/faults.h"
#include "platform/input.h"
#include "platform/terminal.h"
#include "runner/tourney_room.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

/// A save that hangs (a fault may have left the memory allocator's lock taken) must not hang for
/// ever.
constexpr unsigned kEmergencySeconds = 30;
constexpr std::chrono::milliseconds kLockPatience{2000};

bool IsEmpty(const Tourney& tourney) {
  return tourney.Participants().empty() && tourney.Games().empty();
}

}  // namespace

Emergency::Emergency(TourneyRoom& room, Terminal& terminal, Outputs& outputs)
    : room_(room),
      terminal_(terminal),
      outputs_(outputs),
      directory_(room.host.files.FullPath(".")),
      file_(room.host.files.FullPath(TourneyFile::kEmergencyName)),
      old_file_(room.host.files.FullPath(TourneyFile::kOldEmergencyName)) {}

/// The file of an earlier emergency becomes emergency.old.ini or, where that name cannot be taken,
/// emergency.old2.ini and so on. False when it is still there.
bool Emergency::SetEarlierAside() const {
  constexpr int kMostNames = 9;
  FileSystem& files = room_.host.files;
  if (files.Rename(file_, old_file_)) return true;
  const std::string stem = old_file_.substr(0, old_file_.rfind('.'));
  for (int n = 2; n <= kMostNames; ++n) {
    const std::string name = stem + std::to_string(n) + ".ini";
    if (!files.Exists(name) && files.Rename(file_, name)) return true;
  }
  return false;
}

/// What an earlier emergency has saved is kept: an empty tourney is not saved in its place, and any
/// other one only when that file has got another name, if it can.
bool Emergency::SaveTourney(const Hold& hold) {
  FileSystem& files = room_.host.files;
  if (files.IsPlainFile(files.FollowLinks(file_))) {
    if (IsEmpty(*hold)) return true;
    // The tourney of today counts more than the one of then.
    if (!SetEarlierAside()) {
      WriteConsoleError("The 'emergency.ini' of an earlier time is replaced.\n");
    }
  }
  return room_.file.With(hold).SaveBeside(*hold, directory_, file_);
}

void Emergency::Save() {
  terminal_.GiveBack();
  const std::string announcement =
      "An exception has occurred and tourney will be closed.\n"
      "Trying to save current tourney to file 'emergency.ini' in current directory.\n";
  WriteConsole(announcement);
  EndProcessAfter(kEmergencySeconds);
  const Hold hold = room_.shared.TakeForEmergency(kLockPatience);
  bool saved = false;
  const bool ended_well = CallGuarded([&] { saved = SaveTourney(hold); });
  if (!ended_well) {
    WriteConsole("Saving failed, exiting.\n");
  } else if (!saved) {
    // The console has its two lines and no more, but nobody shall believe that the file is there.
    WriteConsoleError("Saving tourney failed!\n");
  }
  // Last, for it matters least; if it fails, a file is left that the next command writes over.
  CallGuarded([] { TheLog->DropShellOutput(); });
  CallGuarded([&] { outputs_.NoteInEmergency(announcement); });
}

void Emergency::EndRefused(const std::string& refusal) {
  outputs_.Status().Clear();
  PrintError(refusal + "\n");
  CallGuarded([&] {
    const Hold hold = room_.shared.TakeForEmergency(kLockPatience);
    TourneyFile& file = room_.file.With(hold);
    if (IsEmpty(*hold) || !file.HasChanged(*hold)) return;
    if (hold->Settings().auto_save != 0) {
      file.AutoSave(*hold);
    } else if (SaveTourney(hold)) {
      PrintError("The tourney is kept in 'emergency.ini'.\n");
    } else {
      PrintError("Saving tourney failed!\n");
    }
  });
}

}  // namespace tarvendo
