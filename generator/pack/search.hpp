#pragma once

#include "packing.hpp"

#include <cstdint>

namespace tfmgen::pack {

// Simulated annealing (Kirkpatrick, Gelatt and Vecchi, "Optimization by simulated annealing", 1983) of a packing that
// is good already: the temperature starts low, so that what the start has found is kept. Counted in moves, with whole
// numbers throughout, so that the result is the same on every machine.
struct SearchOptions {
  int moves = 0;
  int firstTemperature = 70; // in the unit of costs; geometric from here
  int lastTemperature = 13;
  std::uint64_t seed = 1;
};

struct Score {
  int work = 0; // operations and moves, in hundredths of an operation
  int path = 0; // cycles of the longest path
};

Score search(Packing& packing, const Program& program, const Dependences& dependences, const Machine& machine,
             const SearchOptions& options);

} // namespace tfmgen::pack
