#include "console/progress_display.h"

#include <utility>

#include "console/outputs.h"

namespace tarvendo {

ProgressDisplay::ProgressDisplay(Clock& clock, Outputs& outputs, std::function<RunCounts()> count,
                                 std::function<int()> columns)
    : clock_(clock),
      outputs_(outputs),
      count_(std::move(count)),
      columns_(std::move(columns)),
      progress_(clock.Steady(), count_().ended_here) {}

std::chrono::milliseconds ProgressDisplay::Look() {
  const int columns = columns_();
  const bool is_first = std::exchange(is_first_, false);
  if (columns == 0 && is_first) return std::chrono::minutes(1);
  const std::string line = progress_.Line(count_(), clock_.Steady());
  if (columns == 0) {
    outputs_.ToError(line + "\n");
    return std::chrono::minutes(1);
  }
  outputs_.Status().Draw(line, columns);
  return std::chrono::seconds(1);
}

void ProgressDisplay::End() {
  outputs_.Status().Clear();
  outputs_.ToError(progress_.LastLine(count_(), clock_.Steady()) + "\n");
}

}  // namespace tarvendo
