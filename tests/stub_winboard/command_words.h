#pragma once

#include <string>
#include <vector>

namespace stub {

/// The words behind the program's name, with the quotes that hold blanks together taken off, single
/// ones too: WinBoard takes its command line apart by itself, whatever the host makes of it.
std::vector<std::string> CommandWords(int count, char** words);

/// WinBoard has a window and no console: what happens to the console does not reach it.
void LeaveConsole();

/// A file name of the command line in the form that the host takes.
std::string HostName(std::string name);

}  // namespace stub
