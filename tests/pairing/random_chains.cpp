#include "pairing/random_chains.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tarvendo {
namespace {

constexpr int kStates[] = {kNoColourWish, kWeakBlack,     kWeakWhite,    kMediumBlack,
                           kMediumWhite,  kMustHaveBlack, kMustHaveWhite};

std::vector<Contender> RandomContenders(Dice& dice, int players) {
  const int scores = dice.Between(1, 8);
  const int with_game = dice.Percent(20) ? dice.Between(5, 40) : 0;
  // Either everybody has the absolute wishes that make a field hard, or any, or none.
  const int first_state = dice.Percent(20) ? 5 : 0;
  const int last_state = dice.Percent(10) ? 0 : 6;
  std::vector<Contender> contenders;
  for (int i = 0; i < players; ++i) {
    Contender contender;
    contender.points = 2 * dice.Below(scores);
    contender.has_game_in_round = dice.Percent(with_game);
    const int state = last_state == 0 ? 0 : dice.Between(first_state, last_state);
    contender.colour_state = kStates[state];
    contenders.push_back(contender);
  }
  return contenders;
}

}  // namespace

PairingField RandomField(Dice& dice, int players) {
  PairingField field(RandomContenders(dice, players), dice.Percent(80) ? 1 : dice.Below(3));
  const int met = dice.Below(90);
  for (int number = 1; number <= players; ++number) {
    for (int other = number + 1; other <= players; ++other) {
      if (dice.Percent(met)) field.AddMeeting(number, other);
    }
  }
  return field;
}

std::vector<std::vector<int>> RandomSplit(Dice& dice, int players) {
  std::vector<int> numbers(static_cast<std::size_t>(players));
  std::iota(numbers.begin(), numbers.end(), 1);
  for (std::size_t i = numbers.size(); i > 1; --i) {
    std::swap(numbers[i - 1], numbers[static_cast<std::size_t>(dice.Below(static_cast<int>(i)))]);
  }
  std::vector<std::vector<int>> split;
  const int largest = dice.Between(1, 6);
  int left_in_bracket = 0;
  for (const int number : numbers) {
    if (left_in_bracket == 0) {
      split.emplace_back();
      left_in_bracket = dice.Between(1, largest);
    }
    split.back().push_back(number);
    --left_in_bracket;
  }
  return split;
}

RandomChain MakeRandomChain(Dice& dice) {
  const int players = dice.Percent(85) ? 2 * dice.Between(2, 8) : dice.Between(3, 15);
  RandomChain chain{RandomField(dice, players), {}};
  const bool by_hand = dice.Percent(50);
  chain.width = dice.Below(7);
  chain.mode = dice.Between(1, 3);
  if (by_hand) chain.by_hand = RandomSplit(dice, players);
  return chain;
}

RandomTourney::RandomTourney(Dice& dice, int players, int rounds, int sub_rounds)
    : dice_(dice),
      rounds_(rounds),
      sub_rounds_(sub_rounds),
      points_(static_cast<std::size_t>(players), 0),
      colour_states_(points_.size(), kNoColourWish),
      histories_(points_.size()) {}

PairingField RandomTourney::Field() const {
  std::vector<Contender> contenders(points_.size());
  for (std::size_t i = 0; i < contenders.size(); ++i) {
    contenders[i].points = points_[i];
    contenders[i].colour_state = round_ == rounds_ ? int{kNoColourWish} : colour_states_[i];
  }
  PairingField field(std::move(contenders), sub_rounds_);
  for (const auto& [white, black] : met_)
    field.AddMeeting(white, black);
  return field;
}

void RandomTourney::Play(const std::vector<std::pair<int, int>>& pairs) {
  for (auto [white, black] : pairs) {
    for (int sub_round = 1; sub_round <= sub_rounds_; ++sub_round) {
      PlayGame(white, black);
      std::swap(white, black);
    }
  }
  ++round_;
}

void RandomTourney::PlayGame(int white, int black) {
  Count(white, true);
  Count(black, false);
  // A game that is not played, which happens rarely, forbids no rematch.
  if (dice_.Percent(1)) return;
  met_.emplace_back(white, black);
  // Players with a low number are stronger. A forfeit or a game that both lose is READY as well.
  const int luck = dice_.Below(2 * Players()) - Players() + black - white;
  const auto first = PairingField::SeatOf(white);
  const auto second = PairingField::SeatOf(black);
  if (dice_.Percent(2)) return;
  if (dice_.Percent(25)) {
    points_[first] += 2;
    points_[second] += 2;
  } else {
    points_[luck > 0 ? first : second] += 4;
  }
}

void RandomTourney::Count(int number, bool as_white) {
  History& history = histories_[PairingField::SeatOf(number)];
  ++(as_white ? history.white : history.black);
  history.last_was_white = as_white;
  colour_states_[PairingField::SeatOf(number)] =
      round_ == rounds_ ? int{kNoColourWish} : ColourState(history);
}

int RandomTourney::ColourState(const History& history) const {
  const int more_white = history.white - history.black;
  if (more_white == 0) return history.last_was_white ? kWeakBlack : kWeakWhite;
  if (more_white > 0) return more_white == 1 ? kMediumBlack : kMustHaveBlack;
  return more_white == -1 ? kMediumWhite : kMustHaveWhite;
}

}  // namespace tarvendo
