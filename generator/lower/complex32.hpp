// Complex kernels of 32-bit samples: real and imaginary parts in registers of their own, four transforms side by side.
#pragma once

#include "kernel.hpp"
#include "plan/plan.hpp"
#include "transform/root_sign.hpp"

namespace tfmgen::lower {

// Lengths from 6 on.
Kernel complex32(const plan::Plan& plan, transform::RootSign sign);

} // namespace tfmgen::lower
