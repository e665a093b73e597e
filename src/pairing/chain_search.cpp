// Pairing a chain of brackets. docs/swiss-search.md tells what is searched for, what is left out of
// the search and why the answer is the same without it.

#include "pairing/chain_search.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

#include "pairing/bracket_pairing.h"
#include "pairing/chain_outlook.h"
#include "pairing/matching.h"
#include "pairing/pair_graph.h"

namespace tarvendo {
namespace {

enum class SearchMode { kFloaters = 1, kFirstPass = 3, kFull = 5 };

/// Whether a code ends the search: success, or no time left.
bool IsFinal(PairingCode code) {
  return code == PairingCode::kPaired || code == PairingCode::kTimeOut;
}

/// What the search has found out about a bracket with the floaters that came in, the brackets
/// behind it being as they were made. A failed search leaves no trace in the brackets, so it would
/// fail again.
struct SearchRecord {
  std::optional<bool> all_can_be_paired;
  std::vector<std::size_t> must_float;  ///< see ChainOutlook; empty until it is asked for
  bool first_pass_failed = false;
  std::size_t failed_with_floaters = 0;  ///< the largest number that the floater pass failed with
};

/// The records of one search. References stay good.
class SearchMemory {
 public:
  /// `index` is the bracket's in the chain.
  SearchRecord& Of(std::size_t index, const Bracket& bracket) {
    return records_[{index, bracket.FloatersIn()}];
  }

 private:
  std::map<std::pair<std::size_t, std::vector<int>>, SearchRecord> records_;
};

/// Floaters to be chosen in one bracket.
struct FloaterChoice {
  std::size_t index;  ///< the bracket's in the chain, from 0
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
  bool IsLast(std::size_t index) const { return index + 1 == chain_.size(); }
  bool HasEvenCount(std::size_t index) const { return chain_[index].FreeCount() % 2 == 0; }
  SearchRecord& RecordOf(std::size_t index) { return memory_.Of(index, chain_[index]); }

  /// Tells where the players of the chain from `index` on go; `most` is k.
  PairingCode PairChain(std::size_t index, SearchMode mode, std::size_t most) {
    if (clock_.IsTimedOut()) return PairingCode::kTimeOut;
    if (IsLast(index)) return PairHere(index, mode, most);
    if (!AllCanBePaired(index)) return PairingCode::kMergeFailed;
    PairingCode code = FirstPass(index);
    if (IsFinal(code) || mode == SearchMode::kFirstPass) return code;
    code = FloaterPass(index, most);
    if (IsFinal(code) || mode == SearchMode::kFloaters) return code;
    code = FullPass(index);
    return IsFinal(code) ? code : MergeFrom(index);
  }

  PairingCode FirstPass(std::size_t index) {
    SearchRecord& record = RecordOf(index);
    if (record.first_pass_failed) return PairingCode::kNotPaired;
    const FloaterLimits limits(chain_, index, 0);
    PairingCode code = PairingCode::kNotPaired;
    if (LimitsCanWork(index, limits)) {
      code = HasEvenCount(index) ? PairHere(index, SearchMode::kFirstPass, 0)
                                 : TryFloatDown(index, SearchMode::kFirstPass, 1);
    }
    record.first_pass_failed = code != PairingCode::kPaired;
    return code;
  }

  PairingCode FloaterPass(std::size_t index, std::size_t most) {
    SearchRecord& record = RecordOf(index);
    // More floaters than there are players change nothing.
    const std::size_t useful = std::min(most, PlayersFrom(index) + 2);
    for (std::size_t count = HasEvenCount(index) ? 2 : 1; count <= useful; count += 2) {
      if (count <= record.failed_with_floaters) continue;
      const PairingCode code = PassWithFloaters(index, count);
      if (IsFinal(code)) return code;
      record.failed_with_floaters = count;
    }
    return PairingCode::kFloatersExhausted;
  }

