#include "tourney/tourney.h"

#include <algorithm>

#include "base/log.h"
#include "tourney/colour_state.h"

namespace tarvendo {
namespace {

/// The number behind `number`; behind the largest one the count starts again at the smallest.
int NextNumber(int number) {
  return static_cast<int>(static_cast<unsigned>(number) + 1U);
}

/// Finds an element by its number: where it belongs, or, in a list whose numbers have gaps,
/// anywhere.
template <typename List>
auto FindByNumber(List& list, int number) -> decltype(list.data()) {
  const auto index = static_cast<std::size_t>(number) - 1;
  if (number >= 1 && index < list.size() && list[index].number == number) return &list[index];
  const auto found = std::find_if(list.begin(), list.end(),
                                  [&](const auto& element) { return element.number == number; });
  return found == list.end() ? nullptr : &*found;
}

/// The element of the list that `element` refers to.
template <typename Element>
Element& Own(std::vector<Element>& list, const Element& element) {
  return list[static_cast<std::size_t>(&element - list.data())];
}

int StateOf(const std::vector<Game>& games) {
  if (games.empty()) return 0;
  const auto all = [&](bool (Game::*is_so)() const) {
    return std::all_of(games.begin(), games.end(),
                       [&](const Game& game) { return (game.*is_so)(); });
  };
  if (!all(&Game::IsReady)) return 1;
  return all(&Game::IsFinished) ? 3 : 2;
}

}  // namespace

void Tourney::Reset() {
  TourneySettings fresh;
  fresh.pics_dir = settings_.pics_dir;
  fresh.winboard_path = settings_.winboard_path;
  fresh.save_debug_files = kSaveAutomatically;
  fresh.time_control = ParseTimeControl("0 5 0");
  fresh.computer = "It's a PC.";
  const auto settings = ChangeSettings();
  *settings = fresh;
  const auto state = ChangeState();
  *state = TourneyState();
  if (!games_.empty()) ChangeGames().clear();
  if (!participants_.empty()) ChangeParticipants().clear();
}

std::vector<Player>& Tourney::ChangeParticipants() {
  ++version_;
  return participants_;
}

Edit<Player> Tourney::Change(const Player& participant) {
  return {Own(participants_, participant), version_};
}

const Player* Tourney::FindParticipant(int number) const {
  return FindByNumber(participants_, number);
}

std::vector<Game>& Tourney::ChangeGames() {
  ++version_;
  index_.Forget();
  return games_;
}

Edit<Game> Tourney::Change(const Game& game) {
  index_.NoteChangeAt(static_cast<std::size_t>(&game - games_.data()));
  return {Own(games_, game), version_};
}

const Game* Tourney::GameAt(int index) const {
  const bool is_there = index >= 0 && static_cast<std::size_t>(index) < games_.size();
  return is_there ? &games_[static_cast<std::size_t>(index)] : nullptr;
}

void Tourney::AddGame(int white, int black, int game_round, int sub_round) {
  Player* white_player = FindByNumber(participants_, white);
  Player* black_player = FindByNumber(participants_, black);
  Game game;
  game.white = white;
  game.black = black;
  game.round = game_round;
  game.sub_round = sub_round;
  if (white_player != nullptr) game.white_player = white_player->texts.name;
  if (black_player != nullptr) game.black_player = black_player->texts.name;
  state_.last_game_number = NextNumber(state_.last_game_number);
  game.number = state_.last_game_number;
  Print("Adding game %2d %-12s - %2d %-12s\n", white, game.white_player.c_str(), black,
        game.black_player.c_str());
  const int index = static_cast<int>(games_.size());
  ChangeGames().push_back(std::move(game));
  state_.games_state = 1;
  for (Player* player : {white_player, black_player}) {
    if (player == nullptr) continue;
    player->games.push_back(index);
    if (!IsSwiss()) continue;
    player->colour_state = IsLastSwissRound() ? kNoColourWish : ColourWish(games_, *player);
  }
}

void Tourney::EraseGames(const std::vector<std::size_t>& indices) {
  std::vector<int> new_index(games_.size(), 0);
  for (const std::size_t index : indices)
    new_index[index] = -1;
  std::size_t kept = 0;
  for (std::size_t i = 0; i < games_.size(); ++i) {
    if (new_index[i] < 0) continue;
    new_index[i] = static_cast<int>(kept);
    if (kept != i) games_[kept] = std::move(games_[i]);
    ++kept;
  }
  ChangeGames().resize(kept);
  const auto is_gone = [&](int index) {
    return index < 0 || static_cast<std::size_t>(index) >= new_index.size() ||
           new_index[static_cast<std::size_t>(index)] < 0;
  };
  for (Player& player : participants_) {
    std::erase_if(player.games, is_gone);
    for (int& index : player.games)
      index = new_index[static_cast<std::size_t>(index)];
  }
  RecomputeGamesState();
}

void Tourney::EraseAllGames() {
  if (!games_.empty()) ChangeGames().clear();
  for (const Player& player : participants_) {
    if (!player.games.empty()) Change(player)->games.clear();
  }
  RecomputeGamesState();
}

void Tourney::RecomputeGamesState() {
  ChangeState()->games_state = StateOf(games_);
}

int EffectiveSubRounds(const Tourney& tourney) {
  return std::max(tourney.Settings().sub_rounds, 1);
}

}  // namespace tarvendo
