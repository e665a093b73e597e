#pragma once

#include <optional>
#include <string>
#include <utility>

#include "runner/openings.h"

namespace tarvendo {

class Game;
class Tourney;

/// The openings that the runner has its games start from, if any, and the file runner.openings in
/// FilesPath, which tells with which openings the games there were begun:
///
///     OPENINGS
///     /home/me/book.pgn
///     9ae16a3b2f90404f
///
/// Used by the runner's thread, each call with the tourney held.
class OpeningsInUse {
 public:
  explicit OpeningsInUse(std::optional<Openings> openings) : openings_(std::move(openings)) {}

  /// What has come of Begin.
  enum class Begun { kGood, kRefused, kNotWritten };

  /// To be called before the first game in a FilesPath is started. Games of the tourney that were
  /// begun there must have been begun with openings of the same content, unless the file tells of
  /// none: otherwise it is refused, and Refusal tells why. Then the file is brought up to date;
  /// kNotWritten when it cannot be written.
  Begun Begin(const Tourney& tourney, FileSystem& files);

  /// The words for WinBoard with which the game starts from the line of its pairing
  /// (tourney/pairing_games.h); empty without openings. Nothing when the file is not what it was
  /// any more; Refusal tells so then.
  std::optional<std::string> WordsFor(const Tourney& tourney, FileSystem& files, const Game& game);

  /// Why no game can be started, a line without its line feed; empty when one can.
  const std::string& Refusal() const { return refusal_; }

  /// "runner.openings" behind FilesPath.
  static std::string FileIn(const std::string& files_path) {
    return files_path + "runner.openings";
  }

 private:
  std::string WhyNotToGoOn(const std::string& file, const std::string& note) const;

  std::optional<Openings> openings_;
  std::string refusal_;
};

}  // namespace tarvendo
