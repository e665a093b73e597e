#include "console/application.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>

#include "base/log.h"
#include "console/banner.h"
#include "console/command_interpreter.h"
#include "console/command_line.h"
#include "console/exit_code.h"
#include "console/line_input.h"
#include "console/long_options.h"
#include "console/outputs.h"
#include "console/progress_display.h"
#include "console/resume.h"
#include "console/start_check.h"
#include "console/start_up.h"
#include "platform/faults.h"
#include "platform/files.h"
#include "platform/input.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "play/job_player.h"
#include "play/slurm.h"
#include "players/player_database.h"
#include "runner/runner.h"
#include "runner/tourney_room.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

constexpr const char* kStartFile = "tourney.ini";

/// A save that hangs (a fault may have left the memory allocator's lock taken) must not hang for
/// ever.
constexpr unsigned kEmergencySeconds = 30;
constexpr std::chrono::milliseconds kLockPatience{2000};

/// Where the tourney goes when the program ends through an error: into the directory in which it
/// was started, wherever it is then.
struct EmergencyPlace {
  explicit EmergencyPlace(FileSystem& files)
      : directory(files.FullPath(".")),
        file(files.FullPath(TourneyFile::kEmergencyName)),
        old_file(files.FullPath(TourneyFile::kOldEmergencyName)) {}

  const std::string directory;
  const std::string file;
  const std::string old_file;
};

/// Everything that lives from start to end, in the order in which it is made; taken down in
/// reverse.
struct Application {
  Application(Host& host, Outputs& its_outputs, const RunnerOptions& options,
              bool loads_start_tourney)
      : outputs(its_outputs),
        room(host),
        emergency(host.files),
        interpreter({room, players, ExecutableDirectory()}),
        runner(room, options) {
    if (loads_start_tourney) LoadStartTourney(host.files);
    if (!runner.StartThread()) Print("Initializing runner failed!\n");
  }

  /// The tourney beside the program, when it is there.
  void LoadStartTourney(FileSystem& files) {
    const std::string start_file = ExecutableDirectory() + kStartFile;
    const Hold hold = room.shared.Take();
    if (files.Exists(start_file)) room.file.With(hold).Load(*hold, start_file);
  }

  Outputs& outputs;
  TourneyRoom room;
  EmergencyPlace emergency;
  PlayerDatabase players;
  CommandInterpreter interpreter;
  Runner runner;
};

/// Makes TheLog for as long as it lives.
struct LogScope {
  LogScope(Host& host, Outputs& outputs)
      : log(
            host, [&outputs](const std::string& text) { outputs.ToConsole(text); },
            [&outputs](const std::string& text) { outputs.ToError(text); }) {
    TheLog = &log;
    log.AddFile(kLogFile);
  }
  ~LogScope() { TheLog = nullptr; }
  LogScope(const LogScope&) = delete;
  LogScope& operator=(const LogScope&) = delete;

  Log log;
};

void RunKeyboardPass(Application& application, bool with_banner) {
  const std::unique_ptr<InputStream> keyboard = OpenKeyboard();
  LineInput input(*keyboard, true);
  application.interpreter.RunCommandLoop(input, with_banner);
}

void RunPasses(Application& application, const StartUp& start) {
  const std::unique_ptr<InputStream> script =
      start.script.empty() ? nullptr : OpenScript(start.script);
  if (script) {
    LineInput input(*script, false);
    application.interpreter.RunCommandLoop(input, true);
  }
  if (!script || start.continues) RunKeyboardPass(application, !script);
}

RunnerOptions HowToPlay(const StartUp& start) {
  RunnerOptions options = start.games > 0 ? ManyGames(start.games) : RunnerOptions();
  options.play.replays = start.resume.empty();
  options.game.patience = std::chrono::minutes(start.patience);
  if (!start.cluster.empty()) {
    options.slurm =
        SlurmOptions{ExecutablePath(), SplitSlurmWords(start.cluster_options), start.patience};
  }
  return options;
}

/// As a job of a scheduler: there is no tourney here, and no log. The exit code tells how it ended.
int PlayAsJob(const Host& host, const StartUp& start) {
  JobPace pace;
  pace.patience = std::chrono::minutes(start.patience);
  return static_cast<int>(PlayJob(host, JobOfEnvironment(), start.play, pace, WriteConsole));
}

/// Games that are being played are left to themselves. Who plays many wants to know how many.
void TellOfGamesThatGoOn(Application& application) {
  const std::size_t games = application.runner.CountGames().under_way;
  if (games == 0) return;
  PrintError("Games that go on by themselves: " + std::to_string(games) + "\n");
}

