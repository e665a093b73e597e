#include "console/status_line.h"

#include <algorithm>

namespace tarvendo {

void StatusLine::Draw(const std::string& text, int columns) {
  const std::lock_guard guard(mutex_);
  Erase();
  // A terminal goes on to the next line when its last column is filled.
  line_ = text.substr(0, static_cast<std::size_t>(std::max(columns, 1)) - 1);
  Put();
}

void StatusLine::Clear() {
  const std::unique_lock guard(mutex_, std::try_to_lock);
  if (!guard.owns_lock()) return;
  Erase();
  line_.clear();
}

void StatusLine::Above(const std::string& text, const std::function<void()>& write_text) {
  if (text.empty()) return;
  const std::lock_guard guard(mutex_);
  Erase();
  write_text();
  is_cursor_behind_ = !text.ends_with('\n');
  if (!is_cursor_behind_ || text.ends_with("\n> ")) Put();
}

/// Blanks and returns are understood by every terminal.
void StatusLine::Erase() {
  if (shown_ == 0) return;
  std::string blanks(shown_ + 2, ' ');
  blanks.front() = blanks.back() = '\r';
  write_(blanks);
  shown_ = 0;
}

void StatusLine::Put() {
  if (line_.empty()) return;
  write_((is_cursor_behind_ ? "\n" : "") + line_);
  is_cursor_behind_ = false;
  shown_ = line_.size();
}

}  // namespace tarvendo
