#include "reports/table_driver.h"

#include <memory>

#include "base/log.h"
#include "base/whole_file.h"
#include "platform/files.h"
#include "reports/cross_table.h"
#include "reports/html_table.h"
#include "reports/text_table.h"
#include "tourney/rounds.h"
#include "tourney/standings.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr const char* kConsoleName = "stdout";
constexpr const char* kDefaultName = "table.htm";

std::string UpdateAndMakeTable(Tourney& tourney, const TableOptions& options) {
  UpdateStandingsAndRound(tourney);
  AdjustRounds(tourney);
  const CrossTable table = BuildCrossTable(tourney, options);
  tourney.name_width = table.name_width;
  return options.html ? HtmlTable(table, tourney.Settings()) : TextTable(table);
}

bool Refuse(const std::string& path) {
  PrintText("Can't open file " + path + "!\n");
  return false;
}

/// A device or a pipe cannot be replaced by a new file: it is opened and written into.
bool WriteInPlace(Tourney& tourney, FileSystem& files, const std::string& path,
                  const TableOptions& options) {
  const std::unique_ptr<OutputFile> file = files.Create(path);
  if (!file) return Refuse(path);
  const bool written = file->Write(UpdateAndMakeTable(tourney, options));
  return file->Close() && written ? true : Refuse(path);
}

/// Opening for appending asks whether the file can be written, and leaves what is in it alone.
bool ReplaceFile(Tourney& tourney, FileSystem& files, const std::string& path,
                 const TableOptions& options) {
  const bool was_there = files.Exists(path);
  if (!files.Append(path)) return Refuse(path);
  // Whoever is asked to end while the table is made leaves no empty file.
  if (!was_there) files.Remove(path);
  return SaveWholeFile(files, path, UpdateAndMakeTable(tourney, options)) || Refuse(path);
}

}  // namespace

std::string DefaultTableFile(const Tourney& tourney) {
  return tourney.Settings().files_path + kDefaultName;
}

bool UpdateAndWriteTable(Tourney& tourney, FileSystem& files, const std::string& file,
                         const TableOptions& options) {
  if (file == kConsoleName) {
    PrintText(UpdateAndMakeTable(tourney, options));
    return true;
  }
  const std::string path = file.empty() ? DefaultTableFile(tourney) : file;
  return IsNoOrdinaryFile(files, path) ? WriteInPlace(tourney, files, path, options)
                                       : ReplaceFile(tourney, files, path, options);
}

}  // namespace tarvendo
