#pragma once

#include <array>
#include <string>
#include <vector>

namespace tarvendo {

class FileSystem;
class Game;
class Tourney;

/// Which games of the list are meant. Every number that is 0 matches everything.
struct GameFilter {
  bool all = false;  ///< every game, whatever the other criteria say
  int number = 0;
  int player = 0;  ///< the participant with this number plays, in either colour
  int white = 0;
  int black = 0;
  int round = 0;
  int sub_round = 0;
  int status = 0;  ///< GameStatus
  int result = 0;  ///< GameResult, compared for equality
};

/// Whether the game passes every criterion of the filter (or the filter takes all).
bool Matches(const Game& game, const GameFilter& filter);

/// Sets the width of the names in the one-line form of a game: the longest name, but at least 4.
void ComputeNameWidth(Tourney& tourney);

/// The detailed form of a game, several lines.
std::string GameData(const Game& game);

/// Prints every game that matches in a line, "%3d. Round %d-%d  %2d.%-12s - %2d.%-12s   -" and the
/// status and result columns, with the names as wide as the tourney's NameWidth (which is computed
/// anew when it is below 6).
void ListGames(Tourney& tourney, const GameFilter& filter);

/// Removes all games that match, in list order, with their files, and prints "Removing game %d..."
/// and "removed.\n" for each. Returns how many.
int RemoveGames(Tourney& tourney, FileSystem& files, const GameFilter& filter);

/// Removes the first game of the list that has that number or passes the filter, as RemoveGames
/// does. So a number with an empty filter removes the first game of the list, whatever its number.
/// Returns how many.
int RemoveFirstGame(Tourney& tourney, FileSystem& files, int number, const GameFilter& filter);

/// Removes the games of that participant, and those of nobody (number 0), from the last to the
/// first.
void RemoveGamesOf(Tourney& tourney, FileSystem& files, int player_number);

/// The files beside the game's PGN that tell why the game failed (play/game_files.h).
std::array<std::string, 2> ReasonFilesOf(const Tourney& tourney, const Game& game);

/// Deletes them.
void DeleteReasonFilesOf(const Tourney& tourney, FileSystem& files, const Game& game);

/// Deletes those of all games, for a tourney that is about to forget them.
void DeleteReasonFiles(const Tourney& tourney, FileSystem& files);

/// Deletes the game's batch file and PGN file and forgets their names; deletes its error file. The
/// files of a game that is being played, or whose end nobody has judged yet, stay.
void DeleteGameFiles(Tourney& tourney, FileSystem& files, const Game& game);

/// Adjudicates every game of the participant that is not READY as a win for the opponent, deletes
/// its files and says so. False, with "Can't find a player by number %d!\n", when nobody has the
/// number.
bool Forfeit(Tourney& tourney, FileSystem& files, int player_number);

}  // namespace tarvendo
