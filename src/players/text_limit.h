#pragma once

namespace tarvendo {

struct PlayerTexts;

/// Cuts what has no room in a line of a record, 254 characters beside the line feed, and prints
/// "%s of player '%s' cut to 254 characters.\n" for each text that was cut, in the order of the
/// player's full display: the field, and the name as it is then.
void CutToLines(PlayerTexts& texts);

}  // namespace tarvendo
