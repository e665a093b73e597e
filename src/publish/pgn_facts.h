#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tarvendo {

/// What the record of a game tells beside its result.
struct PgnFacts {
  int number = 0;  ///< of the tag Number, by which the tourney's PGN file tells its games; 0: none
  std::string white;
  std::string black;
  std::string ending;          ///< the comment that tells how it ended: "White mates"; may be empty
  int plies = 0;               ///< half moves, the opening's included
  std::optional<int> seconds;  ///< how long it lasted
  std::string termination;     ///< the tag of that name, when it is there
};

/// Reads one game of a PGN file, from its first tag to its result. Bytes are taken as they are.
///
/// The duration is told by the tag GameDuration ("00:03:20"), or else is the sum of the times that
/// WinBoard or XBoard write behind the moves: "{+0.35/14 2.5}", "{-1.20/9 1:03}", or
/// "{[%emt 0:00:02]}". Comments of that kind tell no ending.
PgnFacts ReadPgnGame(std::string_view game);

/// Where the next game begins in the text of a PGN file, looked for behind its first line: a line
/// that begins with "[" behind a line that does not, outside comments, or an Event tag anywhere.
/// npos when there is none.
std::size_t NextPgnGame(std::string_view text);

/// The value for the tag Termination that the ending stands for: "normal", "time forfeit", "rules
/// infraction", "adjudication", "abandoned" or, for a game without a result, "unterminated". Empty
/// when the ending tells nothing known.
std::string TerminationOf(std::string_view ending, bool has_result);

}  // namespace tarvendo
