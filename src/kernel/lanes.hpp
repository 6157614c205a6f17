// Vectors of 128 bits and the ways they reach memory. Sums, differences and products of vectors are the operators of
// the language, lane by lane, each rounded once.
#pragma once

#include "memory.hpp"

#include <emmintrin.h>

#include <array>
#include <cstddef>

namespace tfmgen {

template <class Real>
struct Lanes;

template <>
struct Lanes<float> {
  using Vector [[gnu::vector_size(16)]] = float;
  static constexpr int width = 4;
  static constexpr int bits = 2; // index bits that lie inside a vector

  [[gnu::always_inline]] static Vector broadcast(float x) { return _mm_set1_ps(x); }

  [[gnu::always_inline]] static void transpose(std::array<Vector, 4>& rows) {
    const Vector low01 = _mm_unpacklo_ps(rows[0], rows[1]);
    const Vector high01 = _mm_unpackhi_ps(rows[0], rows[1]);
    const Vector low23 = _mm_unpacklo_ps(rows[2], rows[3]);
    const Vector high23 = _mm_unpackhi_ps(rows[2], rows[3]);
    rows[0] = _mm_movelh_ps(low01, low23);
    rows[1] = _mm_movehl_ps(low23, low01);
    rows[2] = _mm_movelh_ps(high01, high23);
    rows[3] = _mm_movehl_ps(high23, high01);
  }
};

template <>
struct Lanes<double> {
  using Vector [[gnu::vector_size(16)]] = double;
  static constexpr int width = 2;
  static constexpr int bits = 1;

  [[gnu::always_inline]] static Vector broadcast(double x) { return _mm_set1_pd(x); }

  [[gnu::always_inline]] static void transpose(std::array<Vector, 2>& rows) {
    const Vector low = _mm_unpacklo_pd(rows[0], rows[1]);
    rows[1] = _mm_unpackhi_pd(rows[0], rows[1]);
    rows[0] = low;
  }
};

// Memory at a multiple of 16 bytes: one access for each vector.
struct Aligned {
  [[gnu::always_inline]] static __m128 load(const float* from) { return opaque(_mm_load_ps(from)); }
  [[gnu::always_inline]] static __m128d load(const double* from) { return opaque(_mm_load_pd(from)); }
  [[gnu::always_inline]] static void store(float* to, __m128 v) { _mm_store_ps(to, v); }
  [[gnu::always_inline]] static void store(double* to, __m128d v) { _mm_store_pd(to, v); }
};

// Memory at any address: one unaligned access for four floats, one access for each double.
struct Unaligned {
  [[gnu::always_inline]] static __m128 load(const float* from) { return opaque(_mm_loadu_ps(from)); }
  [[gnu::always_inline]] static __m128d load(const double* from) {
    return opaque(_mm_loadh_pd(opaque(_mm_set_sd(loadElement(from))), from + 1));
  }
  [[gnu::always_inline]] static void store(float* to, __m128 v) { _mm_storeu_ps(to, v); }
  [[gnu::always_inline]] static void store(double* to, __m128d v) {
    storeElement(to, _mm_cvtsd_f64(v));
    separateStores();
    storeElement(to + 1, _mm_cvtsd_f64(_mm_unpackhi_pd(v, v)));
    separateStores();
  }
};

// As many consecutive vectors as a vector has lanes, transposed: vector i holds the elements whose index within their
// row of lanes is i.
template <class Access, class Real>
[[gnu::always_inline]] inline std::array<typename Lanes<Real>::Vector, Lanes<Real>::width>
loadTransposed(const Real* from) {
  constexpr int width = Lanes<Real>::width;
  std::array<typename Lanes<Real>::Vector, width> rows;
  for (std::size_t row = 0; row < width; ++row) {
    rows[row] = Access::load(from + row * width);
  }
  Lanes<Real>::transpose(rows);
  return rows;
}

// Two vectors of doubles that are loaded by their halves are transposed by the loads themselves, lower address first.
template <>
[[gnu::always_inline]] inline std::array<Lanes<double>::Vector, 2> loadTransposed<Unaligned>(const double* from) {
  const __m128d even = opaque(_mm_set_sd(loadElement(from)));
  const __m128d odd = opaque(_mm_set_sd(loadElement(from + 1)));
  return {opaque(_mm_loadh_pd(even, from + 2)), opaque(_mm_loadh_pd(odd, from + 3))};
}

} // namespace tfmgen
