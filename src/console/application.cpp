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
#include "console/emergency.h"
#include "console/exit_code.h"
#include "console/keyboard_help.h"
#include "console/line_input.h"
#include "console/long_options.h"
#include "console/outputs.h"
#include "console/resume.h"
#include "console/run_watch.h"
#include "console/start_check.h"
#include "console/start_up.h"
#include "platform/faults.h"
#include "platform/files.h"
#include "platform/input.h"
#include "platform/paths.h"
#include "platform/processes.h"
#include "platform/terminal.h"
#include "play/job_player.h"
#include "play/slurm.h"
#include "players/player_database.h"
#include "publish/report_files.h"
#include "runner/reporter.h"
#include "runner/runner.h"
#include "runner/tourney_room.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

constexpr const char* kStartFile = "tourney.ini";

RunnerOptions HowToPlay(const StartUp& start, const std::optional<Openings>& openings,
                        Reporter* reporter) {
  RunnerOptions options = start.games > 0 ? ManyGames(start.games) : RunnerOptions();
  options.play.replays = start.resume.empty();
  options.game.patience = std::chrono::minutes(start.patience);
  if (!start.cluster.empty()) {
    options.slurm =
        SlurmOptions{ExecutablePath(), SplitSlurmWords(start.cluster_options), start.patience};
  }
  options.openings = openings;
  options.reporter = reporter;
  return options;
}

/// Everything that lives from start to end, in the order in which it is made; taken down in
/// reverse.
struct Application {
  Application(Host& host, Terminal& its_terminal, Outputs& its_outputs, const StartUp& start,
              const std::optional<Openings>& openings)
      : terminal(its_terminal),
        outputs(its_outputs),
        room(host),
        emergency(room, its_terminal, its_outputs),
        interpreter({room, players, ExecutableDirectory(), &terminal}),
        reporter(start.report.empty() ? nullptr : std::make_unique<Reporter>(room, start.report)),
        runner(room, HowToPlay(start, openings, reporter.get())) {
    if (start.resume.empty()) LoadStartTourney(host.files);
    if (!runner.StartThread()) Print("Initializing runner failed!\n");
  }

  /// The tourney beside the program, when it is there. Whoever begins anew because it cannot be
  /// read at the moment shall know that.
  void LoadStartTourney(FileSystem& files) {
    const std::string start_file = ExecutableDirectory() + kStartFile;
    const Hold hold = room.shared.Take();
    if (files.Exists(start_file) && !room.file.With(hold).Load(*hold, start_file)) {
      Print("Loading tourney failed!\n");
    }
  }

  Terminal& terminal;
  Outputs& outputs;
  TourneyRoom room;
  Emergency emergency;
  PlayerDatabase players;
  CommandInterpreter interpreter;
  std::unique_ptr<Reporter> reporter;  ///< null without --report
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
  const std::unique_ptr<InputStream> keyboard =
      application.terminal.OpenKeyboard(HelpToType(application.room, application.players));
  LineInput input(*keyboard, true);
  application.interpreter.RunCommandLoop(input, with_banner);
}

void WriteReport(Application& application) {
  if (application.reporter) application.reporter->WriteAtEnd();
}

void RunPasses(Application& application, const StartUp& start) {
  const std::unique_ptr<InputStream> script =
      start.script.empty() ? nullptr : OpenScript(start.script);
  if (script) {
    LineInput input(*script, false);
    application.interpreter.RunCommandLoop(input, true);
    WriteReport(application);
  }
  if (!script || start.continues) RunKeyboardPass(application, !script);
}

/// The openings that the command line asks for. False when they cannot be had, which is told.
bool ReadOpenings(const StartUp& start, FileSystem& files, std::optional<Openings>& openings) {
  if (start.openings.empty()) return true;
  std::string error;
  openings = Openings::Read(files, start.openings, error);
  if (!openings) WriteConsoleError(error + "\n");
  return openings.has_value();
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

/// What the runner has still to do is done, then the tourney is saved. Returns what is missing.
std::string FinishRun(Application& application, const StartUp& start) {
  if (start.shows_progress) {
    AwaitWithProgress(application.room, application.runner, application.outputs);
  } else {
    application.runner.AwaitIdle();
  }
  if (TerminationRequested()) throw Terminated("asked to end while the runner was playing");
  const Hold hold = application.room.shared.Take();
  const bool is_saved = application.room.file.With(hold).AutoSave(*hold);
  return WhatIsMissing(*hold, is_saved);
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
    if (!is_refused) WriteReport(application);
  });
  if (is_refused) return kRefused;
  if (const std::string refusal = application.runner.Refusal(); !refusal.empty()) {
    application.emergency.EndRefused(refusal);
    return kRefused;
  }
  if (ended_well) {
    if (start.TellsEnd() && !missing.empty()) PrintError(missing);
    return CodeOf(RunEnd::kDone, missing);
  }
  application.outputs.Status().Clear();
  const bool is_asked = TerminationRequested() && !application.runner.HasDied();
  application.emergency.Save();
  return CodeOf(is_asked ? RunEnd::kAsked : RunEnd::kFault, missing);
}

}  // namespace

int RunProgram(Host& host, const std::vector<std::string>& words) {
  StartUp start = ReadCommandLine(words);
  MakePathsFull(start, host.files);
  if (const std::optional<int> code = AnswerAtOnce(start, host.files)) return *code;
  if (!start.play.empty()) return PlayAsJob(host, start);
  std::optional<Openings> openings;
  if (!ReadOpenings(start, host.files, openings)) return kRefused;
  if (!start.report.empty() && !MakeReportDirectory(host.files, start.report)) {
    WriteConsoleError("The directory of the report, '" + start.report + "', cannot be made.\n");
    return kRefused;
  }
  const FaultGuard guard;
  const std::unique_ptr<Terminal> terminal = MakeTerminal();
  Outputs outputs([&](const std::string& text) { terminal->Write(text); },
                  [&](const std::string& text) { terminal->WriteError(text); },
                  IsOutputTerminal() && ColumnsOfError() > 0);
  if (!start.log.empty() && !outputs.AddTimedLog(host, start.log)) {
    WriteConsoleError("--log: '" + start.log + "' cannot be written to.\n");
    return kRefused;
  }
  const LogScope log(host, outputs);
  Application application(host, *terminal, outputs, start, openings);
  const ExitCode code = Run(application, start);
  if (start.games > 0) TellOfGamesThatGoOn(application);
  return start.TellsEnd() || code == kRefused ? code : kAsEver;
}

}  // namespace tarvendo
