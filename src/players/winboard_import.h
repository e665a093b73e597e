#pragma once

#include <string>

namespace tarvendo {

class FileSystem;
class PlayerDatabase;
struct PlayerTexts;

/// Which of WinBoard's two engine lists a line stands in.
enum class EngineList {
  kFirst,   ///< "/firstChessProgramNames": its options become WhiteOptions
  kSecond,  ///< "/secondChessProgramNames": its options become BlackOptions
};

/// What an engine without a name is called: "c:\engines\Crafty.EXE" gives "Crafty".
std::string NameOfProgram(const std::string& program);

/// Creates the player, or adds the options that it does not have to the one who has the name. What
/// does not fit is cut, the name before it is looked up.
void AddImported(PlayerTexts texts, PlayerDatabase& database);

/// Adds every engine of the two lists of WinBoard's configuration `text` to the database. True when
/// both lists were read to their end. Otherwise false, with "Can't understand the line '%s'" (no
/// line feed) and the last line read; the engines found until then stay.
bool ImportWinboardIni(FileSystem& files, const std::string& text, PlayerDatabase& database);

/// Adds the engine of one line of such a list, such as `"fairymax" /fd="c:\fmax"
/// /name="Fairy-Max"` or `"Gamma" -fcp "randy.exe Gamma play" -fd "C:\gamma" -fUCI`. In the second
/// form the options are those of both colours, whichever list the line stands in. `in_braces` tells
/// a line of a braced list from one of a quoted one-line value, in which only the single quote
/// quotes. A line without a program adds nobody. To a player who is there already, only options are
/// added that it does not have.
void ImportEngineLine(const std::string& line, bool in_braces, EngineList list,
                      PlayerDatabase& database);

}  // namespace tarvendo
