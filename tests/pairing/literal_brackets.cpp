#include <algorithm>

#include "pairing/literal_search.h"

namespace tarvendo::literal {

Bracket* BracketList::NewBracket() {
  all_.push_back(std::make_unique<Bracket>());
  return all_.back().get();
}

void BracketList::AddPlayer(Bracket& bracket, int number) {
  Entry entry;
  entry.number = number;
  entry.colour_state = field_.Get(number).colour_state;
  bracket.entries.push_back(entry);
  bracket.free_count = 0;
  for (const Entry& e : bracket.entries)
    bracket.free_count += !e.absent && e.partner == -1 ? 1 : 0;
}

void BracketList::RemovePlayer(Bracket& bracket, std::size_t place) {
  bracket.entries.erase(bracket.entries.begin() + static_cast<std::ptrdiff_t>(place));
  --bracket.free_count;
}

void BracketList::AppendBracket(const std::vector<int>& numbers) {
  Bracket* bracket = NewBracket();
  for (const int number : numbers)
    AddPlayer(*bracket, number);
  Bracket** end = &first_;
  while (*end != nullptr)
    end = &(*end)->next;
  *end = bracket;
  bracket->number = static_cast<int>(Chain().size());
}

int BracketList::HighestPoints() const {
  int highest = -1;
  for (int n = 1; n <= static_cast<int>(field_.Size()); ++n) {
    if (!field_.Get(n).has_game_in_round) highest = std::max(highest, field_.Get(n).points);
  }
  return highest;
}

bool BracketList::CreateBrackets(int width, int mode) {
  all_.clear();
  first_ = nullptr;
  if (mode == 3) {
    first_ = NewBracket();
    for (int n = 1; n <= static_cast<int>(field_.Size()); ++n) {
      if (!field_.Get(n).has_game_in_round) AddPlayer(*first_, n);
    }
    first_->number = 1;
    return true;
  }
  const int highest = HighestPoints();
  if (highest < 0) return false;
  if (mode == 2) {
    BuildDown(width, highest);
  } else {
    BuildUp(width, highest);
  }
  MoveLonePlayers();
  RemoveEmptyBrackets();
  MergeFromBottom();
  int number = 0;
  for (Bracket* bracket = first_; bracket != nullptr; bracket = bracket->next) {
    bracket->number = ++number;
  }
  return true;
}

void BracketList::BuildDown(int width, int highest) {
  Bracket** end = &first_;
  for (int top = highest; top >= 0; top = top - width - 1) {
    auto bracket = std::make_unique<Bracket>();
    for (int n = 1; n <= static_cast<int>(field_.Size()); ++n) {
      const Contender& contender = field_.Get(n);
      if (!contender.has_game_in_round && top - width <= contender.points &&
          contender.points <= top) {
        AddPlayer(*bracket, n);
      }
    }
    if (bracket->entries.empty()) continue;
    *end = bracket.get();
    end = &bracket->next;
    all_.push_back(std::move(bracket));
  }
}

void BracketList::BuildUp(int width, int highest) {
  int low = 2000000000;
  for (int n = 1; n <= static_cast<int>(field_.Size()); ++n) {
    low = std::min(low, field_.Get(n).points);
  }
  Bracket** end = &first_;
  for (; low <= highest; low = low + width + 1) {
    *end = NewBracket();
    for (int n = 1; n <= static_cast<int>(field_.Size()); ++n) {
      const int points = field_.Get(n).points;
      if (low <= points && points <= low + width) AddPlayer(**end, n);
    }
    end = &(*end)->next;
  }
}

bool BracketList::HasPartner(Bracket& bracket, std::size_t place) {
  for (std::size_t other = 0; other < bracket.entries.size(); ++other) {
    if (other != place && MayPair(bracket, bracket.entries[place], bracket.entries[other])) {
      return true;
    }
  }
  return false;
}

std::size_t BracketList::FindLonePlayer(Bracket& bracket) {
  for (std::size_t place = 0; place < bracket.entries.size(); ++place) {
    if (!HasPartner(bracket, place)) return place;
  }
  return bracket.entries.size();
}

void BracketList::MoveLonePlayers() {
  for (Bracket* bracket = first_; bracket != nullptr && bracket->next != nullptr;
       bracket = bracket->next) {
    for (std::size_t place = FindLonePlayer(*bracket); place < bracket->entries.size();
         place = FindLonePlayer(*bracket)) {
      AddPlayer(*bracket->next, bracket->entries[place].number);
      RemovePlayer(*bracket, place);
    }
  }
}

void BracketList::RemoveEmptyBrackets() {
  for (Bracket** link = &first_; *link != nullptr;) {
    if ((*link)->entries.empty()) {
      *link = (*link)->next;
    } else {
      link = &(*link)->next;
    }
  }
}

void BracketList::MergeFromBottom() {
  for (;;) {
    Bracket* before = nullptr;
    Bracket* last = first_;
    while (last != nullptr && last->next != nullptr) {
      before = last;
      last = last->next;
    }
    if (before == nullptr || FindLonePlayer(*last) == last->entries.size()) return;
    for (const Entry& entry : last->entries)
      AddPlayer(*before, entry.number);
    before->next = nullptr;
  }
}

std::vector<const Bracket*> BracketList::Chain() const {
  std::vector<const Bracket*> chain;
  for (const Bracket* bracket = first_; bracket != nullptr; bracket = bracket->next) {
    chain.push_back(bracket);
  }
  return chain;
}

std::vector<std::pair<int, int>> BracketList::TakeGames(bool& toggle) {
  std::vector<std::pair<int, int>> games;
  for (Bracket* bracket = first_; bracket != nullptr; bracket = bracket->next) {
    for (Entry& entry : bracket->entries) {
      if (entry.partner <= 0) continue;
      Entry* other = nullptr;
      for (Entry& candidate : bracket->entries) {
        if (candidate.number == entry.partner && !candidate.absent) other = &candidate;
      }
      entry.partner = -1;
      other->partner = -1;
      bool entry_is_white = false;
      if (entry.colour_state == other->colour_state) {
        entry_is_white = toggle;
        toggle = !toggle;
      } else if (entry.colour_state > other->colour_state) {
        entry_is_white = (entry.colour_state & 1) == 1;
      } else {
        entry_is_white = (other->colour_state & 1) == 0;
      }
      if (entry_is_white) {
        games.emplace_back(entry.number, other->number);
      } else {
        games.emplace_back(other->number, entry.number);
      }
    }
  }
  return games;
}

}  // namespace tarvendo::literal
