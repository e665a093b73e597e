#pragma once

#include <vector>

namespace tarvendo {

class FileSystem;
class Tourney;

/// One scheduled meeting of a round robin, in 1-based participant numbers.
struct Pairing {
  int round = 0;
  int second = 0;  ///< has Black in the first sub-round
  int first = 0;   ///< has White in the first sub-round
};

/// The meetings of a round robin of so many participants: every pair once, everybody at most once a
/// round, and with an odd number everybody sits out one round. They come in the order of the pairs
/// (the lower number first), those with the last participant of an even field at the end.
///
/// Pair (i, j) meets in round i + j - 1, modulo the number of rounds: the standard circle tables
/// (R. Schurig, "Die Paarung der Theilnehmer eines Turniers", Deutsche Schachzeitung 41, 1886).
std::vector<Pairing> RoundRobinSchedule(int participants);

/// Replaces all games (and their files) by a round robin of the participants, whatever the
/// tourney's type, and sets Rounds. Prints "Creating Round Robin games...", a line for each game
/// and "ready.\n". Of more than 2000 participants none is made, which is said: then false, and
/// nothing has changed.
bool CreateRRGames(Tourney& tourney, FileSystem& files);

}  // namespace tarvendo
