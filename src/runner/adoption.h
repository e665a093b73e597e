#pragma once

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
/// - a SPOOLED game whose record is whole keeps it, to be collected; a record that is not is
/// renamed
///   to gN.broken.PGN, the console says so, and the game is played again;
/// - of a game that was collected already (the journal of the tourney's PGN file tells so) the
/// files go;
/// - any other record is renamed to gN.left.PGN, and the console names it.
///
/// A game that the tourney's file shows as not even spooled (the program ended before it was saved)
/// is SPOOLED again.
std::vector<GameOrder> FindGamesToAdopt(Tourney& tourney, FileSystem& files,
                                        const RunningGames& running);

/// Settles the claim of one SPOOLED game that nobody plays, as above. Nothing without a claim.
void SettleClaimOf(Tourney& tourney, FileSystem& files, int game_number);

/// Renames the record of a game that the tourney does not await to gN.left.PGN, and the console
/// names it.
void LeaveRecord(FileSystem& files, const GameOrder& order);

/// Renames a record out of the way, to gN.KIND.PGN (gN.KIND2.PGN and so on when there is one).
/// Returns the new name; empty when that failed.
std::string SetRecordAside(FileSystem& files, const std::string& pgn_file, const std::string& kind);

}  // namespace tarvendo
