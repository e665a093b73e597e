#include "runner/framed_text.h"

namespace tarvendo {

std::string Framed(const std::string& message) {
  const std::string stars(52, '*');
  return "\n" + stars + "\n" + message + stars + "\n> ";
}

std::string TextOfHeldFile(const std::string& file) {
  return Framed("Something is accessing '" + file + "',\ncan't run a game before it's free.\n");
}

}  // namespace tarvendo
