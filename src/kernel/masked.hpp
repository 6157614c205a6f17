// The first lanes of a vector in memory: 32 bytes where AVX2 is compiled for, 64 where AVX-512 is. Elements behind the
// first `count` are neither read nor written, whatever they are.
#pragma once

#ifdef __AVX2__

#include "vector.hpp"

#include <immintrin.h>

namespace tfmgen {

// All bits of the first `count` lanes.
template <class V>
TFMGEN_INLINE inline __m256i firstLanes(int count) {
  using Numbers = Bits<V>;
  const auto numbers = withIndices<kLanesOf<V>>([](auto... lane) TFMGEN_INLINE { return Numbers{lane...}; });
  return reinterpret_cast<__m256i>(numbers < broadcast<Numbers>(count));
}

// The first `count` lanes from memory at any address, zeros in the others.
template <class V>
TFMGEN_INLINE inline V loadFirst(const Element<V>* from, int count) {
#ifdef __AVX512F__
  if constexpr (sizeof(V) == 64) {
    const unsigned mask = (1U << count) - 1;
    if constexpr (kLanesOf<V> == 16) {
      return _mm512_maskz_loadu_ps(static_cast<__mmask16>(mask), from);
    } else {
      return _mm512_maskz_loadu_pd(static_cast<__mmask8>(mask), from);
    }
  } else
#endif
      if constexpr (kLanesOf<V> == 8) {
    return _mm256_maskload_ps(from, firstLanes<V>(count));
  } else {
    return _mm256_maskload_pd(from, firstLanes<V>(count));
  }
}

// The first `count` lanes to memory at any address.
template <class V>
TFMGEN_INLINE inline void storeFirst(Element<V>* to, V v, int count) {
#ifdef __AVX512F__
  if constexpr (sizeof(V) == 64) {
    const unsigned mask = (1U << count) - 1;
    if constexpr (kLanesOf<V> == 16) {
      _mm512_mask_storeu_ps(to, static_cast<__mmask16>(mask), v);
    } else {
      _mm512_mask_storeu_pd(to, static_cast<__mmask8>(mask), v);
    }
  } else
#endif
      if constexpr (kLanesOf<V> == 8) {
    _mm256_maskstore_ps(to, firstLanes<V>(count), v);
  } else {
    _mm256_maskstore_pd(to, firstLanes<V>(count), v);
  }
}

} // namespace tfmgen

#endif
