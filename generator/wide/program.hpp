// Instructions on registers of complex elements.
#pragma once

#include "graph.hpp"

namespace tfmgen::wide {

struct Instruction {
  enum class Op {
    load,     // elements of the source by position; -1: zero
    shuffle,  // elements of the operands, those of the second numbered behind those of the first; -1: any
    join,     // both operands, one behind the other
    half,     // the elements of one half of the operand: element 0 or the middle one says which
    swap,     // the parts of each element change places
    flip,     // the sign of the lanes with factor -1 changes
    add,      // left + right
    subtract, // left - right
    mixedSum, // left + factors * right with factors 1 and -1
    multiply, // factors * left
    scale,    // factors * the scale of the call * left with factors 1 and -1
    zero,     // all lanes 0
    store,    // left to elements of the destination by position; -1: nowhere
  };
  Op op;
  std::vector<int> operands; // the instructions that make them
  std::vector<int> elements;
  std::vector<Parts> factors;
  int width; // elements of the result; of a store, of what it takes
};

// In an order in which operands precede their users.
using Program = std::vector<Instruction>;

// Moves between registers are chosen here: those that an instruction does and, for a column of four registers, those
// that its neighbours share.
Program program(const Graph& graph);

// Swaps and changes of sign are counted as rotations; loads that take several accesses are not counted by them.
graph::Counts count(const Program& program);

} // namespace tfmgen::wide
