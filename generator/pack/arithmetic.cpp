#include "arithmetic.hpp"

#include <algorithm>
#include <cmath>

namespace tfmgen::pack {

namespace {

bool isOne(double factor) {
  return factor == 1 || factor == -1;
}

} // namespace

bool VectorShape::turnsAround() const {
  return termCount == 2 && !term(0).hasFactor && term(0).hasMinus && !term(1).hasFactor && !term(1).hasMinus &&
         !term(1).isMissing;
}

VectorShape shapeOf(const Program& program, const Packing& packing, int vector) {
  VectorShape shape;
  const Vector& v = packing.vectors[vector];
  bool isDouble = false;
  for (int lane = 0; lane < packing.lanes; ++lane) {
    const int value = v.at(lane);
    if (value == kEmpty) {
      continue;
    }
    const Operation& operation = program.operation(value);
    const int count = static_cast<int>(operation.terms.size());
    for (; shape.termCount < count; ++shape.termCount) {
      // Lanes before this one end before this term.
      shape.term(shape.termCount) = {};
      shape.operand(shape.termCount) = Pattern::empty();
      shape.term(shape.termCount).isMissing = shape.usedLanes > 0;
    }
    isDouble = isDouble || operation.isDouble;
    shape.isScaled = shape.isScaled || operation.isScaled;
    for (int k = 0; k < count; ++k) {
      const Term& term = termAt(program, packing, value, k);
      TermShape& position = shape.term(k);
      position.hasFactor = position.hasFactor || !isOne(term.factor) || term.negatesSum;
      position.hasPlus = position.hasPlus || term.factor > 0 || term.isRotated;
      position.hasMinus = position.hasMinus || term.factor < 0 || term.isRotated;
      shape.operand(k).at(lane) = {static_cast<std::int16_t>(term.value), term.isRotated};
    }
    for (int k = count; k < shape.termCount; ++k) {
      shape.term(k).isMissing = true;
    }
    ++shape.usedLanes;
  }
  shape.isDouble = isDouble;
  shape.fusesProducts = program.sampleBits == 32 && !isDouble;
  for (int k = 0; k < shape.termCount; ++k) {
    shape.operand(k).isDouble = isDouble;
  }
  return shape;
}

ArithmeticCost arithmeticCost(const VectorShape& shape, const Machine& machine) {
  const Costs& costs = machine.costs;
  const Latencies& latencies = machine.latencies;
  ArithmeticCost out;
  const bool turnsAround = shape.turnsAround();
  for (int k = shape.termCount - 1; k > 0; --k) {
    const TermShape& term = shape.term(k);
    const bool isMixed = (term.hasMinus && term.hasPlus) || (k == 1 && turnsAround && shape.term(0).hasPlus);
    const bool isFused = term.hasFactor ? shape.fusesProducts : isMixed;
    const bool hasProduct = term.hasFactor && !shape.fusesProducts;
    const int sum = isFused ? latencies.fusedSum : latencies.sum;
    out.cost += costs.operation + (hasProduct ? costs.operation : 0) + (hasProduct || isFused ? costs.constants : 0);
    out.latency[static_cast<std::size_t>(k)] = out.latency[0] + sum + (hasProduct ? latencies.product : 0);
    out.latency[0] += sum;
  }
  const TermShape& first = shape.term(0);
  if (first.hasFactor || (first.hasMinus && !turnsAround)) {
    out.cost += costs.operation + costs.constants;
    out.latency[0] += latencies.product;
  }
  out.cost += (shape.isDouble ? costs.conversion : 0) + (shape.isScaled ? costs.operation : 0);
  out.afterwards = (shape.isDouble ? latencies.conversion : 0) + (shape.isScaled ? latencies.product : 0);
  return out;
}

} // namespace tfmgen::pack
