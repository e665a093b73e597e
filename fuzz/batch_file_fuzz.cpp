// Any bytes as a batch file for the small batch reader.
#include "fuzz_input.h"
#include "platform/batch_plan.h"

using namespace tarvendo;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  for (const BatchStep& step : ParseBatch(FuzzText(data, size))) {
    Demand(!step.words.empty());
    Demand(!step.is_delete || step.words.size() == 1);
  }
  return 0;
}
