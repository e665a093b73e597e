#pragma once

#include <string>

namespace tarvendo {

class PlayerDatabase;

/// Whether the text begins as a list of engines in JSON does: with a "[".
bool IsEnginesJson(const std::string& text);

/// Adds the engines of such a list, the file engines.json of another tourney program, to the
/// database:
///
///     [{"name": "Stockfish", "command": "stockfish -x", "workingDirectory": "/tmp",
///       "protocol": "uci", "initStrings": ["setoption name Hash value 64"]}]
///
/// The first word of the command is the program, the rest its InitString. "uci" gives /fUCI and
/// /sUCI; initStrings give /firstOptions (UCI) or /firstInitString. What cannot be carried over is
/// named: "Not carried over of Stockfish: restart, variants.\n". To a player who is there already,
/// only options are added that it does not have. False, and nobody added, when the text is no such
/// list, with a line that tells why; `name` is that of the file.
bool ImportEnginesJson(const std::string& text, const std::string& name, PlayerDatabase& database);

}  // namespace tarvendo
