#include "base/scores.h"

#include <array>

namespace tarvendo {
namespace {

using Endings = std::array<const char*, 4>;

std::string WithEnding(QuarterPoints score, const Endings& endings) {
  return std::to_string(WholePoints(score)) + endings[static_cast<unsigned>(score) & 3U];
}

}  // namespace

std::string HalfPointText(QuarterPoints score) {
  return WithEnding(score, {".0", ".0", ".5", ".5"});
}

std::string QuarterPointText(QuarterPoints score) {
  return WithEnding(score, {".00", ".25", ".50", ".75"});
}

std::string BuchholzColumnText(QuarterPoints score) {
  return WithEnding(score, {".0", ".25", ".5", ".75"});
}

}  // namespace tarvendo
