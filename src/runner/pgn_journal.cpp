// Example: all.pgn has 5000 bytes, games 7 and 8 are over. all.pgn.journal notes both texts, of 300
// and 400 bytes, then all.pgn grows. The power goes when it has 5450 bytes: 5000 to 5300 equal the
// text of game 7, 5300 to 5450 the beginning of that of game 8. The next start cuts to 5300, and,
// when the saved tourney still awaits game 7, to 5000: both are collected anew from their records.

#include "runner/pgn_journal.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include "base/log.h"
#include "base/read_file.h"
#include "base/text.h"
#include "base/whole_file.h"
#include "platform/files.h"
#include "platform/line_ends.h"
#include "runner/file_deletion.h"
#include "runner/record_aside.h"
#include "tourney/tourney.h"
#include "tourney/tourney_file.h"

namespace tarvendo {
namespace {

constexpr const char* kJournalHeader = "PGN_JOURNAL";
constexpr const char* kJournalEnd = "END_JOURNAL";
constexpr int kMostJournals = 9;

/// A game that was, or was to be, added to a PGN file.
struct Entry {
  int number = 0;
  std::string white;
  std::string black;
  std::string text;
  std::size_t size = 0;  ///< of the text in the PGN file, where a line may end in CR LF
};

struct Journal {
  std::string path;          ///< of the journal itself
  std::uint64_t before = 0;  ///< bytes of the PGN file
  std::vector<Entry> entries;

  std::uint64_t End() const {
    std::uint64_t end = before;
    for (const Entry& entry : entries)
      end += entry.size;
    return end;
  }
};

/// Several tourneys may share a PGN file, but never a directory of games.
std::string TourneyMark(const Tourney& tourney, FileSystem& files) {
  return files.FullPath(tourney.Settings().files_path + ".");
}

std::string JournalText(const Journal& journal, const std::string& mark) {
  std::string text = std::string(kJournalHeader) + "\n" + mark + "\n" +
                     std::to_string(journal.before) + "\n" +
                     std::to_string(journal.entries.size()) + "\n";
  for (const Entry& entry : journal.entries) {
    text += std::to_string(entry.number) + "\n" + entry.white + "\n" + entry.black + "\n" +
            std::to_string(entry.text.size()) + "\n" + entry.text + "\n";
  }
  return text + kJournalEnd + "\n";
}

/// Takes lines and counted bytes from a text; after the first failure it gives nothing.
class JournalReader {
 public:
  explicit JournalReader(std::string_view text) : rest_(text) {}

  std::string Line() {
    const std::size_t feed = rest_.find('\n');
    if (feed == std::string_view::npos) {
      failed_ = true;
      return "";
    }
    return std::string(Take(feed + 1).substr(0, feed));
  }

  std::uint64_t Number() {
    const std::string line = Line();
    constexpr std::size_t kMostDigits = 18;
    if (line.empty() || line.size() > kMostDigits || !IsAllDigits(line)) {
      failed_ = true;
      return 0;
    }
    return std::stoull(line);
  }

  std::string_view Take(std::uint64_t size) {
    if (failed_ || size > rest_.size()) {
      failed_ = true;
      return {};
    }
    const auto bytes = static_cast<std::size_t>(size);
    const std::string_view taken = rest_.substr(0, bytes);
    rest_.remove_prefix(bytes);
    return taken;
  }

  bool HasFailed() const { return failed_; }

 private:
  std::string_view rest_;
  bool failed_ = false;
};

struct ReadJournal {
  Journal journal;
  std::string mark;
};

/// Nothing when the journal is not whole: then nothing was added yet.
std::optional<ReadJournal> ParseJournal(const std::string& text) {
  JournalReader reader(text);
  ReadJournal read;
  if (reader.Line() != kJournalHeader) return std::nullopt;
  read.mark = reader.Line();
  read.journal.before = reader.Number();
  const std::uint64_t count = reader.Number();
  for (std::uint64_t i = 0; i < count && !reader.HasFailed(); ++i) {
    Entry entry;
    entry.number = static_cast<int>(reader.Number());
    entry.white = reader.Line();
    entry.black = reader.Line();
    entry.text = reader.Take(reader.Number());
    reader.Take(1);
    read.journal.entries.push_back(std::move(entry));
  }
  if (reader.Line() != kJournalEnd || reader.HasFailed()) return std::nullopt;
  return read;
}

std::string JournalName(const Tourney& tourney, int n) {
  return tourney.Settings().pgn_file + ".journal" + (n == 1 ? "" : std::to_string(n));
}

/// The tourney's own journal; that of another tourney is passed by. When it has none, a journal
/// with nothing but the path for a new one, which is empty when every name is taken.
Journal FindJournal(const Tourney& tourney, FileSystem& files) {
  std::string free_name;
  for (int n = 1; n <= kMostJournals; ++n) {
    const std::string name = JournalName(tourney, n);
    if (!files.Exists(name)) {
      if (free_name.empty()) free_name = name;
      // Nobody has more than one, so further ones are rare, but the first may have gone.
      if (n > 2) break;
      continue;
    }
    const auto text = ReadFile(files, name, kTourneyFileLimit);
    auto read = ParseJournal(text.value_or(""));
    if (!read && text) files.Remove(name);
    if (!read && free_name.empty() && text) free_name = name;
    if (!read || read->mark != TourneyMark(tourney, files)) continue;
    read->journal.path = name;
    return read->journal;
  }
  Journal none;
  none.path = free_name;
  return none;
}

/// Whether the bytes are the beginning of the text, or were to be: some file systems leave NUL
/// bytes where a power failure has caught what was being written.
bool IsBeginning(std::string_view bytes, std::string_view text) {
  if (bytes.empty() || bytes.size() > text.size()) return false;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] != text[i] && bytes[i] != '\0') return false;
  }
  return true;
}

