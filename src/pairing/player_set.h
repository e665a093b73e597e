#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace tarvendo {

/// A player's index in the participant list, from 0: the player's number less 1.
using Seat = std::size_t;

/// No player.
inline constexpr Seat kNoSeat = static_cast<Seat>(-1);

/// A set of seats, one bit each. All sets that are put together have room for the same number of
/// seats; a seat outside that room must not be asked for.
class PlayerSet {
 public:
  using Word = std::uint64_t;
  static constexpr std::size_t kWordBits = 64;

  explicit PlayerSet(std::size_t seats = 0) : words_((seats + kWordBits - 1) / kWordBits) {}

  void Insert(Seat seat) { words_[seat / kWordBits] |= Bit(seat); }
  void Erase(Seat seat) { words_[seat / kWordBits] &= ~Bit(seat); }
  bool Contains(Seat seat) const { return (words_[seat / kWordBits] & Bit(seat)) != 0; }
  void Clear() { words_.assign(words_.size(), 0); }

  bool IsEmpty() const {
    for (const Word word : words_) {
      if (word != 0) return false;
    }
    return true;
  }

  std::size_t Count() const {
    std::size_t count = 0;
    for (const Word word : words_)
      count += static_cast<std::size_t>(std::popcount(word));
    return count;
  }

  PlayerSet& operator|=(const PlayerSet& other) {
    for (std::size_t i = 0; i < words_.size(); ++i)
      words_[i] |= other.words_[i];
    return *this;
  }

  PlayerSet& operator&=(const PlayerSet& other) {
    for (std::size_t i = 0; i < words_.size(); ++i)
      words_[i] &= other.words_[i];
    return *this;
  }

  /// Takes out every seat of `other`.
  PlayerSet& operator-=(const PlayerSet& other) {
    for (std::size_t i = 0; i < words_.size(); ++i)
      words_[i] &= ~other.words_[i];
    return *this;
  }

  /// Whether every seat of this set is in `other`.
  bool IsWithin(const PlayerSet& other) const {
    for (std::size_t i = 0; i < words_.size(); ++i) {
      if ((words_[i] & ~other.words_[i]) != 0) return false;
    }
    return true;
  }

  bool operator==(const PlayerSet&) const = default;

  std::size_t WordCount() const { return words_.size(); }
  Word WordAt(std::size_t index) const { return words_[index]; }

  /// Calls `visit` with each seat, in ascending order.
  template <typename Visitor>
  void ForEach(Visitor visit) const {
    for (std::size_t i = 0; i < words_.size(); ++i) {
      for (Word word = words_[i]; word != 0; word &= word - 1)
        visit(LowestSeat(i, word));
    }
  }

  /// The lowest seat of a word of the set that is not 0.
  static Seat LowestSeat(std::size_t index, Word word) {
    return index * kWordBits + static_cast<std::size_t>(std::countr_zero(word));
  }

 private:
  static Word Bit(Seat seat) { return Word{1} << (seat % kWordBits); }

  std::vector<Word> words_;
};

/// The lowest seat that all these sets hold; kNoSeat when there is none.
template <typename... Sets>
Seat FirstCommonSeat(const PlayerSet& first, const Sets&... others) {
  for (std::size_t i = 0; i < first.WordCount(); ++i) {
    const PlayerSet::Word word = (first.WordAt(i) & ... & others.WordAt(i));
    if (word != 0) return PlayerSet::LowestSeat(i, word);
  }
  return kNoSeat;
}

/// The lowest seat that all these sets hold and `outside` does not; kNoSeat when there is none.
template <typename... Sets>
Seat FirstCommonSeatOutside(const PlayerSet& outside, const PlayerSet& first,
                            const Sets&... others) {
  for (std::size_t i = 0; i < first.WordCount(); ++i) {
    const PlayerSet::Word word = (first.WordAt(i) & ... & others.WordAt(i)) & ~outside.WordAt(i);
    if (word != 0) return PlayerSet::LowestSeat(i, word);
  }
  return kNoSeat;
}

}  // namespace tarvendo
