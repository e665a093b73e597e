#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <utility>

namespace tarvendo {

/// A line at the bottom of the terminal that standard error goes to, drawn anew in its place. What
/// else is written to that terminal goes through Above, so that neither tears the other. Any thread
/// may call it.
class StatusLine {
 public:
  /// `write` puts a text on the terminal.
  explicit StatusLine(std::function<void(const std::string&)> write) : write_(std::move(write)) {}

  /// Draws the line in place of the one before, cut to what fits into `columns`, which are at
  /// least 1. Text that stands in the cursor's line stays: the line goes below it.
  void Draw(const std::string& text, int columns);

  /// Takes the line away, unless somebody is writing at this moment: it is called at the end, when
  /// a thread that has died in a fault may never come to the end of its writing.
  void Clear();

  /// Calls `write_text`, which puts `text` on the terminal, with the line taken away meanwhile.
  /// Behind a text that ends its line, or with the prompt, it is drawn again; otherwise more of
  /// that line is to come, and the next Draw does it.
  void Above(const std::string& text, const std::function<void()>& write_text);

 private:
  void Erase();
  void Put();

  std::function<void(const std::string&)> write_;
  std::mutex mutex_;               ///< guards what follows
  std::string line_;               ///< the one to be shown, cut; empty when there is none
  std::size_t shown_ = 0;          ///< how many columns of it are on the terminal
  bool is_cursor_behind_ = false;  ///< text of others stands in the cursor's line
};

}  // namespace tarvendo
