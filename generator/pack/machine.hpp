// A level of the instruction set as the packing sees it: how many lanes, and what things cost.
#pragma once

#include <array>

namespace tfmgen::pack {

constexpr int kMaximumLanes = 8; // of numbers in a vector

// In hundredths of an operation on a whole vector.
struct Costs {
  int operation = 100;
  int conversion = 150;  // between float and double, all lanes
  int constants = 40;    // a vector of different constants as an operand
  int permutation = 120; // one register with its lanes in another order
  int merge = 180;       // each further register
  int blend = 80;        // two registers, every lane in its place
  int pairMove = 70;     // one or two registers, no lane leaves its pair
  int cycle = 100;       // of the longest path
};

// Cycles until a result stands.
struct Latencies {
  int sum = 2;
  int product = 3;
  int fusedSum = 4;
  int conversion = 6;
  int move = 5;
  int pairMove = 2; // blends too
};

struct Machine {
  int lanes = 4; // units in a vector
  Costs costs;
  Latencies latencies;
};

} // namespace tfmgen::pack
