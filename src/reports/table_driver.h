#pragma once

#include <string>

#include "reports/table_options.h"

namespace tarvendo {

class FileSystem;
class Tourney;

/// "table.htm" behind FilesPath: where the table goes that is written behind each result.
std::string DefaultTableFile(const Tourney& tourney);

/// Writes the table of the standings, in the form that the options ask for. An empty `file` is
/// DefaultTableFile; "stdout" prints the table through the log; any other name is a
/// file, which is saved whole or not at all (base/whole_file.h). A file that cannot be opened or
/// saved prints "Can't open file %s!\n" and gives false; when it cannot be opened, nothing is
/// computed either. Computes the standings (which may move the current round on), brings Rounds
/// within its limits (which may print) and makes NameWidth that of the table. Called by the
/// tourney's holder.
bool WriteTable(Tourney& tourney, FileSystem& files, const std::string& file,
                const TableOptions& options);

}  // namespace tarvendo
