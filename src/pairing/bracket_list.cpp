#include "pairing/bracket_list.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "base/log.h"
#include "base/text.h"
#include "pairing/bracket_pairing.h"
#include "pairing/chain_search.h"
#include "pairing/colour_rules.h"
#include "platform/clock.h"
#include "platform/faults.h"
#include "tourney/pairing_games.h"
#include "tourney/rounds.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

std::string NameOf(const Tourney& tourney, int number) {
  const Player* player = tourney.FindParticipant(number);
  return player == nullptr ? std::string() : player->texts.name;
}

std::string HeaderText(const Tourney& tourney, const Bracket& bracket) {
  const Player* first = tourney.FindParticipant(bracket.Entries().front().number);
  const std::string points = HalfPointText(first == nullptr ? 0 : first->points);
  return Format("\nBracket %2d (%s)\n", bracket.number, points.c_str());
}

std::string EntryText(const Tourney& tourney, const BracketEntry& entry) {
  std::string text = Format("    %2d. %-15s", entry.number, NameOf(tourney, entry.number).c_str());
  if (entry.IsPaired()) {
    text += Format(" - %2d. %s", entry.partner, NameOf(tourney, entry.partner).c_str());
  }
  if (entry.absent) text += "      ABSENT";
  return text + "\n";
}

bool HasUnpairedEntry(const Bracket& bracket) {
  return std::any_of(bracket.Entries().begin(), bracket.Entries().end(),
                     [](const BracketEntry& entry) { return entry.IsFree(); });
}

void CreateGamesOf(Tourney& tourney, Bracket& bracket, ColourToggle& toggle) {
  if (HasUnpairedEntry(bracket)) PrintText(BracketText(tourney, bracket));
  const int sub_rounds = PlayableSubRounds(tourney, tourney.Participants().size());
  for (const ColouredPair& pair : TakePairs(bracket, toggle))
    AddGamesOfPairing(tourney, pair.white, pair.black, tourney.State().round, sub_rounds);
}

/// Whether the player of `entry` gets White against that of `other`.
bool GetsWhite(const BracketEntry& entry, const BracketEntry& other, ColourToggle& toggle) {
  if (entry.colour_state == other.colour_state) return toggle.FirstGetsWhite();
  if (entry.colour_state > other.colour_state) return IsDueWhite(entry.colour_state);
  return !IsDueWhite(other.colour_state);
}

std::vector<std::size_t> EntriesBySeat(const Bracket& bracket, std::size_t seats) {
  std::vector<std::size_t> entry_of(seats, bracket.Size());
  for (std::size_t index = 0; index < bracket.Size(); ++index) {
    const BracketEntry& entry = bracket.Entries()[index];
    if (!entry.absent) entry_of[PairingField::SeatOf(entry.number)] = index;
  }
  return entry_of;
}

}  // namespace

std::vector<ColouredPair> TakePairs(Bracket& bracket, ColourToggle& toggle) {
  std::vector<ColouredPair> pairs;
  const std::size_t seats = bracket.Members().WordCount() * PlayerSet::kWordBits;
  const std::vector<std::size_t> entry_of = EntriesBySeat(bracket, seats);
  for (std::size_t index = 0; index < bracket.Size(); ++index) {
    const BracketEntry entry = bracket.Entries()[index];
    if (!entry.IsPaired()) continue;
    const std::size_t other_index = entry_of[PairingField::SeatOf(entry.partner)];
    const BracketEntry other = bracket.Entries()[other_index];
    bracket.ForgetPair(index);
    bracket.ForgetPair(other_index);
    const bool white = GetsWhite(entry, other, toggle);
    pairs.push_back(white ? ColouredPair{entry.number, other.number}
                          : ColouredPair{other.number, entry.number});
  }
  return pairs;
}

BracketList::BracketList(Clock& host_clock) : clock([&host_clock] { return host_clock.Now(); }) {}

bool CreateBrackets(const PairingField& field, BracketList& brackets, BracketWidth width,
                    BracketMode mode) {
  brackets.chain = MakeBrackets(field, width, mode);
  if (brackets.chain.empty()) return false;
  if (mode != BracketMode::kOneBig) {
    Print("%d brackets created.\n", static_cast<int>(brackets.chain.size()));
  }
  return true;
}

bool CreateBrackets(const Tourney& tourney, BracketList& brackets, BracketWidth width,
                    BracketMode mode) {
  return CreateBrackets(MakePairingField(tourney), brackets, width, mode);
}

void ShowBrackets(const Tourney& tourney, const BracketList& brackets) {
  std::string text;
  for (const Bracket& bracket : brackets.chain)
    text += BracketText(tourney, bracket);
  if (!text.empty()) PrintText(text);
}

std::string BracketText(const Tourney& tourney, const Bracket& bracket) {
  if (bracket.Size() == 0) return std::string();
  std::string text = HeaderText(tourney, bracket);
  for (const BracketEntry& entry : bracket.Entries()) {
    EndWhenAsked();
    text += EntryText(tourney, entry);
  }
  return text;
}

bool PairAll(const PairingField& field, BracketList& brackets) {
  const PairingCode code = PairBracketChain(field, brackets.chain, brackets.clock);
  if (code == PairingCode::kTimeOut) {
    Print("\n*********************\nTimeout!!!\n*********************\n\n");
  }
  return code == PairingCode::kPaired;
}

void CreateGames(Tourney& tourney, BracketList& brackets) {
  for (Bracket& bracket : brackets.chain)
    CreateGamesOf(tourney, bracket, brackets.toggle);
}

bool PairBracket(Tourney& tourney, BracketList& brackets, int number) {
  const auto bracket =
      std::find_if(brackets.chain.begin(), brackets.chain.end(),
                   [&](const Bracket& candidate) { return candidate.number == number; });
  if (bracket == brackets.chain.end()) {
    Print("No bracket number %d found!\n", number);
    return false;
  }
  if (!PairSingleBracket(MakePairingField(tourney), *bracket, brackets.clock)) {
    Print("Pairing failed!\n");
    return false;
  }
  PrintText(BracketText(tourney, *bracket));
  CreateGamesOf(tourney, *bracket, brackets.toggle);
  return true;
}

}  // namespace tarvendo
