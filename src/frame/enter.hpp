// What stands in front of every kernel: the alignment test, the pointer checks and the choice of the scale.
#pragma once

#include "kernel/inline.hpp"
#include "scale.hpp"
#include "tfmgen.h"

#include <cstdint>

namespace tfmgen {

// True when both arrays start at a multiple of 16. A null pointer counts as aligned: whether a pointer is null is
// decided later, by the body that this test chooses.
TFMGEN_INLINE inline bool bothAligned(const void* src, const void* dst) {
  return ((reinterpret_cast<std::uintptr_t>(src) | reinterpret_cast<std::uintptr_t>(dst)) & 15U) == 0;
}

// Checks the arguments and runs `body(scale)`. Neither array has been touched when the status is not tfmStsOk.
template <class Real, int N, Direction direction, class Body>
TFMGEN_INLINE inline TfmStatus enter(const void* src, const void* dst, std::int32_t flag, const Body& body) {
  if (src == nullptr || dst == nullptr) {
    return tfmStsNullPtr;
  }
  Real scale;
  if (!selectScale<Real, N, direction>(flag, scale)) {
    return tfmStsBadFlag;
  }
  body(scale);
  return tfmStsOk;
}

} // namespace tfmgen
