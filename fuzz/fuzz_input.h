#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace tarvendo {

/// The bytes that the fuzzer has thought of.
inline std::string FuzzText(const std::uint8_t* data, std::size_t size) {
  return std::string(reinterpret_cast<const char*>(data), size);
}

/// Stops the fuzzer when what must hold does not.
inline void Demand(bool holds) {
  if (!holds) std::abort();
}

}  // namespace tarvendo
