#pragma once

#include <optional>
#include <string>
#include <vector>

#include "play/game_order.h"

namespace tarvendo {

struct FoundClaim;
class FileSystem;
class RunningGames;
class Tourney;

/// Looks through the claims that an earlier process has left in FilesPath, but for those of games
/// that are under way here. Returns those of games that are still being played: they are to be
/// adopted. The others are settled:
///
/// - a SPOOLED game whose record is whole keeps it and its claim, to be collected; a record that is
///   not is renamed to gN.broken.PGN, the console says so, and the game is played again;
/// - a game that was collected already, as the journal of the tourney's PGN file tells, loses its
///   files;
/// - any other record is renamed to gN.left.PGN, and the console names it.
///
/// A game that the tourney's file shows as not even spooled (the program ended before it was saved)
/// is SPOOLED again.
std::vector<GameOrder> FindGamesToAdopt(Tourney& tourney, FileSystem& files,
                                        const RunningGames& running);

/// To be called behind a load: a game that is under way in the tourney's FilesPath and that the
/// loaded file shows as not even spooled is SPOOLED again, as at the next start.
void SpoolRunningAgain(Tourney& tourney, FileSystem& files, const RunningGames& running);

/// The claim of a game that nobody plays any more; nothing when there is none.
std::optional<GameOrder> FreeClaimOf(const Tourney& tourney, FileSystem& files, int game_number);

/// Settles such a claim, as above.
void SettleClaim(Tourney& tourney, FileSystem& files, const GameOrder& order);

/// Removes a claim, and the directory of its game's debug file.
void RemoveClaim(FileSystem& files, const GameOrder& order);

/// Renames the record of a game that the tourney does not await to gN.left.PGN, and the console
/// names it, with FilesPath as it was typed. One that cannot be renamed is left under its own name.
void LeaveRecord(const Tourney& tourney, FileSystem& files, const GameOrder& order);

}  // namespace tarvendo
