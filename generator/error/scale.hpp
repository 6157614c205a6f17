// The factor of a call, as stored and as meant.
#pragma once

#include "number/quad.hpp"

namespace tfmgen::error {

struct Scale {
  const char* name;
  double stored;
  number::Quad exact;
};

inline constexpr Scale kUnscaled{"1", 1, 1};

Scale reciprocal(int length, int sampleBits);
Scale reciprocalRoot(int length, int sampleBits);

} // namespace tfmgen::error
