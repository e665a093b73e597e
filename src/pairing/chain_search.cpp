// Pairing a chain of brackets.
//
// Each bracket is paired by itself; players who find no partner in it float into the next one. The
// rules of the search, in the order in which its choices are made:
//
//   First pass (mode kFirstPass): a bracket with an even number of players is paired as it is, one
//   with an odd number after one player has floated, the first in the order of entries with whom
//   the rest works. Floater pass (mode kFloaters, up to k): more floaters, two by two, the same
//   number at the most in every bracket behind. Full pass (mode kFull): any number of floaters up
//   to half of the bracket, with all means behind. Merge (mode kFull): the bracket and all that
//   follow become one.
//
// The answer is the first that these choices reach. What makes it quick leaves the answer as it is:
//   - A choice is not followed when the outlook (chain_outlook.h) or the memory (search_memory.h)
//   knows
//     that it fails. In full mode nothing else fails: the outlook's "all can be paired" is what the
//     merge needs, so the first choice that it lets through is final, and a pass is never repeated.
//   - While it chooses, the search asks only whether a bracket can be paired. The pairs are made
//   once,
//     at the end.

#include "pairing/chain_search.h"

#include <algorithm>

#include "pairing/bracket_pairing.h"
#include "pairing/chain_outlook.h"
#include "pairing/floater_limits.h"
#include "pairing/matching.h"
#include "pairing/pair_graph.h"
#include "pairing/search_memory.h"

namespace tarvendo {
namespace {

enum class SearchMode { kFloaters = 1, kFirstPass = 3, kFull = 5 };

/// Whether a code ends the search: success, or no time left.
bool IsFinal(PairingCode code) {
  return code == PairingCode::kPaired || code == PairingCode::kTimeOut;
}

/// Floaters to be chosen in one bracket.
struct FloaterChoice {
  std::size_t place;  ///< of the bracket in the chain, 0-based
  SearchMode mode;    ///< of the search behind it
  std::size_t most;   ///< k of the search behind it
  std::size_t count;  ///< how many are to be chosen
};

class ChainSearch {
 public:
  ChainSearch(const PairingField& field, std::vector<Bracket>& chain, LevelGraphs& graphs,
              PairingClock& clock)
      : field_(field),
        chain_(chain),
        graphs_(graphs),
        clock_(clock),
        was_single_(chain.size() == 1),
        outlook_(graphs.At(kMediumGivesWay), chain),
        scratch_(field.Size()) {}

  /// Pairs the chain; on failure leaves it in some state.
  PairingCode Run() {
    const PairingCode code = PairChain(0, SearchMode::kFull, 0);
    return code == PairingCode::kPaired ? PairEveryBracket() : code;
  }

 private:
  bool IsLast(std::size_t place) const { return place + 1 == chain_.size(); }
  bool HasEvenCount(std::size_t place) const { return chain_[place].FreeCount() % 2 == 0; }
  SearchRecord& RecordOf(std::size_t place) { return memory_.Of(place, chain_[place]); }

  /// Places the players of the chain from `place` on; `most` is k.
  PairingCode PairChain(std::size_t place, SearchMode mode, std::size_t most) {
    if (clock_.CountedIsTimedOut()) return PairingCode::kTimeOut;
    if (IsLast(place)) return PairHere(place, mode, most);
    if (!AllCanBePaired(place)) return PairingCode::kMergeFailed;
    PairingCode code = FirstPass(place);
    if (IsFinal(code) || mode == SearchMode::kFirstPass) return code;
    code = FloaterPass(place, most);
    if (IsFinal(code) || mode == SearchMode::kFloaters) return code;
    code = FullPass(place);
    return IsFinal(code) ? code : MergeFrom(place);
  }

  PairingCode FirstPass(std::size_t place) {
    SearchRecord& record = RecordOf(place);
    if (record.first_pass_failed) return PairingCode::kNotPaired;
    const FloaterLimits limits(chain_, place, 0);
    PairingCode code = PairingCode::kNotPaired;
    if (LimitsCanWork(place, limits)) {
      code = HasEvenCount(place) ? PairHere(place, SearchMode::kFirstPass, 0)
                                 : TryFloatDown(place, SearchMode::kFirstPass, 1);
    }
    record.first_pass_failed = code != PairingCode::kPaired;
    return code;
  }

  PairingCode FloaterPass(std::size_t place, std::size_t most) {
    SearchRecord& record = RecordOf(place);
    // More floaters than there are players change nothing.
    const std::size_t useful = std::min(most, PlayersFrom(place) + 2);
    for (std::size_t count = HasEvenCount(place) ? 2 : 1; count <= useful; count += 2) {
      if (count <= record.failed_with_floaters) continue;
      const PairingCode code = PassWithFloaters(place, count);
      if (IsFinal(code)) return code;
      record.failed_with_floaters = count;
    }
    return PairingCode::kFloatersExhausted;
  }

  PairingCode PassWithFloaters(std::size_t place, std::size_t count) {
    const FloaterLimits limits(chain_, place, count);
    if (!LimitsCanWork(place, limits)) return PairingCode::kFloatersExhausted;
    if (HasEvenCount(place)) {
      const PairingCode code = PairHere(place, SearchMode::kFloaters, count);
      if (IsFinal(code)) return code;
    }
    return TryFloatDown(place, SearchMode::kFloaters, count);
  }

  PairingCode FullPass(std::size_t place) {
    const std::size_t entries = chain_[place].Size();
    const PairingCode code = PairHere(place, SearchMode::kFull, entries);
    if (IsFinal(code)) return code;
    return TryFloatDown(place, SearchMode::kFull, entries);
  }

