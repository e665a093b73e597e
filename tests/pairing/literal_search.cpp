#include "pairing/literal_search.h"

#include <algorithm>

namespace tarvendo::literal {
namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

bool IsFree(const Entry& entry) {
  return !entry.absent && entry.partner == -1;
}

bool HasMet(const PairingField& field, int number, int other) {
  return field.OpponentsOf(PairingField::SeatOf(number)).Contains(PairingField::SeatOf(other));
}

std::size_t NextFree(const Bracket& bracket, std::size_t from) {
  for (std::size_t place = from; place < bracket.entries.size(); ++place) {
    if (IsFree(bracket.entries[place])) return place;
  }
  return kNone;
}

std::size_t FindPlayer(const Bracket& bracket, int number) {
  for (std::size_t place = 0; place < bracket.entries.size(); ++place) {
    if (bracket.entries[place].number == number) return place;
  }
  return kNone;
}

}  // namespace

bool BracketList::Step() {
  if (++steps_ > budget_) timed_out_ = true;
  return !timed_out_;
}

bool BracketList::MayPair(const Bracket& bracket, const Entry& a, const Entry& b) const {
  if (&a == &b || a.absent || b.absent) return false;
  if (HasMet(field_, a.number, b.number)) return false;
  if (field_.SubRounds() > 1) return true;
  const bool conflict =
      (a.colour_state & 1) == (b.colour_state & 1) && a.colour_state != 2 && b.colour_state != 2;
  if (!conflict || bracket.level == 2) return true;
  const auto either = [&](int state) { return a.colour_state == state || b.colour_state == state; };
  if ((bracket.level == 8 || bracket.level == 16) && (either(4) || either(5))) return true;
  return bracket.level == 16 && (either(8) || either(9));
}

bool BracketList::CanPair(Bracket& bracket, std::size_t a, std::size_t b) {
  Step();
  if (!MayPair(bracket, bracket.entries[a], bracket.entries[b])) return false;
  bracket.entries[a].partner = bracket.entries[b].number;
  bracket.entries[b].partner = bracket.entries[a].number;
  bracket.free_count -= 2;
  return true;
}

bool BracketList::PairBracketLevels(Bracket& bracket) {
  if (bracket.free_count < 11) {
    bracket.level = 4;
    if (PairWithin(bracket, 0)) return true;
  }
  if (bracket.free_count < 17) {
    bracket.level = 8;
    if (PairWithin(bracket, 0)) return true;
  }
  bracket.level = 16;
  return PairWithin(bracket, 0);
}

bool BracketList::PairLastTwo(Bracket& bracket) {
  const std::size_t a = NextFree(bracket, 0);
  bracket.entries[a].partner = 0;
  const std::size_t b = NextFree(bracket, a + 1);
  if (b == kNone) {
    bracket.entries[a].partner = -1;
    return false;
  }
  if (CanPair(bracket, a, b)) return true;
  bracket.free_count = 2;
  bracket.entries[a].partner = -1;
  bracket.entries[b].partner = -1;
  return false;
}

bool BracketList::TryPair(Bracket& bracket, std::size_t a, std::size_t b, std::size_t i) {
  if (!CanPair(bracket, a, b)) return false;
  if (PairWithin(bracket, i)) return true;
  bracket.free_count += 2;
  bracket.entries[b].partner = -1;
  bracket.entries[a].partner = 0;
  return false;
}

bool BracketList::PairFloater(Bracket& bracket, std::size_t place, std::size_t i) {
  bracket.entries[place].partner = 0;
  for (std::size_t c = 0; c < bracket.entries.size(); ++c) {
    if (IsFree(bracket.entries[c]) && TryPair(bracket, place, c, i + 1)) return true;
  }
  bracket.entries[place].partner = -1;
  return false;
}

bool BracketList::PairWithin(Bracket& bracket, std::size_t i) {
  if (!Step()) return false;
  if (bracket.free_count == 2) return PairLastTwo(bracket);
  if (bracket.free_count == 0) return true;
  if (bracket.free_count % 2 != 0) return false;
  while (i < bracket.floaters_in.size()) {
    const std::size_t place = FindPlayer(bracket, bracket.floaters_in[i]);
    if (place != kNone && bracket.entries[place].partner == -1) {
      return PairFloater(bracket, place, i);
    }
    ++i;
    if (!Step()) return false;
  }
  if (bracket.free_count == 0) return true;
  if (bracket.free_count % 2 != 0) return false;
  return PairFirst(bracket);
}