/// Waits until the runner has nothing left to do, and shows how far it is when that is wanted.
void AwaitRunner(Application& application, const StartUp& start) {
  Runner& runner = application.runner;
  if (!start.shows_progress) return runner.AwaitIdle();
  const auto count = [&application] {
    const Runner::Counts games = application.runner.CountGames();
    RunCounts counts = CountRun(*application.room.shared.Take());
    counts.playing = games.under_way;
    counts.ended_here = games.judged;
    return counts;
  };
  ProgressDisplay display(application.room.host.clock, application.outputs, count, ColumnsOfError);
  runner.AwaitIdle([&display] { return display.Look(); });
  display.End();
}

/// What the runner has still to do is done, then the tourney is saved. Returns what is missing.
std::string FinishRun(Application& application, const StartUp& start) {
  AwaitRunner(application, start);
  if (TerminationRequested()) throw Terminated("asked to end while the runner was playing");
  const Hold hold = application.room.shared.Take();
  const bool is_saved = application.room.file.With(hold).AutoSave(*hold);
  return WhatIsMissing(*hold, is_saved);
}

/// What an earlier emergency has saved is kept, and not given away for nothing.
bool SaveTourney(Application& application, const Hold& hold) {
  FileSystem& files = application.room.host.files;
  const EmergencyPlace& place = application.emergency;
  if (files.IsPlainFile(files.FollowLinks(place.file))) {
    if (hold->Participants().empty() && hold->Games().empty()) return true;
    // Should that fail, the tourney of today counts more than the one of then.
    files.Rename(place.file, place.old_file);
  }
  return application.room.file.With(hold).SaveBeside(*hold, place.directory, place.file);
}

void SaveInEmergency(Application& application) {
  const std::string announcement =
      "An exception has occurred and tourney will be closed.\n"
      "Trying to save current tourney to file 'emergency.ini' in current directory.\n";
  WriteConsole(announcement);
  EndProcessAfter(kEmergencySeconds);
  const Hold hold = application.room.shared.TakeForEmergency(kLockPatience);
  bool saved = false;
  const bool ended_well = CallGuarded([&] { saved = SaveTourney(application, hold); });
  if (!ended_well) {
    WriteConsole("Saving failed, exiting.\n");
  } else if (!saved) {
    // The console has its two lines and no more, but nobody shall believe that the file is there.
    WriteConsoleError("Saving tourney failed!\n");
  }
  // Last, for it matters least; if it fails, a file is left that the next command writes over.
  CallGuarded([] { TheLog->DropShellOutput(); });
  CallGuarded([&] { application.outputs.NoteInEmergency(announcement); });
}

/// What is told or refused before anything is touched: the exit code then.
std::optional<int> AnswerAtOnce(const StartUp& start, FileSystem& files) {
  if (start.error.empty() && (start.wants_help || start.wants_version)) {
    WriteConsole(start.wants_help ? CommandLineHelp() : VersionLine());
    return kAllPlayed;
  }
  const std::string why = WhyRefused(start, files);
  if (why.empty()) return std::nullopt;
  WriteConsoleError(why + "\n");
  return kRefused;
}

/// Does what was asked for; the exit code for those who have asked for one.
ExitCode Run(Application& application, const StartUp& start) {
  bool is_refused = false;
  std::string missing;
  const bool ended_well = CallGuarded([&] {
    if (start.resume.empty()) {
      RunPasses(application, start);
    } else {
      PrintText(Banner());
      is_refused = !ResumeTourney(application.room, start.resume);
    }
    if (start.AwaitsEnd() && !is_refused) missing = FinishRun(application, start);
  });
  if (is_refused) return kRefused;
  if (ended_well) {
    if (start.TellsEnd() && !missing.empty()) PrintError(missing);
    return CodeOf(RunEnd::kDone, missing);
  }
  application.outputs.Status().Clear();
  const bool is_asked = TerminationRequested() && !application.runner.HasDied();
  SaveInEmergency(application);
  return CodeOf(is_asked ? RunEnd::kAsked : RunEnd::kFault, missing);
}

}  // namespace

int RunProgram(Host& host, const std::vector<std::string>& words) {
  StartUp start = ReadCommandLine(words);
  MakePathsFull(start, host.files);
  if (const std::optional<int> code = AnswerAtOnce(start, host.files)) return *code;
  if (!start.play.empty()) return PlayAsJob(host, start);
  const FaultGuard guard;
  Outputs outputs(WriteConsole, WriteConsoleError, IsOutputTerminal() && ColumnsOfError() > 0);
  if (!start.log.empty() && !outputs.AddTimedLog(host, start.log)) {
    WriteConsoleError("--log: '" + start.log + "' cannot be written to.\n");
    return kRefused;
  }
  const LogScope log(host, outputs);
  Application application(host, outputs, HowToPlay(start), start.resume.empty());
  const ExitCode code = Run(application, start);
  if (start.games > 0) TellOfGamesThatGoOn(application);
  return start.TellsEnd() ? code : kAsEver;
}

}  // namespace tarvendo
