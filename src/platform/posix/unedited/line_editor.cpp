// Built where there is no libedit: lines are typed as the host lets one type them.
#include "platform/posix/line_editor.h"

namespace tarvendo {

std::unique_ptr<LineEditor> MakeLineEditor(EditorCalls /*calls*/) {
  return nullptr;
}

}  // namespace tarvendo
