// Fused operations that round as separate ones would, on processors with FMA: wherever a product is exact, the sum
// alone is rounded, and a zero has the sign that the sum has.
#pragma once

#ifdef __FMA__

#include "vector.hpp"

#include <immintrin.h>

namespace tfmgen {

// a + factors * b, rounded once. It stands only where the product is exact, as by 1 and -1 for sums and differences in
// one vector.
TFMGEN_INLINE inline Vector<float> fusedSum(Vector<float> a, Vector<float> factors, Vector<float> b) {
  return _mm_fmadd_ps(factors, b, a);
}
TFMGEN_INLINE inline Vector<double> fusedSum(Vector<double> a, Vector<double> factors, Vector<double> b) {
  return _mm_fmadd_pd(factors, b, a);
}
TFMGEN_INLINE inline Vector<float, 32> fusedSum(Vector<float, 32> a, Vector<float, 32> factors, Vector<float, 32> b) {
  return _mm256_fmadd_ps(factors, b, a);
}
TFMGEN_INLINE inline Vector<double, 32> fusedSum(Vector<double, 32> a, Vector<double, 32> factors,
                                                 Vector<double, 32> b) {
  return _mm256_fmadd_pd(factors, b, a);
}
#ifdef __AVX512F__
TFMGEN_INLINE inline Vector<float, 64> fusedSum(Vector<float, 64> a, Vector<float, 64> factors, Vector<float, 64> b) {
  return _mm512_fmadd_ps(factors, b, a);
}
TFMGEN_INLINE inline Vector<double, 64> fusedSum(Vector<double, 64> a, Vector<double, 64> factors,
                                                 Vector<double, 64> b) {
  return _mm512_fmadd_pd(factors, b, a);
}
#endif

// a - b in even lanes, a + b in odd ones.
TFMGEN_INLINE inline Vector<float> subtractAdd(Vector<float> a, Vector<float> b) {
  return _mm_addsub_ps(a, b);
}
TFMGEN_INLINE inline Vector<double> subtractAdd(Vector<double> a, Vector<double> b) {
  return _mm_addsub_pd(a, b);
}
TFMGEN_INLINE inline Vector<float, 32> subtractAdd(Vector<float, 32> a, Vector<float, 32> b) {
  return _mm256_addsub_ps(a, b);
}
TFMGEN_INLINE inline Vector<double, 32> subtractAdd(Vector<double, 32> a, Vector<double, 32> b) {
  return _mm256_addsub_pd(a, b);
}
#ifdef __AVX512F__
TFMGEN_INLINE inline Vector<float, 64> subtractAdd(Vector<float, 64> a, Vector<float, 64> b) {
  return _mm512_fmaddsub_ps(a, broadcast<Vector<float, 64>>(1), b);
}
TFMGEN_INLINE inline Vector<double, 64> subtractAdd(Vector<double, 64> a, Vector<double, 64> b) {
  return _mm512_fmaddsub_pd(a, broadcast<Vector<double, 64>>(1), b);
}
#endif

// a + b in even lanes, a - b in odd ones.
TFMGEN_INLINE inline Vector<float> addSubtract(Vector<float> a, Vector<float> b) {
  return _mm_fmsubadd_ps(a, broadcast<Vector<float>>(1), b);
}
TFMGEN_INLINE inline Vector<double> addSubtract(Vector<double> a, Vector<double> b) {
  return _mm_fmsubadd_pd(a, broadcast<Vector<double>>(1), b);
}
TFMGEN_INLINE inline Vector<float, 32> addSubtract(Vector<float, 32> a, Vector<float, 32> b) {
  return _mm256_fmsubadd_ps(a, broadcast<Vector<float, 32>>(1), b);
}
TFMGEN_INLINE inline Vector<double, 32> addSubtract(Vector<double, 32> a, Vector<double, 32> b) {
  return _mm256_fmsubadd_pd(a, broadcast<Vector<double, 32>>(1), b);
}
#ifdef __AVX512F__
TFMGEN_INLINE inline Vector<float, 64> addSubtract(Vector<float, 64> a, Vector<float, 64> b) {
  return _mm512_fmsubadd_ps(a, broadcast<Vector<float, 64>>(1), b);
}
TFMGEN_INLINE inline Vector<double, 64> addSubtract(Vector<double, 64> a, Vector<double, 64> b) {
  return _mm512_fmsubadd_pd(a, broadcast<Vector<double, 64>>(1), b);
}
#endif

} // namespace tfmgen

#endif
