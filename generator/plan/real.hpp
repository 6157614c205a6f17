// The plans of the real kernels, one row a length.
#pragma once

#include "plan.hpp"

namespace tfmgen::plan {

// All three are plans of the analysis of real samples. The forward kernel is that analysis; the Hartley kernel ends in
// another last layer; the inverse kernel is the analysis transposed, so that its stages pass backward from the
// spectrum to the samples.
struct RealPlans {
  PlanPtr forward;
  PlanPtr hartley;
  PlanPtr inverse;
};

// Lengths 2 .. 64.
const RealPlans& realPlans(int length);

} // namespace tfmgen::plan
