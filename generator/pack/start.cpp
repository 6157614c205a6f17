#include "start.hpp"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace tfmgen::pack {

namespace {

// Operations of one kind go through the same steps.
struct Kind {
  bool isDouble;
  std::size_t terms;
  bool hasFactor;
  bool isDifference;
  // clang-tidy 14 takes the zero that comparisons are rewritten with for a pointer.
  auto operator<=>(const Kind&) const = default; // NOLINT(modernize-use-nullptr, readability-implicit-bool-conversion)
};

Kind kindOf(const Operation& operation) {
  const bool hasFactor = std::ranges::any_of(operation.terms, [](const Term& t) { return std::abs(t.factor) != 1; });
  const bool isDifference =
      operation.terms.size() == 2 && !hasFactor && operation.terms[0].factor * operation.terms[1].factor < 0;
  return {operation.isDouble, operation.terms.size(), hasFactor, isDifference};
}

// Where a value is before the next level: vectors of memory, then registers.
std::pair<int, int> position(const Program& program, const Packing& packing, int value) {
  constexpr int kBehindMemory = 1000;
  if (program.isLoad(value)) {
    return {program.loads[value] / packing.lanes, program.loads[value] % packing.lanes};
  }
  return {kBehindMemory + packing.places[value].vector, packing.places[value].lane};
}

struct Candidate {
  Kind kind;
  std::vector<int> registers; // of the operands
  std::vector<int> lanes;
  int value;
  auto operator<=>(const Candidate&) const = default; // NOLINT(modernize-use-nullptr): as above
};

Candidate candidate(const Program& program, const Packing& packing, int value) {
  std::vector<std::pair<int, int>> positions;
  for (const Term& term : program.operation(value).terms) {
    positions.push_back(position(program, packing, term.value));
  }
  std::ranges::sort(positions);
  Candidate out{kindOf(program.operation(value)), {}, {}, value};
  for (const auto& [reg, lane] : positions) {
    out.registers.push_back(reg);
    out.lanes.push_back(lane);
  }
  return out;
}

} // namespace

Packing greedyStart(const Program& program, const Dependences& dependences, const Machine& machine) {
  Packing packing(program, machine.lanes);
  for (int level = 0; level < dependences.levels; ++level) {
    std::vector<Candidate> candidates;
    for (int value = program.loads.size(); value < program.valueCount(); ++value) {
      if (dependences.depth[value] == level) {
        candidates.push_back(candidate(program, packing, value));
      }
    }
    std::ranges::sort(candidates);
    int free = 0;
    int vector = kEmpty;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
      if (free == 0 || candidates[i].kind != candidates[i - 1].kind) {
        vector = packing.addVector(level);
        free = packing.lanes;
      }
      const int value = candidates[i].value;
      int lane = position(program, packing, program.operation(value).terms[0].value).second;
      while (packing.vectors[vector].at(lane) != kEmpty) {
        lane = (lane + 1) % packing.lanes;
      }
      packing.put(value, {vector, lane});
      --free;
    }
    packing.addVector(level);
  }
  return packing;
}

} // namespace tfmgen::pack
