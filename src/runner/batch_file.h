#pragma once

#include <string>

namespace tarvendo {

class Game;
class Tourney;

/// "g7.BAT", "g7.PGN", "g7.debug" behind FilesPath: the names of a game's files.
std::string GameFileName(const std::string& files_path, int game_number,
                         const std::string& extension);

/// The text of the game's batch file: a remark with the round, and the command that lets WinBoard
/// play the game unless its PGN file is there already. A participant that is not found contributes
/// empty texts.
///
///     @rem Round 3
///     @if NOT EXIST c:\t\g7.PGN winboard.exe  /xponder /cp /mg 1 /sgf=c:\t\g7.PGN /tc 5:30 /inc -1
///     ...
std::string BatchText(const Tourney& tourney, const Game& game);

}  // namespace tarvendo
