#include "packing.hpp"

#include <algorithm>
#include <cmath>
#include <map>

namespace tfmgen::pack {

Dependences::Dependences(const Program& program)
    : users(program.valueCount()), outputs(program.valueCount()), depth(program.valueCount(), -1),
      twin(program.valueCount(), kEmpty) {
  std::map<std::vector<int>, std::vector<int>> sameOperands;
  for (int value = program.loads.size(); value < program.valueCount(); ++value) {
    std::vector<int> operands;
    for (const Term& term : program.operation(value).terms) {
      operands.push_back(term.value);
      depth[value] = std::max(depth[value], depth[term.value] + 1);
      if (users[term.value].empty() || users[term.value].back() != value) {
        users[term.value].push(value);
      }
    }
    levels = std::max(levels, depth[value] + 1);
    std::ranges::sort(operands);
    if (operands.size() > 1) {
      sameOperands[operands].push_back(value);
    }
  }
  for (const Output& output : program.outputs) {
    outputs[output.value].push(output.element);
  }
  for (const auto& [operands, values] : sameOperands) {
    for (std::size_t i = 0; values.size() > 1 && i < values.size(); ++i) {
      twin[values[i]] = values[(i + 1) % values.size()];
    }
  }
}

Packing::Packing(const Program& program, int laneCount)
    : lanes(laneCount), places(program.valueCount()), isExchanged(program.valueCount()) {}

int Packing::addVector(int level) {
  Vector empty{level, {}};
  empty.values.fill(kEmpty);
  return vectors.push(empty);
}

void Packing::put(int value, Place place) {
  vectors[place.vector].at(place.lane) = value;
  if (value != kEmpty) {
    places[value] = place;
  }
}

bool isCommutative(const Program& program, int value) {
  const Operation& operation = program.operation(value);
  const bool hasProductAtEnd =
      program.sampleBits == 32 && !operation.isDouble && std::abs(operation.terms.back().factor) != 1;
  return operation.terms.size() == 2 && !operation.terms[1].negatesSum && !hasProductAtEnd;
}

} // namespace tfmgen::pack
