// The notation in which the tables of complex plans are written.
#pragma once

#include "number/modular.hpp"
#include "plan.hpp"

#include <utility>

namespace tfmgen::plan {

// Composites by the lengths of their factors; `of` is the plan of a length as a factor of another.
template <PlanPtr of(int length)>
struct Notation {
  static PlanPtr gt(int first, int second) { return goodThomas(of(first), of(second)); }
  static PlanPtr gt(int first, int second, int third) { return goodThomas(of(first), of(second), of(third)); }

  static PlanPtr ct(PlanPtr first, PlanPtr second) { return cooleyTukey(std::move(first), std::move(second)); }
  static PlanPtr ct(int first, int second) { return ct(of(first), of(second)); }

  // A prime by the plan of the length below it, forth and back.
  static PlanPtr prime(int p) { return rader(p, number::primitiveRoot(p), of(p - 1), of(p - 1)); }
};

} // namespace tfmgen::plan
