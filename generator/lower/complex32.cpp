#include "complex32.hpp"

#include "split_memory.hpp"
#include "split_transform.hpp"

#include <bit>
#include <utility>

namespace tfmgen::lower {

namespace {

// Lanes run over adjacent elements where the subsequences of a plan have a stride, and over elements far apart where an
// index map scatters them.
Grouping groupingOf(const plan::Plan& plan) {
  const bool isAdjacent =
      std::holds_alternative<plan::CooleyTukey>(plan.form) || std::holds_alternative<plan::Chirp>(plan.form);
  return isAdjacent ? Grouping::pairs : Grouping::singles;
}

// Where the two halves of a spectrum have an odd length, their last and first bin meet in one pair.
int partedPair(const plan::Plan& plan) {
  const auto* form = std::get_if<plan::CooleyTukey>(&plan.form);
  const bool isHalved = form != nullptr && plan::length(*form->second) == 2;
  return isHalved && plan::length(*form->first) % 2 != 0 ? plan::length(*form->first) - 1 : -1;
}

// The second factor of a power of two, whose registers are pairs throughout; 0 for other plans.
int evenButterflies(const plan::Plan& plan) {
  const auto* form = std::get_if<plan::CooleyTukey>(&plan.form);
  const bool isPowerOfTwo = std::has_single_bit(static_cast<unsigned>(plan::length(plan)));
  return form != nullptr && isPowerOfTwo ? plan::length(*form->second) : 0;
}

// The outputs k2 of each outer transform in the order in which its last butterflies yield them: k2 and k2 + length/2
// together.
std::vector<Packed> byButterflies(std::span<const Packed> registers, int length) {
  const auto half = static_cast<std::size_t>(length) / 2;
  std::vector<Packed> out;
  for (; !registers.empty(); registers = registers.subspan(2 * half)) {
    for (std::size_t k2 = 0; k2 < half; ++k2) {
      out.push_back(registers[k2]);
      out.push_back(registers[k2 + half]);
    }
  }
  return out;
}

} // namespace

RealKernel complexScalars(const plan::Plan& plan, transform::RootSign sign) {
  transform::RealKernel kernel;
  graph::Graph& g = kernel.graph;
  transform::Values samples;
  for (int i = 0; i < plan::length(plan); ++i) {
    const Ref re = g.load(2 * i);
    samples.push_back({re, g.load(2 * i + 1)});
  }
  for (const Complex& bin : transformComplex(g, plan, samples, sign)) {
    kernel.results.push_back(g.scale(bin.re));
    kernel.results.push_back(g.scale(bin.im));
  }
  return assignments(std::move(kernel), Transform::inverse); // the scale is a step of its own
}

Kernel complex32(const plan::Plan& plan, transform::RootSign sign) {
  Kernel kernel;
  graph::Graph& g = kernel.graph;
  const int n = plan::length(plan);
  const Grouping grouping = groupingOf(plan);
  SplitLoads loads(kernel, n, grouping);
  SplitStores stores(kernel, grouping);
  const Source source = [&](std::span<const int> elements) { return loads.lanes(elements); };

  RaderBins out;
  if (const auto* rader = std::get_if<plan::Rader>(&plan.form)) {
    out = transformRader(g, *rader, source, loads.interleaved(0), sign);
  } else if (const auto* chirp = std::get_if<plan::Chirp>(&plan.form)) {
    out.bins = transformChirp(g, *chirp, source, sign);
  } else {
    out.bins = transformLanes(g, plan, source, sign);
  }
  kernel.lastStep = g.end();
  if (!out.first.isZero()) {
    stores.put(out.first, {0});
  }
  if (const int second = evenButterflies(plan); second != 0) {
    for (const Packed& bins : byButterflies(out.bins, second)) {
      stores.put(bins);
    }
    stores.finishAsPut();
  } else {
    for (const Packed& bins : out.bins) {
      stores.put(bins);
    }
    stores.finish(n, partedPair(plan));
  }
  return kernel;
}

} // namespace tfmgen::lower