  PairingCode PassWithFloaters(std::size_t index, std::size_t count) {
    const FloaterLimits limits(chain_, index, count);
    if (!LimitsCanWork(index, limits)) return PairingCode::kFloatersExhausted;
    if (HasEvenCount(index)) {
      const PairingCode code = PairHere(index, SearchMode::kFloaters, count);
      if (IsFinal(code)) return code;
    }
    return TryFloatDown(index, SearchMode::kFloaters, count);
  }

  PairingCode FullPass(std::size_t index) {
    const std::size_t entries = chain_[index].Size();
    const PairingCode code = PairHere(index, SearchMode::kFull, entries);
    if (IsFinal(code)) return code;
    return TryFloatDown(index, SearchMode::kFull, entries);
  }

  /// Makes one bracket of this and all that follow. The outlook has seen that it can be paired.
  PairingCode MergeFrom(std::size_t index) {
    for (std::size_t next = index + 1; next < chain_.size(); ++next) {
      chain_[index].Absorb(chain_[next]);
    }
    chain_.erase(chain_.begin() + static_cast<std::ptrdiff_t>(index) + 1, chain_.end());
    return PairingCode::kPaired;
  }

  /// Keeps all players of the bracket in it.
  PairingCode PairHere(std::size_t index, SearchMode mode, std::size_t most) {
    if (!HasEvenCount(index)) return PairingCode::kOddCount;
    if (!CanBePaired(graphs_, chain_[index], scratch_)) return PairingCode::kNotPaired;
    if (IsLast(index)) return PairingCode::kPaired;
    const PairingCode code = PairChain(index + 1, mode, most);
    return IsFinal(code) ? code : PairingCode::kRestFailed;
  }

  /// Moves players of the bracket down, fewer before more.
  PairingCode TryFloatDown(std::size_t index, SearchMode mode, std::size_t most) {
    const std::size_t first = chain_[index].FreeCount() % 2;
    for (const std::size_t count : FloaterCounts(chain_[index].Size(), first, most)) {
      if (count == 0 || count < FewestFloaters(index)) continue;
      const PairingCode code = ChooseFloaters({index, mode, most, count}, 0);
      if (IsFinal(code)) return code;
    }
    return PairingCode::kFloatersExhausted;
  }

  /// Goes through the ways to float the players that are still missing, out of the entries from
  /// `from` on, in the order of entries.
  PairingCode ChooseFloaters(const FloaterChoice& choice, std::size_t from) {
    Bracket& bracket = chain_[choice.index];
    Bracket& next = chain_[choice.index + 1];
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
    if (!CanBePaired(graphs_, chain_[choice.index], scratch_)) return PairingCode::kNotPaired;
    return PairChain(choice.index + 1, choice.mode, choice.most);
  }

  /// Looks in full mode only, where it saves what no limit does. In the other modes it costs more
  /// than it saves.
  bool ChoiceCanWork(const FloaterChoice& choice, std::size_t decided) {
    return choice.mode != SearchMode::kFull || outlook_.ChoiceCanWork(choice.index, decided);
  }

  bool AllCanBePaired(std::size_t index) {
    std::optional<bool>& answer = RecordOf(index).all_can_be_paired;
    if (!answer) answer = outlook_.AllCanBePaired(index);
    return *answer;
  }

  bool LimitsCanWork(std::size_t index, const FloaterLimits& limits) {
    return outlook_.LimitsSuffice(index, MustFloat(index), limits);
  }

  const std::vector<std::size_t>& MustFloat(std::size_t index) {
    std::vector<std::size_t>& must_float = RecordOf(index).must_float;
    if (must_float.empty()) must_float = outlook_.MustFloat(index);
    return must_float;
  }

  /// With fewer floaters, either this bracket or those behind it cannot be paired.
  std::size_t FewestFloaters(std::size_t index) {
    return std::max(MustFloat(index).front(), outlook_.NeededFromAbove(index + 1));
  }

  std::size_t PlayersFrom(std::size_t index) const {
    std::size_t players = 0;
    for (; index < chain_.size(); ++index)
      players += chain_[index].Size();
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

}  // namespace tarvendo
