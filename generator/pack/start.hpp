#pragma once

#include "packing.hpp"

namespace tfmgen::pack {

// A packing made in one pass from the loads on, without search: in every level, operations of one kind whose operands
// lie together fill vectors one after the other, each in the lane of its first operand where that is free. Every level
// gets one more vector, empty, as room for the search.
Packing greedyStart(const Program& program, const Dependences& dependences, const Machine& machine);

} // namespace tfmgen::pack
