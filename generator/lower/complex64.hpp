// One complex element a register, re and im in the two lanes.
//
// Both lanes are taken as real sequences at once, so that all constants are real. Only the last step joins them: with
// A and B the two halves of a bin, X[k] = A + i*B and X[n-k] = A - i*B, one rotation for each pair of outputs.
#pragma once

#include "kernel.hpp"
#include "plan/plan.hpp"
#include "transform/root_sign.hpp"

namespace tfmgen::lower {

Kernel complex64(const plan::Plan& plan, transform::RootSign sign);

} // namespace tfmgen::lower
