#include <algorithm>

#include "base/log.h"
#include "base/text.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/handlers.h"
#include "console/word_form.h"
#include "platform/clock.h"
#include "tourney/runner_switch_commands.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr long long kLargestPart = 99999;  ///< more than any part of a date may be
constexpr int kLastYear = 2999;            ///< not every host's calendar knows later years

/// The next number of a date or a time, behind `separator` when it is not the first; 0 when it is
/// missing or negative.
int NextPart(Scanner& scanner, char separator) {
  long long part = 0;
  if (separator != '\0' && !scanner.ReadCharacter(separator)) return 0;
  scanner.ReadNumber(part);
  return static_cast<int>(std::clamp<long long>(part, 0, kLargestPart));
}

int UpTo(int part, int largest, int otherwise) {
  return part > largest ? otherwise : part;
}

/// Reads hours, minutes and seconds; what is out of range becomes 0.
void ReadTimeOfDay(const std::string& word, CalendarTime& time) {
  Scanner scanner(word);
  time.hour = UpTo(NextPart(scanner, '\0'), 23, 0);
  time.minute = UpTo(NextPart(scanner, ':'), 59, 0);
  time.second = UpTo(NextPart(scanner, ':'), 59, 0);
}

/// Reads day, month and year. A day or a month that is out of range becomes 1, a year before 2001
/// becomes 2010, and one behind the last year that every calendar knows becomes that year.
void ReadDate(const std::string& word, CalendarTime& time) {
  Scanner scanner(word);
  const auto from_one = [](int part) { return part == 0 ? 1 : part; };
  time.day = from_one(UpTo(NextPart(scanner, '\0'), 31, 1));
  time.month = from_one(UpTo(NextPart(scanner, '.'), 12, 1));
  const int year = NextPart(scanner, '.');
  time.year = year < 2001 ? 2010 : std::min(year, kLastYear);
}

/// The moment that the words behind Run or Stop mean, in seconds since the epoch.
long long ReadMoment(const CommandContext& context) {
  const CommandArgs& args = context.args;
  CalendarTime time = LocalCalendar(context.host.clock.Now());
  if (args.Count() > 2) ReadDate(args.Word(1), time);
  ReadTimeOfDay(args.Word(args.Count() > 2 ? 2 : 1), time);
  return FromLocalCalendar(time);
}

/// The word that takes a set time back.
constexpr WordForm kClear{"clear", "c"};

struct SwitchCommand {
  void (*now)(Tourney& tourney);
  void (*at)(Tourney& tourney, long long time);
  const char* cleared;
};

void RunSwitchCommand(const CommandContext& context, const SwitchCommand& command) {
  if (context.args.Count() < 2) {
    command.now(context.tourney);
  } else if (context.args.Count() == 2 && BeginsWithNoCase(context.args.Word(1), kClear.prefix)) {
    command.at(context.tourney, 0);
    PrintText(command.cleared);
  } else {
    command.at(context.tourney, ReadMoment(context));
  }
}

}  // namespace

std::vector<WordForm> SwitchWords() {
  return {kClear};
}

void DoRun(CommandContext& context) {
  RunSwitchCommand(context, {SwitchRunnerOn, SetStartTime, "Runner start time cleared.\n"});
}

void DoStop(CommandContext& context) {
  RunSwitchCommand(context, {SwitchRunnerOff, SetStopTime, "Runner stop time cleared.\n"});
}

}  // namespace tarvendo
