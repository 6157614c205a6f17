// The DCT-IV of the lengths 2 to 32 as straight lines of arithmetic over any value type.
#pragma once

#include "odd_transform.hpp"

namespace tfmgen::dct4 {

// Rotation by an angle of which t is the tangent of the half and s the sine, as three shears: three multiplications for
// four, at the price of three dependent steps.
template <class V>
TFMGEN_INLINE inline Complex<V> rotateByShears(Complex<V> z, V t, V s) {
  const V a = z.re - t * z.im;
  const V b = z.im + s * a;
  return {a - t * b, b};
}

// Output c of row i of the transpose, which has changed the signs of the mirrored ones.
template <int N, int n, int c, int i>
constexpr int outputIndex() {
  constexpr int m = n * c + i;
  return m < N ? m : 2 * N - 1 - m;
}

template <class V, class In, class Out>
TFMGEN_INLINE inline void transformTwo(const In& in, const Out& out) {
  const Complex<V> root = unitRoot<V, 1, 8>();
  const V x0 = in(at<0>);
  const V x1 = in(at<1>);
  out(at<0>, root.re * x0 + root.im * x1);
  out(at<1>, root.im * x0 - root.re * x1);
}

template <class V, class In, class Out>
TFMGEN_INLINE inline void transformFour(const In& in, const Out& out) {
  using Sample = Element<V>;
  constexpr auto t0 = static_cast<Sample>(tanPi(7, 32));
  constexpr auto s0 = static_cast<Sample>(sinPi(7, 16));
  constexpr auto t1 = static_cast<Sample>(tanPi(5, 32));
  constexpr auto s1 = static_cast<Sample>(sinPi(5, 16));
  const Complex<V> outer{in(at<0>), in(at<3>)};
  const Complex<V> inner{in(at<1>), in(at<2>)};
  const Complex<V> z0 = rotateByShears<V>(outer, t0, s0);
  const Complex<V> z1 = rotateByShears<V>(inner, t1, s1);
  // The columns' twiddles are the complements of these angles: the parts are exchanged.
  const Complex<V> row[] = {{z0.im, z0.re}, {z1.im, z1.re}};
  oddTransposed<4, V>([&](auto j) TFMGEN_INLINE { return row[j]; },
                      [&](auto c, const V& value) TFMGEN_INLINE { out(at<outputIndex<4, 2, c, 0>()>, value); });
}

// f columns of n samples: the odd-frequency transform of every column, a rotation of each result, and the transpose of
// T(2f) for every row.
template <class V, int f, int n, class In, class Out>
TFMGEN_INLINE inline void transformColumns(const In& in, const Out& out) {
  constexpr int N = f * n;
  Complex<V> rows[n / 2][f];
  unroll<f>([&](auto j) TFMGEN_INLINE {
    const auto sample = [&](auto t) TFMGEN_INLINE {
      constexpr int m = 2 * f * t + j;
      return in(at<(m < N ? m : 2 * N - 1 - m)>);
    };
    oddTransform<n, V>(sample, [&](auto i, const Complex<V>& z) TFMGEN_INLINE { rows[i][j] = z; });
  });
  unroll<n / 2>([&](auto i) TFMGEN_INLINE {
    const auto rotated = [&](auto j) TFMGEN_INLINE {
      return rotate(rows[i][j], unitRoot<V, (2 * i + 1) * (2 * j + 1), 4 * N>());
    };
    oddTransposed<2 * f, V>(rotated,
                            [&](auto c, const V& value) TFMGEN_INLINE { out(at<outputIndex<N, n, c, i>()>, value); });
  });
}

// in(at<m>) gives sample m, out(at<m>, value) takes result m. All samples are asked for before the first result.
template <int N, class V, class In, class Out>
TFMGEN_INLINE inline void codeletKernel(const In& in, const Out& out) {
  if constexpr (N == 2) {
    transformTwo<V>(in, out);
  } else if constexpr (N == 4) {
    transformFour<V>(in, out);
  } else {
    constexpr int f = N == 16 ? 4 : 2;
    transformColumns<V, f, N / f>(in, out);
  }
}

} // namespace tfmgen::dct4