/// How an entry's text stands at the beginning of some bytes.
enum class Standing { kWhole, kBegun, kNot };

Standing StandingOf(std::string_view bytes, Entry& entry) {
  for (const std::string& form : {entry.text, WithCrLf(entry.text)}) {
    entry.size = form.size();
    if (bytes.starts_with(form)) return Standing::kWhole;
  }
  const bool is_begun = IsBeginning(bytes, entry.text) || IsBeginning(bytes, WithCrLf(entry.text));
  return is_begun ? Standing::kBegun : Standing::kNot;
}

/// Whether the bytes are the beginning of the texts of the entries from `first` on.
bool AreBegun(std::string_view bytes, const std::vector<Entry>& entries, std::size_t first) {
  Entry all;
  for (std::size_t i = first; i < entries.size(); ++i)
    all.text += entries[i].text;
  return StandingOf(bytes, all) == Standing::kBegun;
}

/// Whether the tourney has the result of that game.
bool Knows(const Tourney& tourney, const Entry& entry) {
  const Game* game = tourney.FindGame(entry.number);
  return game != nullptr && game->IsReady() && game->white_player == entry.white &&
         game->black_player == entry.black;
}

std::uint64_t SizeOf(FileSystem& files, const std::string& path) {
  const auto stamp = files.Stamp(path);
  return stamp ? static_cast<std::uint64_t>(stamp->size) : 0;
}

/// Leaves in the journal what stands whole in the PGN file and is known to the tourney (but not
/// among `anew`, the games that are being added now), and cuts the rest, as far as it stands at the
/// end of the file. False when it cannot be read or cut.
bool CutUnknown(const Tourney& tourney, FileSystem& files, Journal& journal,
                const std::vector<int>& anew) {
  const std::string& path = tourney.Settings().pgn_file;
  const auto bytes = files.ReadPart(path, journal.before, kTourneyFileLimit);
  if (!bytes && files.Exists(path)) return false;
  std::string_view rest = bytes ? std::string_view(*bytes) : std::string_view();
  std::size_t whole = 0;
  for (Entry& entry : journal.entries) {
    if (StandingOf(rest, entry) != Standing::kWhole) break;
    rest.remove_prefix(entry.size);
    ++whole;
  }
  const bool is_at_end = rest.empty() || AreBegun(rest, journal.entries, whole);
  journal.entries.resize(whole);
  const auto is_unknown = [&](const Entry& entry) {
    return std::find(anew.begin(), anew.end(), entry.number) != anew.end() ||
           !Knows(tourney, entry);
  };
  while (is_at_end && !journal.entries.empty() && is_unknown(journal.entries.back()))
    journal.entries.pop_back();
  const std::uint64_t end = journal.End();
  return !is_at_end || end >= SizeOf(files, path) || files.CutTo(path, end);
}

/// Takes back what has arrived of an addition that failed.
void TakeBack(FileSystem& files, const std::string& path, std::uint64_t before,
              const std::string& text) {
  const auto arrived = files.ReadPart(path, before, text.size() * 2);
  if (!arrived || arrived->empty()) return;
  Entry added;
  added.text = text;
  const Standing standing = StandingOf(*arrived, added);
  const bool is_all = standing == Standing::kWhole && added.size == arrived->size();
  if (standing == Standing::kBegun || is_all) files.CutTo(path, before);
}

bool AppendDurably(FileSystem& files, const std::string& path, const std::string& text) {
  const std::uint64_t before = SizeOf(files, path);
  const auto file = files.Append(path);
  if (!file) return false;
  const bool written = file->Write(text) && file->Sync();
  const bool added = file->Close() && written && (before > 0 || files.SyncName(path));
  if (!added) TakeBack(files, path, before, text);
  return added;
}

/// A journal that was not written to its end can be told from a whole one. So it is written under
/// its own name at once.
bool WriteJournal(FileSystem& files, const std::string& path, const std::string& text) {
  if (path.empty()) return false;
  if (files.Exists(path)) return SaveDurably(files, path, text) != SaveOutcome::kFailed;
  const auto file = files.Create(path);
  const bool written = file && file->Write(text) && file->Sync();
  if (written && file->Close() && files.SyncName(path)) return true;
  RemoveIfThere(files, path);
  return false;
}

