#include "platform/posix/child_end.h"

#include <sys/wait.h>

#include <cerrno>

namespace tarvendo {

bool HasEnded(pid_t child) {
  int status = 0;
  pid_t ended = 0;
  do {
    ended = waitpid(child, &status, WNOHANG);
  } while (ended < 0 && errno == EINTR);
  return ended != 0;  // Its end, or an error: there is no such child any more.
}

}  // namespace tarvendo
