// A level of the instruction set as the packing sees it: how many lanes, and what things cost. All of it is data.
#pragma once

#include "level.hpp"

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

// How long a call takes, in hundredths of what an operation of the default library's kernel takes there, for each thing
// of a packed kernel and for each cycle of its longest path: least squares over what was measured on one processor at
// lengths 6 to 64, with more weight on those where both kernels take about as long.
struct Times {
  int operation;
  int move;
  int access;
  int cycle;
};

struct Machine {
  int lanes = 4; // units in a vector
  Costs costs;
  Latencies latencies;
  Times together; // calls one after the other
  Times awaited;  // each reads what the last one wrote
};

// For samples of so many bits, and units of one number or of a complex number's two parts.
Machine machine(Level level, int sampleBits, int numbersInUnit);

} // namespace tfmgen::pack
