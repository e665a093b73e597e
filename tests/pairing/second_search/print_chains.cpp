// print_chains SEED COUNT: so many random chains, the first one of that seed, with the program's
// answer to each, for second_search.py. A line for each chain:
//
//   {"seed": 7, "colours_count": true, "states": [2, 16, 2, 5], "met": [[1, 2]],
//    "brackets": [[1, 2], [3, 4]], "answer": [[[1, -1, true], [2, -1, true]], [[3, 1, false], ..]]}
//
// A state is the wish for a colour of the next player, from number 1 on; a bracket lists the
// numbers of its players; the answer is null, or lists for each bracket its entries as number,
// partner (or -1) and whether the player has floated out. Seeds that make no brackets are left out.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "pairing/bracket_creation.h"
#include "pairing/chain_search.h"
#include "pairing/random_chains.h"

namespace tarvendo {
namespace {

/// "[a, b]", each item told by `tell`.
template <typename Items, typename Tell>
std::string List(const Items& items, Tell tell) {
  std::string text;
  for (const auto& item : items)
    text += (text.empty() ? "" : ", ") + tell(item);
  return "[" + text + "]";
}

std::string Number(int number) {
  return std::to_string(number);
}

std::string Met(const PairingField& field) {
  std::vector<std::vector<int>> pairs;
  for (Seat seat = 0; seat < field.Size(); ++seat) {
    field.OpponentsOf(seat).ForEach([&](Seat other) {
      if (seat < other) pairs.push_back({static_cast<int>(seat) + 1, static_cast<int>(other) + 1});
    });
  }
  return List(pairs, [](const std::vector<int>& pair) { return List(pair, Number); });
}

std::string States(const PairingField& field) {
  std::vector<int> states;
  for (int number = 1; number <= static_cast<int>(field.Size()); ++number)
    states.push_back(field.Get(number).colour_state);
  return List(states, Number);
}

std::string Numbers(const std::vector<Bracket>& chain) {
  return List(chain, [](const Bracket& bracket) {
    return List(bracket.Entries(), [](const BracketEntry& entry) { return Number(entry.number); });
  });
}

std::string EntryText(const BracketEntry& entry) {
  return "[" + Number(entry.number) + ", " + Number(entry.partner) +
         (entry.absent ? ", true]" : ", false]");
}

std::string Answer(const PairingField& field, std::vector<Bracket> chain) {
  PairingClock clock([] { return std::int64_t{0}; });
  if (PairBracketChain(field, chain, clock) != PairingCode::kPaired) return "null";
  return List(chain, [](const Bracket& bracket) { return List(bracket.Entries(), EntryText); });
}

std::vector<Bracket> BracketsOf(const RandomChain& random) {
  if (random.by_hand.empty()) {
    return MakeBrackets(random.field, BracketWidth{random.width},
                        static_cast<BracketMode>(random.mode));
  }
  std::vector<Bracket> chain;
  for (const std::vector<int>& numbers : random.by_hand) {
    chain.emplace_back(random.field.Size());
    for (const int number : numbers)
      chain.back().Add(number, random.field.Get(number).colour_state);
  }
  return chain;
}

void PrintChain(std::uint64_t seed) {
  Dice dice(seed);
  const RandomChain random = MakeRandomChain(dice);
  const std::vector<Bracket> chain = BracketsOf(random);
  if (chain.empty()) return;
  std::printf(
      "{\"seed\": %llu, \"colours_count\": %s, \"states\": %s, \"met\": %s, \"brackets\": %s, "
      "\"answer\": %s}\n",
      static_cast<unsigned long long>(seed), random.field.ColoursCount() ? "true" : "false",
      States(random.field).c_str(), Met(random.field).c_str(), Numbers(chain).c_str(),
      Answer(random.field, chain).c_str());
}

}  // namespace
}  // namespace tarvendo

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: print_chains SEED COUNT\n");
    return 2;
  }
  const auto seed = static_cast<std::uint64_t>(std::atoll(argv[1]));
  const auto count = static_cast<std::uint64_t>(std::atoll(argv[2]));
  for (std::uint64_t i = 0; i < count; ++i)
    tarvendo::PrintChain(seed + i);
}
