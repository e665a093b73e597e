#include "console/resume.h"

#include "base/log.h"
#include "pairing/bracket_list.h"
#include "platform/files.h"
#include "runner/spool.h"
#include "runner/tourney_room.h"
#include "tourney/runner_switch_commands.h"
#include "tourney/tourney_file.h"

namespace tarvendo {

std::string WhyNotResumed(FileSystem& files, const std::string& path) {
  if (TourneyFile::IsOfEmergency(path) || TourneyFile::IsOfEmergency(files.FollowLinks(path))) {
    return "--resume does not play on in '" + path +
           "': the next emergency would replace it.\n"
           "Resume the tourney's own file: AutoSave has put every result into it. Or start the\n"
           "program without --resume, type 'load " +
           TourneyFile::kEmergencyName +
           "' and 'save', and resume the file that\nthe tourney is saved to from then on.";
  }
  if (!files.IsReadable(path)) return "--resume: '" + path + "' cannot be read.";
  if (!TourneyFile::IsTourneyFile(files, path)) {
    return "--resume: '" + path + "' is no tourney file.";
  }
  return "";
}

bool ResumeTourney(TourneyRoom& room, const std::string& path) {
  const Hold hold = room.shared.Take();
  TourneyFile& file = room.file.With(hold);
  if (!file.Load(*hold, path)) {
    Print("Loading tourney failed!\n");
    return false;
  }
  room.brackets.With(hold).Clear();
  Print("Tourney loaded.\n");
  hold->ChangeSettings()->auto_save = 1;
  file.SetName(path);
  PrintText("AutoSave is now ON, save file: " + path + "\n");
  SpoolAll(*hold, room.host.files);
  SwitchRunnerOn(*hold);
  file.AutoSave(*hold);
  return true;
}

}  // namespace tarvendo
