#include "complex64.hpp"

#include "transform/analysis.hpp"

namespace tfmgen::lower {

using graph::Ref;

Kernel complex64(const plan::Plan& plan, transform::RootSign sign) {
  Kernel kernel;
  graph::Graph& g = kernel.graph;
  const int n = plan::length(plan);
  transform::Samples samples;
  for (int i = 0; i < n; ++i) {
    samples.push_back(g.load(i));
    kernel.loads.push_back({Access::Width::whole, i});
  }
  transform::Analysis analysis{g, transform::DirectStyle::complexSamples};
  const transform::Bins bins = transform::analyse(analysis, plan, samples);

  kernel.lastStep = g.end();
  const auto store = [&](Ref value, int element) {
    kernel.stores.push_back({g.scale(value), {Access::Width::whole, element}});
  };
  for (int k = 0; k <= n / 2; ++k) {
    const transform::Bin& bin = number::at(bins, k);
    if (2 * k % n == 0) {
      store(bin.re, k);
      continue;
    }
    // The analysis has the forward sign, im = -(sum of sines); the inverse takes the other.
    const Ref forward = g.rotate(transform::place(g, bin.im));
    const Ref rotated = sign == transform::RootSign::forward ? forward : -forward;
    store(g.add(bin.re, rotated), k);
    store(g.subtract(bin.re, rotated), n - k);
  }
  return kernel;
}

} // namespace tfmgen::lower