std::string TextOf(const std::vector<Entry>& entries) {
  std::string text;
  for (const Entry& entry : entries)
    text += entry.text;
  return text;
}

std::vector<int> NumbersOf(const std::vector<Entry>& entries) {
  std::vector<int> numbers;
  for (const Entry& entry : entries)
    numbers.push_back(entry.number);
  return numbers;
}

/// Those of the entries that do not stand in the journal yet.
std::vector<Entry> NotIn(const Journal& journal, std::vector<Entry> entries) {
  std::erase_if(entries, [&](const Entry& entry) {
    return std::any_of(journal.entries.begin(), journal.entries.end(), [&](const Entry& there) {
      return there.number == entry.number && there.text == entry.text;
    });
  });
  return entries;
}

/// Adds the entries to the PGN file. Where no journal can be written they are added all the same:
/// then only a stop of the machine at this moment harms them. But nothing is added when a journal
/// that is there cannot be replaced: it notes games whose results are not saved, and these could
/// not be cut any more with other games behind them.
bool AddToPgn(const Tourney& tourney, FileSystem& files, const std::vector<Entry>& entries,
              std::set<std::string>& journals) {
  const std::string& path = tourney.Settings().pgn_file;
  if (path.empty() || IsNoOrdinaryFile(files, path)) {
    return AppendDurably(files, path, TextOf(entries));
  }
  Journal journal = FindJournal(tourney, files);
  if (!CutUnknown(tourney, files, journal, NumbersOf(entries))) return false;
  const std::vector<Entry> added = NotIn(journal, entries);
  const std::uint64_t size = SizeOf(files, path);
  // What somebody else has added behind the games of the journal is never cut, so they cannot be
  // cut any more either.
  if (journal.End() != size) {
    journal.before = size;
    journal.entries.clear();
  }
  journal.entries.insert(journal.entries.end(), added.begin(), added.end());
  const bool noted =
      WriteJournal(files, journal.path, JournalText(journal, TourneyMark(tourney, files)));
  if (!noted && files.Exists(journal.path)) return false;
  if (noted) journals.insert(files.FullPath(journal.path));
  if (!AppendDurably(files, path, TextOf(added))) return false;
  // Without AutoSave no save holds the results, and the PGN file is all that remains of the games.
  if (tourney.Settings().auto_save == 0) RemoveIfThere(files, journal.path);
  return true;
}

}  // namespace

void PgnGroup::Add(const Tourney& tourney, const Game& game, const std::string& piece,
                   const std::string& record) {
  if (!files_.Append(tourney.Settings().pgn_file)) {
    Print("Error copying pgn-file!\n");
    not_added_.push_back(record);
    return;
  }
  pieces_.push_back({game.number, game.white_player, game.black_player, piece, record});
  if (pace_ == PgnPace::kAtOnce) Write(tourney);
}

void PgnGroup::Write(const Tourney& tourney) {
  if (pieces_.empty()) return;
  std::vector<Entry> entries;
  for (const Piece& piece : pieces_)
    entries.push_back({piece.number, piece.white, piece.black, piece.text, 0});
  if (!AddToPgn(tourney, files_, entries, journals_)) {
    Print("Error copying pgn-file!\n");
    for (const Piece& piece : pieces_)
      not_added_.push_back(piece.record);
  }
  pieces_.clear();
}

void PgnGroup::Rescue() {
  for (const std::string& record : not_added_)
    SetRecordAside(files_, record, "rescued");
  not_added_.clear();
}

void PgnGroup::DropJournals(const Tourney& tourney) {
  if (files_.Exists(JournalName(tourney, 1)) || files_.Exists(JournalName(tourney, 2))) {
    const std::string path = FindJournal(tourney, files_).path;
    journals_.erase(files_.FullPath(path));
    DeleteOrTell(tourney, files_, path);
  }
  for (const std::string& path : std::exchange(journals_, {})) {
    if (!files_.Exists(path)) continue;
    const auto read = ParseJournal(ReadFile(files_, path, kTourneyFileLimit).value_or(""));
    if (read && read->mark == TourneyMark(tourney, files_)) DeleteOrTell(tourney, files_, path);
  }
}

void SettleJournal(const Tourney& tourney, FileSystem& files, const TourneyFile& file) {
  if (!files.Exists(JournalName(tourney, 1)) && !files.Exists(JournalName(tourney, 2))) return;
  Journal journal = FindJournal(tourney, files);
  if (!files.Exists(journal.path) || !CutUnknown(tourney, files, journal, {})) return;
  if (journal.entries.empty() || !file.HasChanged(tourney)) files.Remove(journal.path);
}

bool IsInJournal(const Tourney& tourney, FileSystem& files, const GameOrder& order) {
  const std::vector<Entry> entries = FindJournal(tourney, files).entries;
  return std::any_of(entries.begin(), entries.end(), [&](const Entry& entry) {
    return entry.number == order.number && entry.white == order.white && entry.black == order.black;
  });
}

}  // namespace tarvendo
