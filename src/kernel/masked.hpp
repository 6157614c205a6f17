// Some lanes of a vector in memory, where AVX2 is compiled for: as many first ones as are counted at run time, of 32
// bytes or with AVX-512 of 64, or lanes that are known when this is compiled. Elements in the other lanes are neither
// read nor written, whatever they are.
#pragma once

#ifdef __AVX2__

#include "access.hpp"

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
