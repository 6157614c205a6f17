#pragma once

#include "graph.hpp"

#include <span>
#include <vector>

namespace tfmgen::graph {

// For each node, how many operands of needed nodes and outputs refer to it.
std::vector<int> countUses(const Graph& g, std::span<const Ref> outputs);

} // namespace tfmgen::graph
