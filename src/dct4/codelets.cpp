#include "codelets.hpp"

#include "odd_transform.hpp"

namespace tfmgen::dct4 {
namespace {

// Rotation by the angle phi of t = tan(phi/2) and s = sin(phi), as three shears: three multiplications for four, at the
// price of three dependent steps.
template <class T>
TFMGEN_INLINE Complex<T> rotateByShears(Complex<T> z, T t, T s) {
  const T a = z.re - t * z.im;
  const T b = z.im + s * a;
  return {a - t * b, b};
}

// Output c of row i, for the transpose that changes the sign of the second half of its outputs.
template <int N, int n, int c, int i>
constexpr int outputIndex() {
  constexpr int m = n * c + i;
  return m < N ? m : 2 * N - 1 - m;
}

template <class T>
TFMGEN_INLINE void transformTwo(const T* src, T* dst) {
  const Complex<T> root = unitRoot<T, 1, 8>();
  const T x0 = loadSample(src);
  const T x1 = loadSample(src + 1);
  storeSample(dst, root.re * x0 + root.im * x1);
  storeSample(dst + 1, root.im * x0 - root.re * x1);
}

template <class T>
TFMGEN_INLINE void transformFour(const T* src, T* dst) {
  constexpr auto t0 = static_cast<T>(tanPi(7, 32));
  constexpr auto s0 = static_cast<T>(sinPi(7, 16));
  constexpr auto t1 = static_cast<T>(tanPi(5, 32));
  constexpr auto s1 = static_cast<T>(sinPi(5, 16));
  const Complex<T> outer{loadSample(src), loadSample(src + 3)};
  const Complex<T> inner{loadSample(src + 1), loadSample(src + 2)};
  const Complex<T> z0 = rotateByShears(outer, t0, s0);
  const Complex<T> z1 = rotateByShears(inner, t1, s1);
  // The shears leave i times the conjugate of what the merge takes: its parts are exchanged.
  const Complex<T> rows[] = {{z0.im, z0.re}, {z1.im, z1.re}};
  oddTransposed<4, T>([&](auto j) TFMGEN_LAMBDA { return rows[j]; },
                      [&](auto c, T value) TFMGEN_LAMBDA { storeSample(dst + outputIndex<4, 2, c, 0>(), value); });
}

// f columns of n samples: an odd-frequency transform of every column, one rotation of each result, and the transpose of
// T(2f) for every row.
template <class T, int f, int n>
TFMGEN_INLINE void transformColumns(const T* src, T* dst) {
  constexpr int N = f * n;
  Complex<T> rows[n / 2][f];
  unroll<f>([&](auto j) TFMGEN_LAMBDA {
    const auto sample = [&](auto t) TFMGEN_LAMBDA {
      constexpr int m = 2 * f * t + j;
      return loadSample(src + (m < N ? m : 2 * N - 1 - m));
    };
    oddTransform<n, T>(sample, [&](auto i, const Complex<T>& z) TFMGEN_LAMBDA { rows[i][j] = z; });
  });
  unroll<n / 2>([&](auto i) TFMGEN_LAMBDA {
    const auto rotated = [&](auto j) TFMGEN_LAMBDA {
      return rotate(rows[i][j], unitRoot<T, (2 * i + 1) * (2 * j + 1), 4 * N>());
    };
    oddTransposed<2 * f, T>(
        rotated, [&](auto c, T value) TFMGEN_LAMBDA { storeSample(dst + outputIndex<N, n, c, i>(), value); });
  });
}

} // namespace

template <class T, int N>
TfmStatus codelet(const T* src, T* dst) {
  if constexpr (N == 2) {
    transformTwo(src, dst);
  } else if constexpr (N == 4) {
    transformFour(src, dst);
  } else {
    constexpr int f = N == 16 ? 4 : 2;
    transformColumns<T, f, N / f>(src, dst);
  }
  return tfmStsOk;
}

template TfmStatus codelet<Tfm32f, 2>(const Tfm32f*, Tfm32f*);
template TfmStatus codelet<Tfm32f, 4>(const Tfm32f*, Tfm32f*);
template TfmStatus codelet<Tfm32f, 8>(const Tfm32f*, Tfm32f*);
template TfmStatus codelet<Tfm32f, 16>(const Tfm32f*, Tfm32f*);
template TfmStatus codelet<Tfm32f, 32>(const Tfm32f*, Tfm32f*);
template TfmStatus codelet<Tfm64f, 2>(const Tfm64f*, Tfm64f*);
template TfmStatus codelet<Tfm64f, 4>(const Tfm64f*, Tfm64f*);
template TfmStatus codelet<Tfm64f, 8>(const Tfm64f*, Tfm64f*);
template TfmStatus codelet<Tfm64f, 16>(const Tfm64f*, Tfm64f*);
template TfmStatus codelet<Tfm64f, 32>(const Tfm64f*, Tfm64f*);

} // namespace tfmgen::dct4
