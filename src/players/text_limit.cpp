#include "players/text_limit.h"

#include <array>
#include <string>

#include "base/log.h"
#include "base/record_file.h"
#include "base/text.h"
#include "players/player.h"

namespace tarvendo {
namespace {

struct Field {
  const char* name;
  std::string PlayerTexts::*text;
};

constexpr std::array<Field, 7> kFields = {{
    {"Name", &PlayerTexts::name},
    {"ProgramExe", &PlayerTexts::program_exe},
    {"Group", &PlayerTexts::group},
    {"WhiteOptions", &PlayerTexts::white_options},
    {"BlackOptions", &PlayerTexts::black_options},
    {"Dir", &PlayerTexts::dir},
    {"InitString", &PlayerTexts::init_string},
}};

}  // namespace

void CutToLines(PlayerTexts& texts) {
  for (const Field& field : kFields) {
    std::string& text = texts.*field.text;
    if (text.size() <= kRecordText) continue;
    text.resize(kRecordText);
    PrintText(Format("%s of player '%s' cut to %d characters.\n", field.name, texts.name.c_str(),
                     static_cast<int>(kRecordText)));
  }
}

}  // namespace tarvendo
