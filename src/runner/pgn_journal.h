#pragma once

#include <set>
#include <string>
#include <vector>

#include "play/game_order.h"

namespace tarvendo {

class FileSystem;
class Game;
class Tourney;
class TourneyFile;

// The tourney's PGN file holds whole games, and each of them once, wherever the program ends.
// Before games are added to it, a file of its name with ".journal" behind it notes which games they
// are, how long the PGN file is and what will be added. The journal goes behind the save that holds
// the results. Whoever finds one later cuts from the PGN file the games that it notes and the
// tourney does not know. Only bytes at the end of the file are ever cut, and only when they equal
// what was noted, or its beginning. docs/files.md tells the form of a journal.

/// When games are added to the PGN file.
enum class PgnPace { kAtOnce, kTogether };

/// Games on their way into the tourney's PGN file. Used by the tourney's holder.
class PgnGroup {
 public:
  PgnGroup(FileSystem& files, PgnPace pace) : files_(files), pace_(pace) {}

  /// Takes a game whose text for the PGN file is `piece` and whose own record lies in the file
  /// `record`; before the game is READY. When the PGN file cannot be written: "Error copying
  /// pgn-file!\n", and the record is kept for Rescue.
  void Add(const Tourney& tourney, const Game& game, const std::string& piece,
           const std::string& record);

  /// Adds to the PGN file what was taken since the last call; it is on the disk then. Failures are
  /// told as above.
  void Write(const Tourney& tourney);

  /// The save that holds the results of all games in the PGN file is on the disk: the journals go,
  /// also where PgnFile or the current directory was another one when they were written.
  void DropJournals(const Tourney& tourney);

  /// Renames the records that could not be added to gN.rescued.PGN, so that the moves are not lost.
  /// Behind the save that holds the results: before, the next start needs them where they are.
  void Rescue();

 private:
  struct Piece {
    int number;
    std::string white;
    std::string black;
    std::string text;
    std::string record;
  };

  FileSystem& files_;
  PgnPace pace_;
  std::vector<Piece> pieces_;
  std::vector<std::string> not_added_;  ///< records
  std::set<std::string> journals_;      ///< that were written and have not gone yet; full paths
};

/// What a program that has ended may have left: cuts from the PGN file what the tourney does not
/// know of. The journal goes when the tourney is as its file is.
void SettleJournal(const Tourney& tourney, FileSystem& files, const TourneyFile& file);

/// Whether the journal tells that this game was added to the PGN file.
bool IsInJournal(const Tourney& tourney, FileSystem& files, const GameOrder& order);

}  // namespace tarvendo
