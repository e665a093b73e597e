#include "pairing/pairing_field.h"

#include <utility>

#include "tourney/history.h"
#include "tourney/tourney.h"

namespace tarvendo {
namespace {

void AddMeetings(const Tourney& tourney, const Player& player, PairingField& field) {
  for (const int index : player.games) {
    const Game* game = tourney.GameAt(index);
    if (game == nullptr || !game->IsReady() || !game->IsPlayedBy(player.number)) continue;
    const int opponent = game->white == player.number ? game->black : game->white;
    if (tourney.FindParticipant(opponent) != nullptr) field.AddMeeting(player.number, opponent);
  }
}

}  // namespace

PairingField::PairingField(std::vector<Contender> contenders, int sub_rounds)
    : contenders_(std::move(contenders)),
      sub_rounds_(sub_rounds),
      opponents_(contenders_.size(), PlayerSet(contenders_.size())) {
  for (Seat seat = 0; seat < contenders_.size(); ++seat)
    opponents_[seat].Insert(seat);
}

void PairingField::AddMeeting(int number, int other_number) {
  opponents_[SeatOf(number)].Insert(SeatOf(other_number));
  opponents_[SeatOf(other_number)].Insert(SeatOf(number));
}

PairingField MakePairingField(const Tourney& tourney) {
  const bool is_last_round = tourney.IsLastSwissRound();
  std::vector<Contender> contenders;
  for (const Player& player : tourney.Participants()) {
    Contender contender;
    contender.points = player.points;
    contender.has_game_in_round = HasGameInRound(tourney, player, tourney.State().round, false);
    contender.colour_state = is_last_round ? int{kNoColourWish} : player.colour_state;
    contenders.push_back(contender);
  }
  PairingField field(std::move(contenders), tourney.Settings().sub_rounds);
  for (const Player& player : tourney.Participants())
    AddMeetings(tourney, player, field);
  return field;
}

}  // namespace tarvendo
