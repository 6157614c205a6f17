// What the operations of one vector cost together: every lane goes through the steps that any of them needs.
#pragma once

#include "moves.hpp"

#include <array>

namespace tfmgen::pack {

// How the terms at one position of the sums differ from lane to lane.
struct TermShape {
  bool isMissing = false; // in some lane
  bool hasFactor = false; // other than +-1, or the sum before it changes its sign
  bool hasPlus = false;
  bool hasMinus = false;
};

struct VectorShape {
  int usedLanes = 0;
  int termCount = 0;
  std::array<TermShape, kMaximumTerms> terms; // as many as there are
  std::array<Pattern, kMaximumTerms> operands;
  bool isDouble = false; // of 32-bit samples: converted on the way in and out
  bool isScaled = false;
  // 32-bit samples in float, where a product by a power of two may stay within its sum.
  bool fusesProducts = false;

  [[nodiscard]] const TermShape& term(int k) const { return terms[static_cast<std::size_t>(k)]; }
  TermShape& term(int k) { return terms[static_cast<std::size_t>(k)]; }
  [[nodiscard]] const Pattern& operand(int k) const { return operands[static_cast<std::size_t>(k)]; }
  Pattern& operand(int k) { return operands[static_cast<std::size_t>(k)]; }
  // -a + b in all lanes, which is b - a, or mixed with a + b, which is b + (+-1) * a.
  [[nodiscard]] bool turnsAround() const;
};

VectorShape shapeOf(const Program& program, const Packing& packing, int vector);

struct ArithmeticCost {
  int cost = 0;
  std::array<int, kMaximumTerms> latency{}; // from the operand of a term to the end of the sums
  int afterwards = 0;                       // from there to the result
};

ArithmeticCost arithmeticCost(const VectorShape& shape, const Machine& machine);

} // namespace tfmgen::pack
