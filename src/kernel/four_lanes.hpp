// What kernels on four lanes of floats need beside arithmetic: registers that hold two complex elements, reached by
// their halves, and moves between lanes.
#pragma once

#include "lanes.hpp"

namespace tfmgen {

// The 8 bytes of one complex element, at any address.
[[gnu::always_inline]] inline double loadPair(const float* from) {
  double pair;
  __builtin_memcpy(&pair, from, sizeof pair);
  return pair;
}

[[gnu::always_inline]] inline void storePair(float* to, double pair) {
  __builtin_memcpy(to, &pair, sizeof pair);
}

// One element in the lower half, zeros above.
[[gnu::always_inline]] inline __m128 loadLow(const float* from) {
  return _mm_castpd_ps(opaque(_mm_set_sd(loadPair(from))));
}

// Two elements by one access each.
[[gnu::always_inline]] inline __m128 loadHalves(const float* low, const float* high) {
  const __m128d lower = opaque(_mm_set_sd(loadPair(low)));
  return _mm_castpd_ps(opaque(_mm_unpacklo_pd(lower, _mm_set_sd(loadPair(high)))));
}

[[gnu::always_inline]] inline void storeLow(float* to, __m128 v) {
  storePair(to, _mm_cvtsd_f64(_mm_castps_pd(v)));
  separateStores();
}

[[gnu::always_inline]] inline void storeHalves(float* low, float* high, __m128 v) {
  const __m128d pairs = _mm_castps_pd(v);
  storePair(low, _mm_cvtsd_f64(pairs));
  separateStores();
  storePair(high, _mm_cvtsd_f64(_mm_unpackhi_pd(pairs, pairs)));
  separateStores();
}

// Two lanes of the left register, then two of the right.
template <int left0, int left1, int right0, int right1>
[[gnu::always_inline]] inline __m128 shuffle(__m128 left, __m128 right) {
  return _mm_shuffle_ps(left, right, _MM_SHUFFLE(right1, right0, left1, left0));
}

// Four lanes of one register: the instruction for whole numbers needs no copy of its operand.
template <int lane0, int lane1, int lane2, int lane3>
[[gnu::always_inline]] inline __m128 permute(__m128 v) {
  return _mm_castsi128_ps(_mm_shuffle_epi32(_mm_castps_si128(v), _MM_SHUFFLE(lane3, lane2, lane1, lane0)));
}

// The lower lanes of both registers in turn, or the upper ones.
[[gnu::always_inline]] inline __m128 unpackLow(__m128 left, __m128 right) {
  return _mm_unpacklo_ps(left, right);
}

[[gnu::always_inline]] inline __m128 unpackHigh(__m128 left, __m128 right) {
  return _mm_unpackhi_ps(left, right);
}

} // namespace tfmgen
