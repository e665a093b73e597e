#pragma once

#include <string>

#include "reports/table_options.h"

namespace tarvendo {

class FileSystem;
class Tourney;

/// "table.htm" behind FilesPath: where the table goes that is written behind each result.
std::string DefaultTableFile(const Tourney& tourney);

/// Brings up to date what the table shows, and writes it in the form that the options ask for.
/// Updated are the standings (in a Swiss tourney that may move the current round on), Rounds, which
/// is brought within its limits (that may print), and NameWidth, which becomes that of the table.
///
/// An empty `file` is DefaultTableFile; "stdout" prints the table through the log; any other name
/// is a file, which is saved whole or not at all (base/whole_file.h). A file that cannot be opened
/// or saved prints "Can't open file %s!\n" and gives false; when it cannot be opened, nothing is
/// updated either. Called by the tourney's holder.
bool UpdateAndWriteTable(Tourney& tourney, FileSystem& files, const std::string& file,
                         const TableOptions& options);

}  // namespace tarvendo
