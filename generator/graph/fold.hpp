// Products of products.
#pragma once

#include "graph.hpp"

#include <span>
#include <vector>

namespace tfmgen::graph {

struct Folded {
  Graph graph;
  std::vector<Ref> outputs;
};

// c * (2 * x) as (2c) * x wherever the doubling has no other user: one product less, and the same bits.
Folded foldDoublings(const Graph& g, std::span<const Ref> outputs);

} // namespace tfmgen::graph
