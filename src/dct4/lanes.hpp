// The values that the kernels compute with: a scalar in the codelets, the lanes of a 128-bit vector in the stages.
#pragma once

#include "kernel/memory.hpp"

#include <emmintrin.h>

#include <cstddef>
#include <type_traits>

// Kernels are one straight line each, at every level of optimisation: all that they are made of is inlined.
#define TFMGEN_INLINE [[gnu::always_inline]] inline
#define TFMGEN_LAMBDA __attribute__((always_inline))

namespace tfmgen::dct4 {

// A sample in a caller's array, which may start at any address and may alias any other.
template <class T>
struct [[gnu::packed, gnu::may_alias]] Sample {
  T value;
};

template <class T>
TFMGEN_INLINE T loadSample(const T* from) {
  return reinterpret_cast<const Sample<T>*>(from)->value;
}

template <class T>
TFMGEN_INLINE void storeSample(T* to, T value) {
  reinterpret_cast<Sample<T>*>(to)->value = value;
}

// One 128-bit vector. Arithmetic runs lane by lane; lanes meet memory as scalars in gather and scatter, and as aligned
// vectors in load and store.
template <class T>
struct Lanes;

template <>
struct Lanes<float> {
  __m128 value;

  TFMGEN_INLINE static Lanes broadcast(float x) { return {__m128{x, x, x, x}}; }
  TFMGEN_INLINE static Lanes load(const float* from) { return {_mm_load_ps(from)}; }
  TFMGEN_INLINE void store(float* to) const { _mm_store_ps(to, value); }

  // Lane l from from[l * step].
  TFMGEN_INLINE static Lanes gather(const float* from, std::ptrdiff_t step) {
    const __m128 ab = pair(from, from + step);
    return {_mm_movelh_ps(ab, pair(from + 2 * step, from + 3 * step))};
  }

  // Lane l to to[l * step].
  TFMGEN_INLINE void scatter(float* to, std::ptrdiff_t step) const {
    storeSample(to, lane<0>());
    storeSample(to + step, lane<1>());
    storeSample(to + 2 * step, lane<2>());
    storeSample(to + 3 * step, lane<3>());
  }

  TFMGEN_INLINE friend Lanes operator+(Lanes a, Lanes b) { return {_mm_add_ps(a.value, b.value)}; }
  TFMGEN_INLINE friend Lanes operator-(Lanes a, Lanes b) { return {_mm_sub_ps(a.value, b.value)}; }
  TFMGEN_INLINE friend Lanes operator*(Lanes a, Lanes b) { return {_mm_mul_ps(a.value, b.value)}; }

private:
  TFMGEN_INLINE static __m128 pair(const float* a, const float* b) {
    const __m128 low = opaque(_mm_set_ss(loadSample(a)));
    return _mm_unpacklo_ps(low, _mm_set_ss(loadSample(b)));
  }

  template <int index>
  [[nodiscard]] TFMGEN_INLINE float lane() const {
    if constexpr (index == 0) {
      return _mm_cvtss_f32(value);
    } else {
      return _mm_cvtss_f32(_mm_castsi128_ps(opaque(_mm_shuffle_epi32(_mm_castps_si128(value), index))));
    }
  }
};

template <>
struct Lanes<double> {
  __m128d value;

  TFMGEN_INLINE static Lanes broadcast(double x) { return {__m128d{x, x}}; }
  TFMGEN_INLINE static Lanes load(const double* from) { return {_mm_load_pd(from)}; }
  TFMGEN_INLINE void store(double* to) const { _mm_store_pd(to, value); }

  TFMGEN_INLINE static Lanes gather(const double* from, std::ptrdiff_t step) {
    return {_mm_loadh_pd(opaque(_mm_set_sd(loadSample(from))), from + step)};
  }

  TFMGEN_INLINE void scatter(double* to, std::ptrdiff_t step) const {
    storeSample(to, value[0]);
    storeSample(to + step, opaque(value)[1]);
  }

  TFMGEN_INLINE friend Lanes operator+(Lanes a, Lanes b) { return {_mm_add_pd(a.value, b.value)}; }
  TFMGEN_INLINE friend Lanes operator-(Lanes a, Lanes b) { return {_mm_sub_pd(a.value, b.value)}; }
  TFMGEN_INLINE friend Lanes operator*(Lanes a, Lanes b) { return {_mm_mul_pd(a.value, b.value)}; }
};

// The sample type of a value type.
template <class V>
struct SampleOf {
  using Type = V;
};
template <class T>
struct SampleOf<Lanes<T>> {
  using Type = T;
};
template <class V>
using ValueSample = typename SampleOf<V>::Type;

// A sample in every lane of a value.
template <class V>
TFMGEN_INLINE V repeat(ValueSample<V> x) {
  if constexpr (std::is_same_v<V, ValueSample<V>>) {
    return x;
  } else {
    return V::broadcast(x);
  }
}

} // namespace tfmgen::dct4
