#pragma once

#include <string>

#include "base/record_file.h"
#include "tourney/tourney.h"

namespace tarvendo {

/// The text of the tourney file but for its header line and its own name.
inline std::string ContentText(const Tourney& tourney) {
  RecordWriter writer;
  tourney.WriteRecord(writer, "");
  return writer.Text();
}

}  // namespace tarvendo
