#pragma once

#include "pairing/pairing_field.h"

namespace tarvendo {

class Tourney;

/// The field of the tourney's current round. Who has met whom is read from the histories, once: two
/// with a READY game between them, in either colour. In the last round of a Swiss tourney nobody
/// has a wish for a colour. The standings must have been computed.
PairingField MakePairingField(const Tourney& tourney);

}  // namespace tarvendo