bool BracketList::PairFirst(Bracket& bracket) {
  const std::size_t a = NextFree(bracket, 0);
  bracket.entries[a].partner = 0;
  std::size_t b = a;
  for (int count = 0; count < bracket.free_count / 2; ++count)
    b = NextFree(bracket, b + 1);
  if (TryPair(bracket, a, b, 0)) return true;
  if (bracket.free_count > 2) {
    for (std::size_t c = NextFree(bracket, b + 1); c != kNone; c = NextFree(bracket, c + 1)) {
      if (TryPair(bracket, a, c, 0)) return true;
    }
    for (std::size_t c = NextFree(bracket, 0); c != b; c = NextFree(bracket, c + 1)) {
      if (TryPair(bracket, a, c, 0)) return true;
    }
  }
  bracket.entries[a].partner = -1;
  return false;
}

void BracketList::ClearPairs(Bracket& bracket) {
  for (Entry& entry : bracket.entries) {
    if (entry.absent || entry.partner == -1) continue;
    entry.partner = -1;
    ++bracket.free_count;
  }
}

void BracketList::Float(Bracket& bracket, std::size_t place) {
  Entry& entry = bracket.entries[place];
  entry.absent = true;
  bracket.floated_out.push_back(place);
  AddPlayer(*bracket.next, entry.number);
  bracket.next->entries.back().colour_state = entry.colour_state;
  bracket.next->floaters_in.push_back(entry.number);
  --bracket.free_count;
}

std::size_t BracketList::UndoFloat(Bracket& bracket) {
  const std::size_t place = bracket.floated_out.back();
  bracket.floated_out.pop_back();
  bracket.entries[place].absent = false;
  RemovePlayer(*bracket.next, FindPlayer(*bracket.next, bracket.entries[place].number));
  bracket.next->floaters_in.pop_back();
  ++bracket.free_count;
  return place;
}

bool BracketList::IsMovable(const Bracket& bracket, std::size_t place) const {
  const Entry& entry = bracket.entries[place];
  if (!IsFree(entry)) return false;
  return std::any_of(
      bracket.next->entries.begin(), bracket.next->entries.end(),
      [&](const Entry& other) { return !HasMet(field_, entry.number, other.number); });
}

std::size_t BracketList::NextMovable(const Bracket& bracket, std::size_t from) const {
  for (std::size_t place = from; place < bracket.entries.size(); ++place) {
    if (IsMovable(bracket, place)) return place;
  }
  return kNone;
}

bool BracketList::SelectFloaters(Bracket& bracket, std::size_t m) {
  if (m == 0) {
    if (bracket.floated_out.empty()) return false;
    while (!bracket.floated_out.empty())
      UndoFloat(bracket);
    return true;
  }
  return m == bracket.floated_out.size() ? SelectNext(bracket, m) : SelectFirst(bracket, m);
}

bool BracketList::SelectFirst(Bracket& bracket, std::size_t m) {
  while (!bracket.floated_out.empty())
    UndoFloat(bracket);
  std::size_t from = 0;
  while (bracket.floated_out.size() < m) {
    const std::size_t place = NextMovable(bracket, from);
    if (place == kNone) return false;
    Float(bracket, place);
    from = place + 1;
  }
  return true;
}

bool BracketList::SelectNext(Bracket& bracket, std::size_t m) {
  std::size_t j = UndoFloat(bracket);
  std::size_t count = m - 1;
  while (count < m) {
    if (!Step()) {
      while (!bracket.floated_out.empty())
        UndoFloat(bracket);
      return false;
    }
    const std::size_t place = NextMovable(bracket, j + 1);
    if (place != kNone) {
      Float(bracket, place);
      j = place;
      ++count;
    } else if (bracket.floated_out.empty()) {
      return false;
    } else {
      j = UndoFloat(bracket);
      --count;
    }
  }
  return true;
}

int BracketList::PairHere(Bracket& bracket, int mode, int k) {
  if (bracket.free_count % 2 != 0) return 7;
  if (!PairBracketLevels(bracket)) return 1;
  if (bracket.next == nullptr) return 0;
  const int code = PairChain(*bracket.next, mode, k);
  if (code == 0) return 0;
  ClearPairs(bracket);
  return code == 8 ? 8 : 2;
}

int BracketList::TryFloatDown(Bracket& bracket, int mode, int k) {
  if (bracket.next == nullptr) return 4;
  const std::size_t entries = bracket.entries.size();
  for (int m = bracket.free_count % 2; m <= k; m += 2) {
    const auto count = static_cast<std::size_t>(m);
    const int code = TrySelections(bracket, mode, k, count);
    if (code == 0 || code == 8) return code;
    if (count >= entries || 2 * count > entries) break;
  }
  SelectFloaters(bracket, 0);
  return 4;
}

int BracketList::TrySelections(Bracket& bracket, int mode, int k, std::size_t m) {
  while (SelectFloaters(bracket, m)) {
    int code = 4;
    if (PairBracketLevels(bracket)) {
      code = PairChain(*bracket.next, mode, k);
      if (code == 0) return 0;
    }
    ClearPairs(bracket);
    if (code == 8) return 8;
  }
  return 4;
}

