#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "play/game_order.h"

namespace tarvendo {

class FileSystem;
class LockedFile;

// What is being played is known on the disk by its claim: a small text file gN.run beside the
// game's other files, made before the game is started and removed when it has been collected. Its
// lock is held by the processes of the game and by nothing else, so whoever comes later knows
// whether the game is still being played; the number of a process alone would not tell.
//
//     GAME_CLAIM
//     7                 the game's number
//     Alpha             White, Black
//     Beta
//     /t/g7.BAT         batch file, PGN file, debug file: full paths
//     /t/g7.PGN
//     /t/winboard.debug
//     job tarvendo-t-1f3a9c-g7-6b02.1     of a game that was handed to a scheduler, and no other
//
// The lock does not reach the machines on which a scheduler's jobs run: there the claim that names
// a job is enough, and the scheduler is asked what has become of that.

/// A claim that lies in a directory.
struct FoundClaim {
  int number = 0;                  ///< as the file's name tells it
  std::string path;                ///< of the claim file
  bool is_held = false;            ///< the game is still being played, or a scheduler has it
  std::optional<GameOrder> order;  ///< nothing when its text cannot be read or understood
};

/// The claim file that belongs to a game's PGN file: "g7.run" for "g7.PGN". Empty for an empty
/// name.
std::string ClaimFileOf(const std::string& pgn_file);

/// The text of a claim, and the order that such a text tells (with the given claim file); nothing
/// when it is no whole claim.
std::string ClaimText(const GameOrder& order);
std::optional<GameOrder> ReadClaimText(const std::string& text, const std::string& claim_file);

/// Makes the order's claim file and takes its lock. Null when somebody holds it or it cannot be
/// written.
std::unique_ptr<LockedFile> MakeClaim(FileSystem& files, const GameOrder& order);

/// Whether the game with that PGN file has a claim: its files belong to one that is being played,
/// or whose end nobody has judged yet.
bool HasClaim(FileSystem& files, const std::string& pgn_file);

/// Makes the claim tell the order as it is now, and waits until that is on the disk. The order's
/// claim file is there. False when that is not possible.
bool SyncClaim(FileSystem& files, const GameOrder& order, LockedFile& claim);

/// Whether the game with that PGN file is being played: somebody holds its claim, or the claim
/// names a scheduler's job.
bool IsBeingPlayed(FileSystem& files, const std::string& pgn_file);

/// The claims in the directory of `files_path`, in the order of their names. `files_path` is put in
/// front of file names as it is.
std::vector<FoundClaim> FindClaims(FileSystem& files, const std::string& files_path);

/// Whether a PGN text is a whole game that somebody won or that was drawn: its last word is its
/// result, the line of that has an end, and nothing in it is missing.
bool HoldsResult(const std::string& pgn);

}  // namespace tarvendo
