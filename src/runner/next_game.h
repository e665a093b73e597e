#pragma once

namespace tarvendo {

class BracketList;
class Game;
class Tourney;

/// The game that the runner starts next, which becomes the tourney's current game; null when there
/// is none. SPOOLED games come first, in the order in which they were spooled. With AutoRun on, the
/// next game is spooled when none is left, a Swiss round is paired when there is nothing to spool,
/// and the games without result are replayed when no round can be paired; when nothing helps,
/// AutoRun is switched off.
Game* NextGameToRun(Tourney& tourney, BracketList& brackets);

/// What is done after every finished game: the log is cut down, the tourney saved (AutoSave), and
/// in a Swiss tourney whose round is complete Rounds and the current round are brought up to date.
/// Then either the tourney is finished ("Tourney finished.\n", AutoRun goes off) or, with AutoRun
/// on, the next round is paired. A round whose last result was collected, with its table, is no
/// longer the current one here, so it is NextGameToRun that pairs the round behind it, the last one
/// too. Only when that game left no PGN, or table.htm could not be written, is it still current:
/// then the last round is taken for played, and the tourney ends without it.
void NextRound(Tourney& tourney, BracketList& brackets);

/// Saves to the autosave file; prints "Saving tourney failed!\n" when that fails.
void AutoSave(Tourney& tourney);

}  // namespace tarvendo
