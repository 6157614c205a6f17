// The plans of the real kernels, one row a length.
#pragma once

#include "plan.hpp"

#include <span>

namespace tfmgen::plan {

// All three are plans of the analysis of real samples. The forward kernel is that analysis; the Hartley kernel ends in
// another last layer; the inverse kernel is the analysis transposed, so that its stages pass backward from the
// spectrum to the samples.
struct RealPlans {
  PlanPtr forward;
  PlanPtr hartley;
  PlanPtr inverse;
};

inline constexpr int kShortest = 2;
inline constexpr int kLongest = 64;

// Lengths kShortest .. kLongest in order.
std::span<const RealPlans> realPlans();

} // namespace tfmgen::plan
