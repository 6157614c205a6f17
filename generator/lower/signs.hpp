#pragma once

#include "kernel.hpp"

namespace tfmgen::lower {

// The same kernel without signed references. A minus goes into the next sum, into a constant or into the order of a
// difference; what is left before a lane move or a store, where no arithmetic takes it, becomes a negation.
Kernel withSettledSigns(const Kernel& kernel);

} // namespace tfmgen::lower
