// A packed kernel as straight-line work on vectors: loads, moves between lanes, arithmetic, stores.
#pragma once

#include "packing.hpp"

#include <array>
#include <vector>

namespace tfmgen::pack {

using LaneSet = unsigned; // bit i: lane i

enum class Action {
  load,     // elements from `element` on, in the lanes of `affected`
  move,     // lanes of left and right, by `lanes`
  widen,    // floats to doubles
  narrow,   // doubles to floats
  multiply, // left * factors
  add,      // left + right
  subtract, // left - right
  fusedSum, // left + factors * right, rounded once
  scale,    // left * the scale of the call
  negate,   // 0 - left
  clear,    // zero
  store,    // left to elements from `element` on, in the lanes of `affected`
};

// Arithmetic takes place in the affected lanes; the others keep what left has.
struct Instruction {
  Action action;
  bool isDouble = false; // of 32-bit samples: lanes of doubles
  int left = kEmpty;     // instructions
  int right = kEmpty;
  LaneSet affected = 0;
  int element = 0;
  std::array<int, kMaximumLanes> lanes{}; // a lane of left, or `lanes` + a lane of right, or kEmpty for anything
  std::array<double, kMaximumLanes> factors{};
};

struct Code {
  int sampleBits = 64;
  int lanes = 4; // numbers in a vector
  std::vector<Instruction> instructions;
};

// In the order of levels, all loads before the first store. The program is one of numbers, or of pairs, whose lanes
// become two.
Code codeOf(const Program& program, const Packing& packing);

struct CodeCounts {
  int operations = 0; // sums, products, fused sums, conversions
  int moves = 0;
  int accesses = 0;
};

CodeCounts count(const Code& code);

} // namespace tfmgen::pack
