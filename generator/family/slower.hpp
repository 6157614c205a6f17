// Routines for which the estimate of a packed kernel's time errs, as data.
#pragma once

#include "level.hpp"

#include <string>

namespace tfmgen::family {

// Whether a routine, named as in DFTFwd_RToCCS_15_32f, was measured to take more time packed than in the default
// library, although the estimate says less.
bool isMeasuredSlower(Level level, const std::string& routine);

} // namespace tfmgen::family
