#pragma once

namespace vantrel {

/// Makes the process an agent whatever started it: standard descriptors that are open, signals that arrive, one heap.
void setUpProcess();

}  // namespace vantrel
