// Kernels for which the estimate of a packed one's time errs, as data.
#pragma once

#include "level.hpp"

namespace tfmgen::family {

enum class Kind { complex, forward, inverse, hartley };

// Whether a packed kernel was measured to take more time than the default library's, although the estimate says less.
bool isMeasuredSlower(Level level, Kind kind, int sampleBits, int length);

} // namespace tfmgen::family