int BracketList::FirstPass(Bracket& bracket) {
  return bracket.free_count % 2 == 0 ? PairHere(bracket, 3, 0) : TryFloatDown(bracket, 3, 1);
}

int BracketList::FloaterPass(Bracket& bracket, int k) {
  int code = 4;
  if (bracket.free_count % 2 != 0) {
    for (int m = 1; m <= k; m += 2) {
      code = TryFloatDown(bracket, 1, m);
      if (code == 0) return 0;
    }
  } else {
    for (int m = 2; m <= k; m += 2) {
      code = PairHere(bracket, 1, m);
      if (code == 0) return 0;
      code = TryFloatDown(bracket, 1, m);
      if (code == 0) return 0;
    }
  }
  return code;
}

int BracketList::FullPass(Bracket& bracket, int k) {
  const int n = static_cast<int>(bracket.entries.size());
  int code = PairHere(bracket, 5, n);
  if (code == 0 || code == 8) return code;
  code = TryFloatDown(bracket, 5, n);
  for (int repeat = 0; repeats_ && repeat <= k && code != 0; ++repeat) {
    if (code == 8) return 8;
    code = PairHere(bracket, 5, n);
    if (code == 0) return 0;
    code = TryFloatDown(bracket, 5, n);
  }
  return code;
}

int BracketList::PairChain(Bracket& bracket, int mode, int k) {
  if (!Step()) return 8;
  if (bracket.next == nullptr) return PairHere(bracket, mode, k);
  int code = FirstPass(bracket);
  if (code == 0 || code == 8) return code;
  if (mode == 3) return 1;
  code = FloaterPass(bracket, k);
  if (code == 0 || code == 8) return code;
  if (mode == 1) return 4;
  code = FullPass(bracket, k);
  if (code == 0 || code == 8) return code;
  return Merge(bracket);
}

void BracketList::FoldFollowing(Bracket& bracket) {
  if (bracket.next == nullptr) return;
  Bracket& next = *bracket.next;
  FoldFollowing(next);
  auto copy = std::make_unique<Bracket>();
  copy->level = bracket.level;
  copy->free_count = bracket.free_count;
  copy->entries = bracket.entries;
  copy->floaters_in = bracket.floaters_in;
  copy->floated_out = bracket.floated_out;
  copy->next = bracket.next;
  bracket.merge_copy = std::move(copy);
  for (const Entry& entry : next.entries)
    bracket.entries.push_back(entry);
  bracket.free_count += next.free_count;
  bracket.saved_next = bracket.next;
  bracket.next = nullptr;
}

void BracketList::Restore(Bracket& bracket) {
  if (bracket.merge_copy == nullptr) return;
  const std::unique_ptr<Bracket> copy = std::move(bracket.merge_copy);
  bracket.level = copy->level;
  bracket.free_count = copy->free_count;
  bracket.entries = copy->entries;
  bracket.floaters_in = copy->floaters_in;
  bracket.floated_out = copy->floated_out;
  bracket.next = bracket.saved_next;
  Restore(*bracket.next);
}

int BracketList::Merge(Bracket& bracket) {
  FoldFollowing(bracket);
  const int code = PairHere(bracket, 3, 0);
  if (code == 0) return 0;
  Restore(bracket);
  return timed_out_ ? 8 : 6;
}

void BracketList::Remember() {
  as_made_.clear();
  for (Bracket* bracket = first_; bracket != nullptr; bracket = bracket->next) {
    as_made_.push_back({bracket, bracket->entries, bracket->next});
  }
}

void BracketList::Rewind() {
  for (Snapshot& snapshot : as_made_) {
    snapshot.bracket->free_count = static_cast<int>(snapshot.entries.size());
    snapshot.bracket->entries = snapshot.entries;
    snapshot.bracket->next = snapshot.next;
    snapshot.bracket->floaters_in.clear();
    snapshot.bracket->floated_out.clear();
    snapshot.bracket->merge_copy.reset();
  }
}

int BracketList::PairAllWithoutRepetitions() {
  Rewind();
  repeats_ = false;
  return PairAll();
}

int BracketList::PairAll() {
  Remember();
  steps_ = 0;
  timed_out_ = false;
  return PairChain(*first_, 5, 0);
}

bool BracketList::PairSingle(int number) {
  steps_ = 0;
  timed_out_ = false;
  for (Bracket* bracket = first_; bracket != nullptr; bracket = bracket->next) {
    if (bracket->number == number) return PairBracketLevels(*bracket);
  }
  return false;
}

}  // namespace tarvendo::literal
