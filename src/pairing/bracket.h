#pragma once

#include <cstddef>
#include <vector>

#include "pairing/colour_rules.h"
#include "pairing/pairing_field.h"
#include "pairing/player_set.h"

namespace tarvendo {

/// Nobody yet.
inline constexpr int kUnpaired = -1;

/// A player in a bracket.
struct BracketEntry {
  bool absent = false;               ///< moved down: the player stands in the next bracket for now
  int number = 0;                    ///< the participant's number, 1-based
  int partner = kUnpaired;           ///< the partner's number; pairs are recorded on both entries
  int colour_state = kNoColourWish;  ///< as it was when the entry was made

  bool IsPaired() const { return partner != kUnpaired; }
  bool IsFree() const { return !absent && !IsPaired(); }
};

/// A score group. Its entries keep the order in which they came. Part of a chain of brackets, from
/// the first to be paired to the last; used by one thread at a time.
class Bracket {
 public:
  /// An empty bracket in a field of so many participants.
  explicit Bracket(std::size_t field_size) : members_(field_size) {}

  const std::vector<BracketEntry>& Entries() const { return entries_; }
  std::size_t Size() const { return entries_.size(); }

  /// The players of all entries, absent ones too.
  const PlayerSet& Members() const { return members_; }

  /// How many entries are neither paired nor absent, as the operations below keep count of it.
  std::size_t FreeCount() const { return free_count_; }

  /// The numbers of the players moved into this bracket by MoveDown, in order of arrival. Each
  /// stays in the list when it is moved on.
  const std::vector<int>& FloatersIn() const { return floaters_in_; }

  /// The indices (0-based) of the entries that were moved down to the next bracket, in that order.
  const std::vector<std::size_t>& FloatedOut() const { return floated_out_; }

  /// Appends a free entry.
  void Add(int number, int colour_state);

  /// Takes out the entry with that index (0-based), which must be free.
  void Remove(std::size_t index);

  /// Moves the free player with that index down into `next` for this attempt.
  void MoveDown(std::size_t index, Bracket& next);

  /// Takes the last move down back.
  void UndoMoveDown(Bracket& next);

  /// Appends all entries of `other`, as they are.
  void Absorb(const Bracket& other);

  /// Records these two entries as a pair.
  void RecordPair(std::size_t index, std::size_t other_index);

  /// Forgets the pair of this entry, after its games have been planned. The entries do not count as
  /// free again: their players have their games.
  void ForgetPair(std::size_t index);

  /// The index of the first entry of that player; Size() when there is none.
  std::size_t EntryOf(int number) const;

  int number = 0;                      ///< 1-based place in the chain
  ColourLevel level = kIgnoreColours;  ///< that of the last attempt to pair it

 private:
  std::vector<BracketEntry> entries_;
  PlayerSet members_;
  std::size_t free_count_ = 0;
  std::vector<int> floaters_in_;
  std::vector<std::size_t> floated_out_;
};

// The rules of a bracket.

/// Whether the entry with that index has not met somebody of the bracket. Colours do not count.
bool HasPossiblePartner(const PairingField& field, const Bracket& bracket, std::size_t index);

/// Whether the entry may be moved down: it is free and there is somebody in `next` that it has not
/// met.
bool IsMovable(const PairingField& field, const BracketEntry& entry, const Bracket& next);

}  // namespace tarvendo
