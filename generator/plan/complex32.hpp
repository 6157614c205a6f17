#pragma once

#include "plan.hpp"

namespace tfmgen::plan {

// The plan of a complex transform of 32-bit samples, length 2 .. 64. A register holds the same element of up to four
// inner transforms: a short first factor with many transforms side by side fills the lanes, and twiddles cost little
// where they work on four lanes at once.
PlanPtr complex32(int length);

} // namespace tfmgen::plan
