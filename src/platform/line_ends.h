#pragma once

#include <string>
#include <string_view>

namespace tarvendo {

/// Turns every CR LF of a text into LF, in place. A CR that stands alone stays.
void FoldLineEnds(std::string& text);

/// The text with every LF as CR LF, for the hosts that write lines so.
std::string WithCrLf(std::string_view text);

}  // namespace tarvendo
