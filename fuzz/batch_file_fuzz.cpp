// Any bytes as a batch file for the small batch reader.
#include "fuzz_input.h"
#include "fuzzers.h"
#include "platform/batch_plan.h"

namespace tarvendo {

void FuzzBatchFile(const std::uint8_t* data, std::size_t size) {
  for (const BatchStep& step : ParseBatch(FuzzText(data, size))) {
    Demand(!step.words.empty());
    Demand(!step.is_delete || step.words.size() == 1);
  }
}

}  // namespace tarvendo
