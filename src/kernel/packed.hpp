// What packed kernels need beside vectors: work in some lanes only, and accesses that touch nothing but their lanes, on
// processors with AVX2.
#pragma once

#ifdef __AVX2__

#include "access.hpp"
#include "fused_sum.hpp"

#include <immintrin.h>

namespace tfmgen {

// The lanes of a, but of b where `lanes` has a bit.
template <unsigned lanes, class V>
TFMGEN_INLINE inline V select(V a, V b) {
  return withIndices<kLanesOf<V>>(
      [&](auto... i) TFMGEN_INLINE { return shuffle<((lanes >> i & 1U) != 0 ? kLanesOf<V> + i : int{i})...>(a, b); });
}

// All bits in the lanes of `lanes`.
template <class V, unsigned lanes>
TFMGEN_INLINE inline Bits<V> laneMask() {
  return withIndices<kLanesOf<V>>([](auto... i)
                                      TFMGEN_INLINE { return Bits<V>{((lanes >> i & 1U) != 0 ? -1 : 0)...}; });
}

// The elements of `lanes`, at any address; the others are not touched.
template <class V, unsigned lanes>
TFMGEN_INLINE inline V loadLanes(const Element<V>* from) {
  if constexpr (sizeof(V) == 64) {
#ifdef __AVX512F__
    return bitCast<V>(_mm512_maskz_loadu_pd(lanes, from));
#endif
  } else if constexpr (sizeof(V) == 32) {
    return _mm256_maskload_pd(from, bitCast<__m256i>(laneMask<V, lanes>()));
  } else {
    return _mm_maskload_ps(from, bitCast<__m128i>(laneMask<V, lanes>()));
  }
}

// The first elements.
template <unsigned lanes, class V>
TFMGEN_INLINE inline void storeLanes(Element<V>* to, V v) {
  static_assert((lanes & (lanes + 1)) == 0, "lanes from the first on");
#ifdef __AVX512VL__
  if constexpr (sizeof(V) == 64) {
    _mm512_mask_storeu_pd(to, lanes, v);
  } else if constexpr (sizeof(V) == 32) {
    _mm256_mask_storeu_pd(to, lanes, v);
  } else {
    _mm_mask_storeu_ps(to, lanes, v);
  }
#else
  // Masked stores of AVX2 are slow on some processors, so halves and single elements.
  const auto half = lowHalf(v);
  if constexpr (lanes >= 3) {
    __builtin_memcpy(to, &half, sizeof half);
  } else {
    storeElement(to, v[0]);
  }
  if constexpr (lanes == 7) {
    storeElement(to + 2, v[2]);
  }
#endif
}

} // namespace tfmgen

#endif
