// Complex kernels of 32-bit samples: real and imaginary parts in registers of their own, four transforms side by side.
#pragma once

#include "kernel.hpp"
#include "plan/plan.hpp"
#include "real.hpp"
#include "transform/root_sign.hpp"

namespace tfmgen::lower {

// The parts of all elements one by one, constants in double: sample 2*n is the real part of element n, 2*n + 1 the
// imaginary part. For lengths that would leave most lanes empty.
RealKernel complexScalars(const plan::Plan& plan, transform::RootSign sign);

// Plans of two factors at least.
Kernel complex32(const plan::Plan& plan, transform::RootSign sign);

} // namespace tfmgen::lower
