#include "runner/openings_in_use.h"

#include <algorithm>

#include "base/read_file.h"
#include "base/whole_file.h"
#include "play/claim.h"
#include "tourney/bye.h"
#include "tourney/pairing_games.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

constexpr const char* kHeader = "OPENINGS\n";

/// What runner.openings tells.
struct Note {
  std::string path;
  std::string checksum;
};

std::string NoteText(const Openings& openings) {
  return kHeader + openings.Path() + "\n" + openings.Checksum() + "\n";
}

/// Nothing when the text is no whole note.
std::optional<Note> ReadNote(const std::string& text) {
  const std::string header = kHeader;
  if (!text.starts_with(header) || !text.ends_with('\n')) return std::nullopt;
  const std::size_t path_end = text.find('\n', header.size());
  if (path_end == std::string::npos) return std::nullopt;
  const std::size_t end = text.find('\n', path_end + 1);
  if (end == std::string::npos || end + 1 != text.size()) return std::nullopt;
  return Note{text.substr(header.size(), path_end - header.size()),
              text.substr(path_end + 1, end - path_end - 1)};
}

/// Whether some game has been played, or is being played at this moment.
bool HasBegun(const Tourney& tourney, FileSystem& files) {
  const auto& games = tourney.Games();
  return std::any_of(
             games.begin(), games.end(),
             [&](const Game& game) { return game.IsReady() && !ResultByBye(tourney, game); }) ||
         !FindClaims(files, tourney.Settings().files_path).empty();
}

}  // namespace

OpeningsInUse::Begun OpeningsInUse::Begin(const Tourney& tourney, FileSystem& files) {
  const std::string file = FileIn(tourney.Settings().files_path);
  const auto note = ReadFile(files, file, kGameFileLimit);
  if (note && HasBegun(tourney, files)) {
    refusal_ = WhyNotToGoOn(file, *note);
    if (!refusal_.empty()) return Begun::kRefused;
  }
  if (!openings_) {
    RemoveIfThere(files, file);
    return Begun::kGood;
  }
  const std::string text = NoteText(*openings_);
  return note == text || SaveWholeFile(files, file, text) ? Begun::kGood : Begun::kNotWritten;
}

std::string OpeningsInUse::WhyNotToGoOn(const std::string& file, const std::string& note) const {
  const std::string remedy = ", or delete '" + file + "'.";
  const auto known = ReadNote(note);
  if (!known) {
    return "'" + file +
           "' is damaged and does not tell with which openings the games were begun: " +
           "delete it to go on.";
  }
  if (!openings_) {
    return "The games were begun with the openings file '" + known->path +
           "': go on with --openings and that file" + remedy;
  }
  if (known->checksum == openings_->Checksum()) return "";
  if (known->path == openings_->Path()) {
    return "The openings file '" + known->path +
           "' is not the one with which the games were begun: go on with what it was then" + remedy;
  }
  return "The games were begun with the openings file '" + known->path + "' and not with '" +
         openings_->Path() + "': go on with that one" + remedy;
}

std::optional<std::string> OpeningsInUse::WordsFor(const Tourney& tourney, FileSystem& files,
                                                   const Game& game) {
  if (!openings_) return "";
  if (!openings_->IsAsItWas(files)) {
    refusal_ = "The openings file '" + openings_->Path() +
               "' was changed or taken away while games were played with it.";
    return std::nullopt;
  }
  return openings_->WordsFor(PairingIndex(tourney, game));
}

}  // namespace tarvendo
