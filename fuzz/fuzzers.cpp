#include "fuzzers.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace tarvendo {
namespace {

using Fuzzer = void (*)(const std::uint8_t* data, std::size_t size);

constexpr std::pair<std::string_view, Fuzzer> kFuzzers[] = {
    {"batch_file", FuzzBatchFile},     {"claim", FuzzClaim},
    {"command_line", FuzzCommandLine}, {"debug_file", FuzzDebugFile},
    {"emergency", FuzzEmergency},      {"engines_json", FuzzEnginesJson},
    {"help_file", FuzzHelpFile},       {"log", FuzzLog},
    {"openings", FuzzOpenings},        {"pgn", FuzzPgn},
    {"pgn_journal", FuzzPgnJournal},   {"player_file", FuzzPlayerFile},
    {"start_up", FuzzStartUp},         {"table_options", FuzzTableOptions},
    {"tourney_file", FuzzTourneyFile}, {"winboard_ini", FuzzWinboardIni},
};

/// The fuzzer that is asked for; ends the program when there is none of that name.
Fuzzer FindChosen() {
  const char* const wish = std::getenv("TARVENDO_FUZZER");
  const std::string_view name = wish == nullptr ? "" : wish;
  const auto* const found = std::find_if(std::begin(kFuzzers), std::end(kFuzzers),
                                         [&](const auto& known) { return known.first == name; });
  if (found != std::end(kFuzzers)) return found->second;
  std::fputs("TARVENDO_FUZZER has to name one of these:", stderr);
  for (const auto& [known, fuzzer] : kFuzzers)
    std::fprintf(stderr, " %s", known.data());
  std::fputs("\n", stderr);
  // To libFuzzer an ordinary end would be a finding.
  std::_Exit(2);
}

}  // namespace
}  // namespace tarvendo

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const auto fuzzer = tarvendo::FindChosen();
  fuzzer(data, size);
  return 0;
}
