// Two registers as the halves of one of twice the size.
#pragma once

#include "graph.hpp"

namespace tfmgen::wide {

// The same arithmetic with equal operations on registers of four elements made one on eight, where operations of the
// same kind on neighbouring elements of the source are followed by users of the same kind, and stores to neighbouring
// elements of the destination preceded by values of the same kind. Others stay as they are.
Graph inPairs(const Graph& graph);

} // namespace tfmgen::wide
