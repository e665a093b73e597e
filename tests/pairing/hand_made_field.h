#pragma once

#include <initializer_list>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "pairing/bracket.h"
#include "pairing/pairing_field.h"

namespace tarvendo {

using Numbers = std::vector<int>;
using Meetings = std::initializer_list<std::pair<int, int>>;

/// Whether the two have met. Everybody has met himself.
inline bool HasMet(const PairingField& field, int number, int other) {
  return field.OpponentsOf(PairingField::SeatOf(number)).Contains(PairingField::SeatOf(other));
}

/// Players with these wishes for a colour and no points.
inline PairingField FieldOfStates(const Numbers& colour_states, Meetings met = {},
                                  int sub_rounds = 1) {
  std::vector<Contender> contenders(colour_states.size());
  for (std::size_t i = 0; i < contenders.size(); ++i)
    contenders[i].colour_state = colour_states[i];
  PairingField field(std::move(contenders), sub_rounds);
  for (const auto& [number, other] : met)
    field.AddMeeting(number, other);
  return field;
}

/// Players with these points (in quarters) and no wish for a colour.
inline PairingField FieldOfPoints(const Numbers& points, Meetings met = {}) {
  std::vector<Contender> contenders(points.size());
  for (std::size_t i = 0; i < contenders.size(); ++i)
    contenders[i].points = points[i];
  PairingField field(std::move(contenders), 1);
  for (const auto& [number, other] : met)
    field.AddMeeting(number, other);
  return field;
}

/// So many players of whom nobody has met anybody or has a wish.
inline PairingField FreshField(std::size_t players, Meetings met = {}) {
  return FieldOfStates(Numbers(players, kNoColourWish), met);
}

/// A field in which everybody has met everybody.
inline PairingField FieldWhereAllHaveMet(int players) {
  PairingField field = FreshField(static_cast<std::size_t>(players));
  for (int number = 1; number <= players; ++number) {
    for (int other = number + 1; other <= players; ++other)
      field.AddMeeting(number, other);
  }
  return field;
}

inline Bracket BracketOf(const PairingField& field, const Numbers& numbers) {
  Bracket bracket(field.Size());
  for (const int number : numbers)
    bracket.Add(number, field.Get(number).colour_state);
  return bracket;
}

inline std::vector<Bracket> ChainOf(const PairingField& field,
                                    const std::vector<Numbers>& brackets) {
  std::vector<Bracket> chain;
  for (const Numbers& numbers : brackets) {
    chain.push_back(BracketOf(field, numbers));
    chain.back().number = static_cast<int>(chain.size());
  }
  return chain;
}

/// "[1-2 2-1][3a 4]": the entries with their partners; "a" is absent.
inline std::string ChainText(const std::vector<Bracket>& chain) {
  std::ostringstream text;
  for (const Bracket& bracket : chain) {
    text << '[';
    for (std::size_t i = 0; i < bracket.Size(); ++i) {
      const BracketEntry& entry = bracket.Entries()[i];
      text << (i == 0 ? "" : " ") << entry.number << (entry.absent ? "a" : "");
      if (entry.IsPaired()) text << '-' << entry.partner;
    }
    text << ']';
  }
  return text.str();
}

}  // namespace tarvendo
