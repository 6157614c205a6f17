// Real kernels as assignments: which operations share an expression.
//
// Constants are doubles and a variable has the sample type T, so that the C++ text of an assignment, T(expression), is
// the rule of rounding itself: with T = float an expression turns double at its first constant product, stays double to
// its end and is rounded once. What lies before the first product is rounded operation by operation.
#pragma once

#include "transform/real.hpp"

namespace tfmgen::lower {

enum class Transform { forward, inverse, hartley };

struct RealKernel {
  transform::RealKernel body;
  graph::NodeMap<bool> isPart; // whether a node stands within the expression of its one user, where it is not rounded
};

// In a forward kernel the scale joins the assignment of a result that ends in a constant product, so that both are
// rounded once. Elsewhere a result is an assignment of its own before it is scaled.
RealKernel assignments(transform::RealKernel kernel, Transform transform);

} // namespace tfmgen::lower
