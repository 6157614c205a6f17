#pragma once

#include "plan.hpp"

namespace tfmgen::plan {

// The plan of a complex transform of 64-bit samples, length 2 .. 64. Both lanes of a register are one element, so there
// is nothing to fill with parallel transforms: Good-Thomas wherever the length has coprime parts.
PlanPtr complex64(int length);

} // namespace tfmgen::plan
