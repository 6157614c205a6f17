// What packed kernels need beside vectors: work in some lanes only, on processors with AVX2.
#pragma once

#ifdef __AVX2__

#include "access.hpp"
#include "fused_sum.hpp"
#include "masked.hpp"

namespace tfmgen {

// The lanes of a, but of b where `lanes` has a bit.
template <unsigned lanes, class V>
TFMGEN_INLINE inline V select(V a, V b) {
  return withIndices<kLanesOf<V>>(
      [&](auto... i) TFMGEN_INLINE { return shuffle<((lanes >> i & 1U) != 0 ? kLanesOf<V> + i : int{i})...>(a, b); });
}

} // namespace tfmgen

#endif
