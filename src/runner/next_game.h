#pragma once

namespace tarvendo {

class BracketList;
class FileSystem;
class Game;
class Tourney;
class TourneyFile;

/// The game that the runner starts next, which becomes the tourney's current game; null when there
/// is none. SPOOLED games come first, in the order in which they were spooled. With AutoRun on, the
/// next game is spooled when none is left, a Swiss round is paired when there is nothing to spool,
/// and the games without result are replayed when no round can be paired; when nothing helps,
/// AutoRun is switched off.
const Game* NextGameToRun(Tourney& tourney, FileSystem& files, BracketList& brackets);

/// What is done after every finished game: the log is cut down, the tourney saved (AutoSave), and
/// in a Swiss tourney whose round is complete Rounds and the current round are brought up to date.
/// Then either the tourney is finished ("Tourney finished.\n", AutoRun goes off) or, with AutoRun
/// on, the next round is paired. The last round is only ever paired by the user's own command.
void NextRound(Tourney& tourney, TourneyFile& file, BracketList& brackets);

}  // namespace tarvendo
