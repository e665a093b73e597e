#include "publish/report_files.h"

#include <algorithm>

#include "base/log.h"
#include "base/whole_file.h"
#include "platform/paths.h"
#include "publish/csv_files.h"
#include "publish/json_file.h"
#include "publish/page.h"
#include "publish/pgn_file.h"
#include "publish/report_model.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

/// Up to so many bytes of games are written with every page.
constexpr std::uint64_t kQuicklyWritten = std::uint64_t{4} << 20U;

std::uint64_t EndOfRecords(const Report& report) {
  std::uint64_t end = 0;
  for (const ReportGame& game : report.games) {
    if (game.pgn_offset) end = std::max(end, *game.pgn_offset + game.pgn_size);
  }
  return end;
}

}  // namespace

bool MakeReportDirectory(FileSystem& files, const std::string& path) {
  if (files.MakeDirectory(path)) return true;
  const std::size_t separator = LastSeparator(path);
  if (separator == std::string::npos || separator == 0 || files.Exists(path)) return false;
  return MakeReportDirectory(files, path.substr(0, separator)) && files.MakeDirectory(path);
}

ReportFiles::ReportFiles(FileSystem& files, std::string directory)
    : files_(files), directory_(std::move(directory)), records_(files) {}

bool ReportFiles::Save(const char* name, const std::string& text) {
  const std::string path = directory_ + "\\" + name;
  if (SaveWholeFile(files_, path, text)) return true;
  if (failed_.empty()) failed_ = path;
  return false;
}

void ReportFiles::WriteGames(const Report& report, bool is_last) {
  const std::uint64_t end = EndOfRecords(report);
  const bool is_shorter = end < pgn_until_;
  const bool is_due =
      is_last || is_shorter || end <= kQuicklyWritten || end >= pgn_until_ + pgn_until_ / 4;
  if (!is_due || (end == pgn_until_ && !is_last)) return;
  const std::string pgn = GamesPgn(report, records_, files_);
  if (Save("games.pgn", pgn)) pgn_until_ = end;
}

bool ReportFiles::Write(const Tourney& tourney, const ReportMoment& moment) {
  failed_.clear();
  records_.Look(moment.pgn_path);
  const Report report = MakeReport(tourney, records_, moment.playing, moment.changed_at);
  WriteGames(report, moment.is_last || report.counts.Left() == 0);
  Save("standings.csv", StandingsCsv(report));
  Save("games.csv", GamesCsv(report));
  Save("tourney.json", ReportJson(report));
  Save("index.html", ReportPage(report, {pgn_until_}));
  if (failed_.empty()) {
    has_told_ = false;
  } else if (!has_told_) {
    PrintError("The report cannot be written: '" + failed_ + "'.\n");
    has_told_ = true;
  }
  return failed_.empty();
}

}  // namespace tarvendo