  /// Makes one bracket of this and all that follow. The outlook has seen that it can be paired.
  PairingCode MergeFrom(std::size_t place) {
    for (std::size_t next = place + 1; next < chain_.size(); ++next) {
      chain_[place].Absorb(chain_[next]);
    }
    chain_.erase(chain_.begin() + static_cast<std::ptrdiff_t>(place) + 1, chain_.end());
    return PairingCode::kPaired;
  }

  /// Keeps all players of the bracket in it.
  PairingCode PairHere(std::size_t place, SearchMode mode, std::size_t most) {
    if (!HasEvenCount(place)) return PairingCode::kOddCount;
    if (!CanBePaired(graphs_, chain_[place], scratch_)) return PairingCode::kNotPaired;
    if (IsLast(place)) return PairingCode::kPaired;
    const PairingCode code = PairChain(place + 1, mode, most);
    return IsFinal(code) ? code : PairingCode::kRestFailed;
  }

  /// Moves players of the bracket down, fewer before more.
  PairingCode TryFloatDown(std::size_t place, SearchMode mode, std::size_t most) {
    const std::size_t first = chain_[place].FreeCount() % 2;
    for (const std::size_t count : FloaterCounts(chain_[place].Size(), first, most)) {
      if (count == 0 || count < FewestFloaters(place)) continue;
      const PairingCode code = ChooseFloaters({place, mode, most, count}, 0);
      if (IsFinal(code)) return code;
    }
    return PairingCode::kFloatersExhausted;
  }

  /// Goes through the ways to float the players that are still missing, out of the entries from
  /// `from` on, in the order of entries.
  PairingCode ChooseFloaters(const FloaterChoice& choice, std::size_t from) {
    Bracket& bracket = chain_[choice.place];
    Bracket& next = chain_[choice.place + 1];
    const std::size_t missing = choice.count - bracket.FloatedOut().size();
    if (missing == 0) return PairWithFloaters(choice);
    for (std::size_t entry = from; entry + missing <= bracket.Size(); ++entry) {
      if (!IsMovable(field_, bracket.Entries()[entry], next)) continue;
      if (clock_.IsTimedOut()) return PairingCode::kTimeOut;
      bracket.MoveDown(entry, next);
      if (missing == 1 || ChoiceCanWork(choice, entry + 1)) {
        const PairingCode code = ChooseFloaters(choice, entry + 1);
        if (IsFinal(code)) return code;
      }
      bracket.UndoMoveDown(next);
      if (!ChoiceCanWork(choice, entry + 1)) break;
    }
    return PairingCode::kFloatersExhausted;
  }

  PairingCode PairWithFloaters(const FloaterChoice& choice) {
    if (!CanBePaired(graphs_, chain_[choice.place], scratch_)) return PairingCode::kNotPaired;
    return PairChain(choice.place + 1, choice.mode, choice.most);
  }

  /// In full mode only, where it proves that a choice is final. The other modes have limits, which
  /// tell nearly as much at once.
  bool ChoiceCanWork(const FloaterChoice& choice, std::size_t decided) {
    return choice.mode != SearchMode::kFull || outlook_.ChoiceCanWork(choice.place, decided);
  }

  bool AllCanBePaired(std::size_t place) {
    std::optional<bool>& answer = RecordOf(place).all_can_be_paired;
    if (!answer) answer = outlook_.AllCanBePaired(place);
    return *answer;
  }

  bool LimitsCanWork(std::size_t place, const FloaterLimits& limits) {
    return outlook_.LimitsSuffice(place, MustFloat(place), limits);
  }

  const std::vector<std::size_t>& MustFloat(std::size_t place) {
    std::vector<std::size_t>& must_float = RecordOf(place).must_float;
    if (must_float.empty()) must_float = outlook_.MustFloat(place);
    return must_float;
  }

  /// With fewer floaters, either this bracket or those behind it cannot be paired.
  std::size_t FewestFloaters(std::size_t place) {
    return std::max(MustFloat(place).front(), outlook_.NeededFromAbove(place + 1));
  }

  std::size_t PlayersFrom(std::size_t place) const {
    std::size_t players = 0;
    for (; place < chain_.size(); ++place)
      players += chain_[place].Size();
    return players;
  }

  /// Makes the pairs that the search has seen to be possible. Only the time can run out here, and a
  /// chain of one bracket then is one that cannot be paired.
  PairingCode PairEveryBracket() {
    for (Bracket& bracket : chain_) {
      if (PairBracketLevels(graphs_, bracket, clock_)) continue;
      return was_single_ ? PairingCode::kNotPaired : PairingCode::kTimeOut;
    }
    return PairingCode::kPaired;
  }

  const PairingField& field_;
  std::vector<Bracket>& chain_;
  LevelGraphs& graphs_;
  PairingClock& clock_;
  const bool was_single_;
  ChainOutlook outlook_;
  SearchMemory memory_;
  Matching scratch_;  ///< inside a bracket; the start for the next question
};

}  // namespace

PairingCode PairBracketChain(const PairingField& field, std::vector<Bracket>& chain,
                             PairingClock& clock) {
  clock.Restart();
  const std::vector<Bracket> as_made = chain;
  LevelGraphs graphs(field, chain);
  const PairingCode code = ChainSearch(field, chain, graphs, clock).Run();
  if (code != PairingCode::kPaired) chain = as_made;
  return code;
}

bool PairSingleBracket(const PairingField& field, Bracket& bracket, PairingClock& clock) {
  clock.Restart();
  LevelGraphs graphs(field, {bracket});
  return PairBracketLevels(graphs, bracket, clock);
}

}  // namespace tarvendo
