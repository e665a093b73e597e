#include "reports/table_options.h"

#include "base/text.h"
#include "tourney/tourney.h"

namespace tarvendo {

TableOptions TextTableDefaults() {
  return {};
}

TableOptions HtmlTableDefaults(const Tourney& tourney) {
  TableOptions options;
  options.html = true;
  options.bar = true;
  options.pictures = !tourney.Settings().pics_dir.empty();
  return options;
}

bool SetTableSwitch(TableOptions& options, std::string_view word) {
  for (const TableSwitch& one : kTableSwitches) {
    const bool is_on = EqualsNoCase(word, one.on);
    if (!is_on && !EqualsNoCase(word, one.off)) continue;
    options.*one.option = is_on;
    return true;
  }
  return false;
}

}  // namespace tarvendo
