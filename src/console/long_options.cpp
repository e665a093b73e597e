#include "console/long_options.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <numeric>
#include <vector>

namespace tarvendo {
namespace {

constexpr std::array kLongOptions = {
    LongOption{"--wait", "", &StartUp::waits, "at the end, wait until all games have been played"},
    LongOption{"--resume", "FILE", PathValue{&StartUp::resume},
               "play what is left of the tourney in FILE, save it, end"},
    LongOption{"--exit-code", "", &StartUp::gives_code,
               "with --wait: the exit code tells how it went"},
    LongOption{"--progress", "", &StartUp::shows_progress,
               "tell how far it is, with --wait or --resume"},
    LongOption{"--log", "FILE", PathValue{&StartUp::log},
               "add what is printed to FILE, each line with its time"},
    LongOption{"--games", "N", NumberValue{&StartUp::games, 512, 10000},
               "play N games at a time, without waits between them"},
    LongOption{"--patience", "MINUTES", NumberValue{&StartUp::patience, 100000},
               "end a game that has told nothing for so long"},
    LongOption{"--report", "DIR", PathValue{&StartUp::report},
               "write a report, a web page and data, into that directory"},
    LongOption{"--openings", "FILE", PathValue{&StartUp::openings},
               "have the games start from the lines of a PGN or EPD file"},
    LongOption{"--cluster", "SCHEDULER", TextValue{&StartUp::cluster},
               "slurm: hand it the games, N (up to 10000) at a time"},
    LongOption{"--cluster-options", "WORDS", TextValue{&StartUp::cluster_options},
               "further words for Slurm's sbatch"},
    LongOption{"--play", "CLAIM", PathValue{&StartUp::play},
               "what Slurm's jobs do; nobody types it"},
    LongOption{"--help", "", &StartUp::wants_help, "print this, and end"},
    LongOption{"--version", "", &StartUp::wants_version, "print the version, and end"},
};

constexpr const char* kHelpHead =
    "Usage: tarvendo [SCRIPT] [-c] [OPTION...]\n"
    "Organises tournaments between chess engines, and lets XBoard or WinBoard play\n"
    "them. Commands come from the keyboard, or from the file SCRIPT; \"help\" typed at\n"
    "the prompt lists them.\n"
    "\n";

constexpr const char* kHelpFoot =
    "\n"
    "A value may also stand behind a \"=\": --games=4.\n"
    "\n"
    "Exit codes of --resume and of --wait --exit-code: 0: every game has a result;\n"
    "3: some game has none, or the runner stopped itself; 4: ended by Ctrl-C or a\n"
    "signal; 2: a file cannot be read, or the command line makes no sense.\n"
    "\n"
    "Examples:\n"
    "  tarvendo                           type commands\n"
    "  tarvendo go.txt -c                 read go.txt, then type commands\n"
    "  tarvendo go.txt --wait --games 4   read go.txt, play four games at a time, end\n"
    "  tarvendo --resume first.ini        play what is left of a tourney, end\n";

/// Where the explanations begin.
constexpr std::size_t kHelpColumn = 24;

std::string OptionLine(const std::string& option, const char* help) {
  std::string line = "  " + option;
  if (line.size() + 2 > kHelpColumn)
    line += "\n" + std::string(kHelpColumn, ' ');
  else
    line.resize(kHelpColumn, ' ');
  return line + help + "\n";
}

/// Fills one row after the other of the table of distances between beginnings of the two words.
std::size_t Distance(const std::string& from, const std::string& to) {
  std::vector<std::size_t> row(to.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < from.size(); ++i) {
    std::size_t diagonal = row[0];
    row[0] = i + 1;
    for (std::size_t k = 0; k < to.size(); ++k) {
      const std::size_t changed = diagonal + (from[i] == to[k] ? 0 : 1);
      diagonal = row[k + 1];
      row[k + 1] = std::min({changed, row[k] + 1, row[k + 1] + 1});
    }
  }
  return row.back();
}

/// Nobody means two options by a word of many bytes; the table of distances shall stay small.
constexpr std::size_t kMostCompared = 64;

}  // namespace

std::span<const LongOption> LongOptions() {
  return kLongOptions;
}

const LongOption& NearestLongOption(const std::string& word) {
  const std::string typed = word.substr(0, std::min(word.find('='), kMostCompared));
  const auto distance = [&typed](const LongOption& option) {
    const std::string whole = option.word;
    const bool begins = typed.size() > 2 && (whole.starts_with(typed) || typed.starts_with(whole));
    return begins ? 0 : Distance(typed, whole);
  };
  return *std::ranges::min_element(kLongOptions, {}, distance);
}

std::string CommandLineHelp() {
  std::string help = kHelpHead + OptionLine("-c", "after the script, go on with the keyboard");
  for (const LongOption& option : kLongOptions) {
    const std::string value = option.value_name;
    help += OptionLine(option.word + (value.empty() ? "" : " " + value), option.help);
  }
  return help + kHelpFoot;
}

}  // namespace tarvendo
