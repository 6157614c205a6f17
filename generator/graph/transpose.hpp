// The transposed flow graph: a linear straight-line program run backward.
#pragma once

#include "graph.hpp"

namespace tfmgen::graph {

// Which of two contributions of opposite signs to a difference of the forward program leads: b - a and -(a - b) are not
// the same zero. The one with the plus leaves fewer signs behind; that of the first user goes by the order in which the
// forward program states its outputs. What flows into other operations begins with the plus in any case.
enum class Minuend { positive, firstUser };

// Let y = M x be what `forward` computes from its loads x (tag is position) for the outputs y. Appends to
// `g` the transposed program and returns transpose(M) * adjoints, one value for each load. Every product stays a
// product by the same constant; every value used k times becomes a sum of k terms. See Bellanger, Digital Processing of
// Signals, on transposition of flow graphs.
std::vector<Ref> transpose(Graph& g, const Graph& forward, std::span<const Ref> outputs, std::span<const Ref> adjoints,
                           Minuend minuend);

} // namespace tfmgen::graph
