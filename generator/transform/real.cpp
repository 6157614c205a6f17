#include "real.hpp"

#include "analysis.hpp"
#include "graph/fold.hpp"
#include "graph/transpose.hpp"

#include <algorithm>

namespace tfmgen::transform {

namespace {

Bins analysed(Graph& g, const plan::Plan& plan, EighthTurn eighth, long rootExponent = 1) {
  Samples samples;
  for (int n = 0; n < plan::length(plan); ++n) {
    samples.push_back(g.load(n));
  }
  Analysis analysis{g, DirectStyle::realSamples, eighth};
  return analyse(analysis, plan, samples, rootExponent);
}

Samples scaled(Graph& g, Samples values) {
  std::ranges::transform(values, values.begin(), [&g](Ref value) { return g.scale(value); });
  return values;
}

} // namespace

RealKernel forwardReal(const plan::Plan& plan) {
  Graph g;
  Samples values;
  for (const Bin& bin : analysed(g, plan, EighthTurn::productsFirst)) {
    values.push_back(bin.re);
    if (!bin.im.isZero()) {
      values.push_back(place(g, bin.im));
    }
  }
  values = scaled(g, values);
  return {std::move(g), std::move(values)};
}

// The sum of both parts of sum of x[n] exp(+2 pi i n k / N), so the sines enter with a plus.
RealKernel hartley(const plan::Plan& plan) {
  Graph g;
  const Bins bins = analysed(g, plan, EighthTurn::productsFirst, -1);
  Samples values;
  Samples mirrored; // downward from the last bin
  for (const Bin& bin : bins) {
    const Ref im = place(g, bin.im);
    if (im.isZero()) {
      values.push_back(bin.re);
    } else {
      values.push_back(g.add(bin.re, im));
      mirrored.push_back(g.subtract(bin.re, im));
    }
  }
  values.insert(values.end(), mirrored.rbegin(), mirrored.rend());
  values = scaled(g, values);
  return {std::move(g), std::move(values)};
}

// An interior bin stands for itself and its mirror, so it enters doubled. The imaginary part of the analysis has a
// minus in front of its sines, as the synthesis needs it.
RealKernel inverseReal(const plan::Plan& plan) {
  Graph forward;
  Graph g;
  std::vector<Ref> outputs;
  std::vector<Ref> adjoints;
  int element = 0;
  for (const Bin& bin : analysed(forward, plan, EighthTurn::sumsFirst)) {
    const Quad multiplicity = bin.im.isZero() ? 1 : 2;
    outputs.push_back(bin.re);
    adjoints.push_back(g.multiply(multiplicity, g.load(element++)));
    if (!bin.im.isZero()) {
      outputs.push_back(bin.im.value);
      adjoints.push_back(g.multiply(bin.im.factor, g.multiply(multiplicity, g.load(element++))));
    }
  }
  const Samples values = graph::transpose(g, forward, outputs, adjoints, graph::Minuend::firstUser);
  graph::Folded folded = graph::foldDoublings(g, values);
  Samples results = scaled(folded.graph, folded.outputs);
  return {std::move(folded.graph), std::move(results)};
}

graph::Counts count(const RealKernel& kernel) {
  graph::Counts counts = graph::count(kernel.graph, kernel.results);
  counts.additions += static_cast<int>(std::ranges::count_if(kernel.results, &Ref::isNegative));
  return counts;
}

} // namespace tfmgen::transform
