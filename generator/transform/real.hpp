// The three transforms of real data as scalar graphs.
#pragma once

#include "graph/graph.hpp"
#include "plan/plan.hpp"

#include <vector>

namespace tfmgen::transform {

// A graph and what it is for. Half spectra are numbered R(0), R(1), I(1), R(2), I(2) and so on, without the imaginary
// parts that are zero; samples by their index.
struct RealKernel {
  graph::Graph graph;
  std::vector<graph::Ref> results; // times the scale of the call, in order; a negative one is to be negated
};

// X[k] = scale * sum over n of x[n] exp(-2 pi i n k / N), k = 0 .. N/2. Loads: samples. Results: half spectrum.
RealKernel forwardReal(const plan::Plan& plan);

// H[k] = scale * sum over n of x[n] (cos(2 pi n k / N) + sin(2 pi n k / N)). Loads and results: samples.
RealKernel hartley(const plan::Plan& plan);

// x[n] = scale * sum over k = 0 .. N-1 of X[k] exp(2 pi i n k / N), where the upper half of X mirrors the lower one.
// Loads: half spectrum. Results: samples. The plan is that of the analysis whose transpose is formed.
RealKernel inverseReal(const plan::Plan& plan);

// Operations of the kernel, with a subtraction for each result that is negated.
graph::Counts count(const RealKernel& kernel);

} // namespace tfmgen::transform
