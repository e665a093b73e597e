#pragma once

#include <string>
#include <vector>

namespace tarvendo {

class FileSystem;
class Player;
class Tourney;

/// Adds a copy of a player to the participants and prints "Player %s added to tourney.\n". False,
/// with "A player named '%s' already exists in tourney!\n", when a participant has exactly that
/// name.
bool AddPlayerToTourney(Tourney& tourney, const Player& player);

/// Adds, for every word of `group_words` in turn, the players of `database` of whose Group it is a
/// word (exact, case-sensitive). A player found twice is refused the second time, with the message
/// for that.
void AddGroups(Tourney& tourney, const std::vector<Player>& database,
               const std::string& group_words);

/// Adds every player of `database` in list order.
void AddAllPlayers(Tourney& tourney, const std::vector<Player>& database);

/// Prints the participant with that number in full, or, for 0, all of them under a headline. Prints
/// nothing for a number that nobody has.
void ShowParticipants(const Tourney& tourney, int number);

/// Prints every participant in full whose name begins with `prefix` (any case), or "Player named
/// '%s' not found.\n".
void ShowParticipantByName(const Tourney& tourney, const std::string& prefix);

/// The full display of a participant: its data and the list of its opponents, such as
/// "+W03(0) -B12(7) ": result, own colour, the opponent's number, the game's index in the list.
std::string ParticipantText(const Tourney& tourney, const Player& player);

/// The number of the participant that a command names: a first word of digits (but 0) is returned
/// as it is, whether or not anybody has it; other text gives the first participant whose name
/// begins with it (any case). 0, with "Can't find player %s.\n", when there is none.
int FindPlayer(const Tourney& tourney, const std::string& text);

/// Removes the participant with that number and all its games (with their files and messages);
/// those behind it move up by one number. False when nobody has the number. The batch files of
/// spooled games still carry the old participants: the caller spools them again.
bool RemoveParticipant(Tourney& tourney, FileSystem& files, int number);

}  // namespace tarvendo
