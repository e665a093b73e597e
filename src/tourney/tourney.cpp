#include "tourney/tourney.h"

#include <algorithm>

#include "base/log.h"
#include "platform/files.h"
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
  const auto place = static_cast<std::size_t>(number) - 1;
  if (number >= 1 && place < list.size() && list[place].number == number) return &list[place];
  const auto found = std::find_if(list.begin(), list.end(),
                                  [&](const auto& element) { return element.number == number; });
  return found == list.end() ? nullptr : &*found;
}

}  // namespace

Tourney::Tourney(Host& host, std::string work_dir) : host_(host), work_dir_(std::move(work_dir)) {
  settings.report_path = settings.files_path;
  const std::string start_file = work_dir_ + "tourney.ini";
  if (host_.files.Exists(start_file)) Load(start_file);
}

bool Tourney::Reset() {
  TourneySettings fresh;
  fresh.pics_dir = settings.pics_dir;
  fresh.winboard_path = settings.winboard_path;
  fresh.save_file = settings.save_file;
  fresh.save_debug_files = kSaveAutomatically;
  fresh.time_control = ParseTimeControl("0 5 0");
  fresh.computer = "It's a PC.";
  settings = fresh;
  round = 1;
  games_state = 1;
  last_game_number = 0;
  games_.clear();
  participants_.clear();
  return true;
}

Player* Tourney::FindParticipant(int number) {
  return FindByNumber(participants_, number);
}

const Player* Tourney::FindParticipant(int number) const {
  return FindByNumber(participants_, number);
}

Game* Tourney::FindGame(int number) {
  const auto found = std::find_if(games_.begin(), games_.end(),
                                  [&](const Game& game) { return game.number == number; });
  return found == games_.end() ? nullptr : &*found;
}

const Game* Tourney::GameAt(int index) const {
  const auto place = static_cast<std::size_t>(index);
  return index >= 0 && place < games_.size() ? &games_[place] : nullptr;
}

void Tourney::AddGame(int white, int black, int game_round, int sub_round) {
  Player* white_player = FindParticipant(white);
  Player* black_player = FindParticipant(black);
  Game game;
  game.white = white;
  game.black = black;
  game.round = game_round;
  game.sub_round = sub_round;
  if (white_player != nullptr) game.white_player = white_player->texts.name;
  if (black_player != nullptr) game.black_player = black_player->texts.name;
  last_game_number = NextNumber(last_game_number);
  game.number = last_game_number;
  Print("Adding game %2d %-12s - %2d %-12s\n", white, game.white_player.c_str(), black,
        game.black_player.c_str());
  const int index = static_cast<int>(games_.size());
  games_.push_back(std::move(game));
  games_state = 1;
  for (Player* player : {white_player, black_player}) {
    if (player == nullptr) continue;
    player->games.push_back(index);
    UpdateColourState(*this, *player);
  }
}

void Tourney::EraseGames(const std::vector<std::size_t>& places) {
  std::vector<int> new_place(games_.size(), 0);
  for (const std::size_t place : places)
    new_place[place] = -1;
  std::size_t kept = 0;
  for (std::size_t i = 0; i < games_.size(); ++i) {
    if (new_place[i] < 0) continue;
    new_place[i] = static_cast<int>(kept);
    if (kept != i) games_[kept] = std::move(games_[i]);
    ++kept;
  }
  games_.resize(kept);
  const auto is_gone = [&](int index) {
    return index < 0 || static_cast<std::size_t>(index) >= new_place.size() ||
           new_place[static_cast<std::size_t>(index)] < 0;
  };
  for (Player& player : participants_) {
    std::erase_if(player.games, is_gone);
    for (int& index : player.games)
      index = new_place[static_cast<std::size_t>(index)];
  }
  RecomputeGamesState();
}

void Tourney::EraseAllGames() {
  games_.clear();
  for (Player& player : participants_)
    player.games.clear();
  RecomputeGamesState();
}

void Tourney::RecomputeGamesState() {
  if (games_.empty()) {
    games_state = 0;
  } else if (!std::all_of(games_.begin(), games_.end(),
                          [](const Game& game) { return game.IsReady(); })) {
    games_state = 1;
  } else {
    games_state = std::all_of(games_.begin(), games_.end(),
                              [](const Game& game) { return game.IsFinished(); })
                      ? 3
                      : 2;
  }
}

int EffectiveSubRounds(const Tourney& tourney) {
  return std::max(tourney.settings.sub_rounds, 1);
}

}  // namespace tarvendo
