#pragma once

#include <string>
#include <string_view>

namespace tarvendo {

/// Whether the text is well-formed UTF-8 (no overlong forms, no surrogates).
bool IsUtf8(std::string_view text);

/// The text as UTF-8: one that is none is taken for ISO 8859-1. Characters that no text has (the
/// control characters but for tab and line feed) become U+FFFD, "replacement character", so that
/// what is made of it is well-formed in every format.
std::string ToUtf8(std::string_view text);

}  // namespace tarvendo
