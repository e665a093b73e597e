#include "publish/pgn_file.h"

#include "platform/files.h"
#include "publish/pgn_records.h"
#include "publish/report_model.h"
#include "publish/utf8.h"

namespace tarvendo {

std::string WithTermination(const std::string& record, const std::string& termination) {
  if (termination.empty() || record.find("[Termination ") != std::string::npos) return record;
  std::size_t behind_tags = 0;
  while (behind_tags < record.size() && record[behind_tags] == '[') {
    const std::size_t feed = record.find('\n', behind_tags);
    if (feed == std::string::npos) return record;
    behind_tags = feed + 1;
  }
  if (behind_tags == 0) return record;
  return record.substr(0, behind_tags) + "[Termination \"" + termination + "\"]\n" +
         record.substr(behind_tags);
}

std::string GamesPgn(const Report& report, const PgnRecords& records, FileSystem& files) {
  std::string pgn;
  for (const ReportGame& game : report.games) {
    if (!game.pgn_offset) continue;
    auto record =
        files.ReadPart(records.Path(), *game.pgn_offset, static_cast<std::size_t>(game.pgn_size));
    if (!record) continue;
    std::erase(*record, '\r');
    while (record->ends_with('\n'))
      record->pop_back();
    pgn += WithTermination(ToUtf8(*record), game.termination) + "\n\n";
  }
  return pgn;
}

}  // namespace tarvendo
