#pragma once

#include <string>

namespace tarvendo {

class FileSystem;

/// The help topic that an argument such as "showg" or "ShowGames" asks for, in the form that begins
/// its topic in the help file; null when help knows no such command.
const char* FindHelpTopic(const std::string& argument);

/// The Help command. `line` is the command line as it was typed. Without an argument it prints the
/// names of the commands; otherwise the topic found in the file TourneyHelp.txt of `work_dir`
/// (which ends in its separator), or why there is none. Never waits for the user, and changes
/// nothing.
///
/// The file is a row of topics, each a header line that begins with the topic's name, the text, and
/// a line that begins with -ENDTOPIC-:
///
///     Save: stores the tourney in a file
///     ...
///     -ENDTOPIC-
void Help(const std::string& line, FileSystem& files, const std::string& work_dir);

}  // namespace tarvendo
