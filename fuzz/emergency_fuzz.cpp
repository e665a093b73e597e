// Any bytes as emergency.ini: whatever it holds, the tourney goes on in another file, unless that
// one itself is named as its own.
#include "fuzz_input.h"
#include "fuzz_tourney.h"
#include "fuzzers.h"

namespace tarvendo {

void FuzzEmergency(const std::uint8_t* data, std::size_t size) {
  CapturedLog machine;
  // So the fuzzer has to find the header only in files that are something else.
  const std::string text = (size % 8 == 0 ? "" : "TOURNEY_FILE\n") + FuzzText(data, size);
  machine.files.Put("emergency.ini", text);
  Tourney tourney;
  tourney.ChangeSettings()->name = "before";
  const std::string before = ContentOf(tourney);
  TourneyFile file(machine.files, kFuzzedEmptyRecords);
  if (!file.Load(tourney, "emergency.ini")) {
    Demand(ContentOf(tourney) == before);
    return;
  }
  MakeSmall(tourney);
  tourney.ChangeSettings()->auto_save = 1;
  file.AutoSave(tourney);
  const bool names_itself =
      machine.files.FullPath(file.Name()) == machine.files.FullPath("emergency.ini");
  Demand(names_itself || machine.files.Bytes("emergency.ini") == text);
}

}  // namespace tarvendo
