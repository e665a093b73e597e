// Any bytes as the journal of the tourney's PGN file, and as that file: only an end of it is ever
// cut, only what the journal tells of, and the next game is added whole.
#include <algorithm>

#include "fuzz_input.h"
#include "fuzz_tourney.h"
#include "fuzzers.h"
#include "runner/pgn_journal.h"

namespace tarvendo {
namespace {

constexpr const char* kPgn = "/t/all.pgn";
constexpr const char* kJournal = "/t/all.pgn.journal";
constexpr const char* kPiece = "[Event \"E\"]\n\n1. e4 1-0\n\n";

void PutFiles(TwoGames& game, const std::string& text) {
  // A form feed stands between the two, and what makes the journal this tourney's is there.
  const std::size_t end = text.find('\f');
  game.machine.files.Put(kJournal, "PGN_JOURNAL\n/t\n" + text.substr(0, end));
  game.machine.files.Put(kPgn, end == std::string::npos ? "" : text.substr(end + 1));
}

void DemandKnownLines(const std::string& journal, const std::string& cut) {
  for (std::size_t begin = 0; begin < cut.size();) {
    const std::size_t end = std::min(cut.find('\n', begin), cut.size());
    const std::string line = cut.substr(begin, end - begin);
    // A power failure leaves NUL bytes where a piece was to be written.
    if (line.find('\0') == std::string::npos) Demand(journal.find(line) != std::string::npos);
    begin = end + 1;
  }
}

}  // namespace

void FuzzPgnJournal(const std::uint8_t* data, std::size_t size) {
  TwoGames game;
  MemoryFileSystem& files = game.machine.files;
  PutFiles(game, FuzzText(data, size));
  const std::string before = files.Bytes(kPgn);
  const std::string journal = files.Bytes(kJournal);
  SettleJournal(game.tourney, files, TourneyFile(files));
  const std::string settled = files.Bytes(kPgn);
  Demand(before.starts_with(settled));
  DemandKnownLines(journal, before.substr(settled.size()));
  PgnGroup group(files, PgnPace::kAtOnce);
  group.Add(game.tourney, game.tourney.Games().front(), kPiece, "/t/g1.PGN");
  const std::string after = files.Bytes(kPgn);
  Demand(after.ends_with(kPiece));
  Demand(before.starts_with(after.substr(0, after.size() - std::string(kPiece).size())));
  group.DropJournals(game.tourney);
}

}  // namespace tarvendo
