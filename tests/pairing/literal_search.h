#pragma once

#include <cstddef>
#include <cstdint>
#include <list>
#include <memory>
#include <utility>
#include <vector>

#include "pairing/pairing_field.h"

namespace tarvendo::literal {

// The pairing rules done step by step, by trial: slow, and as plain as the rules are told. What the
// program's quick search finds is compared with this. Codes, modes and levels are the plain
// numbers.

struct Entry {
  bool absent = false;
  int number = 0;
  int partner = -1;  ///< -1 unpaired, 0 taken while a partner is looked for
  int colour_state = 2;
};

struct Bracket {
  int number = 0;
  int level = 2;
  int free_count = 0;
  std::vector<Entry> entries;
  std::vector<int> floaters_in;
  std::vector<std::size_t> floated_out;
  Bracket* next = nullptr;
  Bracket* saved_next = nullptr;
  std::unique_ptr<Bracket> merge_copy;
};

class BracketList {
 public:
  /// `budget` is how many steps a search may take before it gives up as if time had run out.
  BracketList(const PairingField& field, std::int64_t budget) : field_(field), budget_(budget) {}

  bool CreateBrackets(int width, int mode);

  /// Puts a bracket with these players at the end of the chain, without any rule.
  void AppendBracket(const std::vector<int>& numbers);

  /// Code of the search over the whole chain.
  int PairAll();

  /// Pairs one bracket of the chain (1-based) by itself.
  bool PairSingle(int number);

  /// White and Black of each pair of the chain, in the order of the games; forgets the pairs.
  std::vector<std::pair<int, int>> TakeGames(bool& toggle);

  std::vector<const Bracket*> Chain() const;
  bool GaveUp() const { return timed_out_; }

  /// After a search that gave up: searches again, without the repetitions of the full pass, which
  /// are identical to it.
  int PairAllWithoutRepetitions();

 private:
  struct Snapshot {
    Bracket* bracket;
    std::vector<Entry> entries;
    Bracket* next;
  };

  void Remember();
  void Rewind();
  Bracket* NewBracket();
  void AddPlayer(Bracket& bracket, int number);
  void RemovePlayer(Bracket& bracket, std::size_t place);
  int HighestPoints() const;
  void BuildDown(int width, int highest);
  void BuildUp(int width, int highest);
  std::size_t FindLonePlayer(Bracket& bracket);
  bool HasPartner(Bracket& bracket, std::size_t place);
  void MoveLonePlayers();
  void RemoveEmptyBrackets();
  void MergeFromBottom();

  bool Step();
  bool CanPair(Bracket& bracket, std::size_t a, std::size_t b);
  bool MayPair(const Bracket& bracket, const Entry& a, const Entry& b) const;
  bool PairBracketLevels(Bracket& bracket);
  bool PairWithin(Bracket& bracket, std::size_t i);
  bool PairLastTwo(Bracket& bracket);
  bool PairFloater(Bracket& bracket, std::size_t place, std::size_t i);
  bool PairFirst(Bracket& bracket);
  bool TryPair(Bracket& bracket, std::size_t a, std::size_t b, std::size_t i);
  void ClearPairs(Bracket& bracket);
  void Float(Bracket& bracket, std::size_t place);
  std::size_t UndoFloat(Bracket& bracket);
  bool IsMovable(const Bracket& bracket, std::size_t place) const;
  std::size_t NextMovable(const Bracket& bracket, std::size_t from) const;
  bool SelectFloaters(Bracket& bracket, std::size_t m);
  bool SelectFirst(Bracket& bracket, std::size_t m);
  bool SelectNext(Bracket& bracket, std::size_t m);
  int PairChain(Bracket& bracket, int mode, int k);
  int FirstPass(Bracket& bracket);
  int FloaterPass(Bracket& bracket, int k);
  int FullPass(Bracket& bracket, int k);
  int Merge(Bracket& bracket);
  void FoldFollowing(Bracket& bracket);
  void Restore(Bracket& bracket);
  int PairHere(Bracket& bracket, int mode, int k);
  int TryFloatDown(Bracket& bracket, int mode, int k);
  int TrySelections(Bracket& bracket, int mode, int k, std::size_t m);

  const PairingField& field_;
  std::int64_t budget_;
  std::int64_t steps_ = 0;
  bool timed_out_ = false;
  bool repeats_ = true;
  Bracket* first_ = nullptr;
  std::vector<Snapshot> as_made_;
  std::list<std::unique_ptr<Bracket>> all_;
};

}  // namespace tarvendo::literal
