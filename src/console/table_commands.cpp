#include "base/log.h"
#include "console/command_args.h"
#include "console/command_context.h"
#include "console/handlers.h"
#include "console/options.h"
#include "reports/table_driver.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// The switches of both table commands: for each the word that switches it on and the one that
/// switches it off.
const std::vector<OptionForm>& TableSwitches() {
  static const std::vector<OptionForm> kForms = [] {
    std::vector<OptionForm> forms;
    for (const TableSwitch& table_switch : kTableSwitches) {
      forms.push_back({table_switch.on, false, true});
      forms.push_back({table_switch.off, false, true});
    }
    return forms;
  }();
  return kForms;
}

void RunTableCommand(CommandContext& context, TableOptions options, const char* default_file) {
  const auto given = ReadOptions(context.args, TableSwitches());
  if (!given) return;
  for (const GivenOption& option : given->options)
    SetTableSwitch(options, option.form->prefix);
  const std::string first = context.args.Word(1);
  const bool names_file = !first.empty() && !first.starts_with("-");
  UpdateAndWriteTable(context.tourney, context.host.files, names_file ? first : default_file,
                      options);
}

}  // namespace

std::vector<WordForm> TableWords() {
  return WordsOf(TableSwitches());
}

void DoTable(CommandContext& context) {
  RunTableCommand(context, HtmlTableDefaults(context.tourney), "");
}

void DoTextTable(CommandContext& context) {
  RunTableCommand(context, TextTableDefaults(), "stdout");
}

}  // namespace tarvendo
