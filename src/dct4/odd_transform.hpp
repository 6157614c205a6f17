// The odd-frequency transform of a real sequence, T(n), and its transpose.
//
// T(n) takes g(0) .. g(n-1) to C(i) + i S(i) = sum over t of g(t) e(pi (2i+1) t / n), i = 0 .. n/2-1: n real numbers to
// n/2 complex ones. A row from n/2 on is the conjugate of row n-1-i, which the last butterflies use. In a DCT-IV the
// second half of each sequence stands in the mirror image of the input, with its sign changed; T takes those samples as
// they stand and keeps the sign in its own additions.
#pragma once

#include "butterfly.hpp"
#include "merge_order.hpp"

namespace tfmgen::dct4 {

// T(n) is built of `radix` transforms of length n / radix.
constexpr int oddRadix(int n) {
  return n == 8 || n == 32 ? 2 : 4;
}

// in(at<t>) gives sample t, for t >= n/2 that is minus g(t); out(at<i>, value) takes row i.
template <int n, class V, class In, class Out>
TFMGEN_INLINE inline void oddTransform(const In& in, const Out& out) {
  if constexpr (n == 2) {
    out(at<0>, Complex<V>{in(at<0>), broadcast<V>(0) - in(at<1>)});
  } else if constexpr (n == 4) {
    const V r = unitRoot<V, 1, 4>().re;
    const V g1 = in(at<1>);
    const V g3 = in(at<3>);
    const V a = (g1 + g3) * r;
    const V b = (g1 - g3) * r;
    const V g0 = in(at<0>);
    const V g2 = in(at<2>);
    out(at<0>, Complex<V>{g0 + a, b - g2});
    out(at<1>, Complex<V>{g0 - a, b + g2});
  } else {
    constexpr int radix = oddRadix(n);
    constexpr int length = n / radix;
    Complex<V> part[radix][length / 2];
    unroll<radix>([&](auto s) TFMGEN_INLINE {
      oddTransform<length, V>([&](auto u) TFMGEN_INLINE { return in(at<radix * u + s>); },
                              [&](auto i, const Complex<V>& z) TFMGEN_INLINE { part[s][i] = z; });
    });
    unroll<length / 2>([&](auto i) TFMGEN_INLINE {
      const auto rotated = [&](auto s) TFMGEN_INLINE {
        if constexpr (s == 0) {
          return part[s][i];
        } else {
          return rotate(part[s][i], unitRoot<V, s*(2 * i + 1), n>());
        }
      };
      shortTransform<radix, Conjugate::secondHalfOut>(rotated, [&](auto l, const Complex<V>& z) TFMGEN_INLINE {
        constexpr int row = i + l * length;
        out(at<(2 * row < n ? row : n - 1 - row)>, z);
      });
    });
  }
}

// The row that the first level of the transposed T(n) takes at step q. At n = 64 rows follow in the order of the merge
// table.
template <int n>
constexpr int firstLevelRow(int q) {
  if (n != 64) {
    return q;
  }
  const int column = mergeColumn(32, 4 * q);
  return column < 8 ? column : 15 - column;
}

// h(c) = Re sum over i of z(i) e(pi (2i+1) c / n), c = 0 .. n-1: the flow graph of T(n) run backward, rotations first
// and the products by cos(pi/4) last. in(at<i>) gives z(i), i < n/2, asked for once; out(at<c>, value) takes h(c) for c
// < n/2 and minus h(c) from there on.
template <int n, class V, class In, class Out>
TFMGEN_INLINE inline void oddTransposed(const In& in, const Out& out) {
  if constexpr (n == 2) {
    const Complex<V> z = in(at<0>);
    out(at<0>, z.re);
    out(at<1>, z.im);
  } else if constexpr (n == 4) {
    const V r = unitRoot<V, 1, 4>().re;
    const Complex<V> z0 = in(at<0>);
    const Complex<V> z1 = in(at<1>);
    out(at<0>, z0.re + z1.re);
    out(at<2>, z0.im - z1.im);
    const V u = (z0.re - z1.re) * r;
    const V v = (z0.im + z1.im) * r;
    out(at<1>, u - v);
    out(at<3>, u + v);
  } else {
    constexpr int radix = oddRadix(n);
    constexpr int length = n / radix;
    Complex<V> part[radix][length / 2];
    unroll<length / 2>([&](auto q) TFMGEN_INLINE {
      constexpr int i = firstLevelRow<n>(q);
      const auto row = [&](auto l) TFMGEN_INLINE {
        constexpr int index = i + l * length;
        return in(at<(2 * index < n ? index : n - 1 - index)>);
      };
      shortTransform<radix, Conjugate::secondHalfIn>(row, [&](auto s, const Complex<V>& z) TFMGEN_INLINE {
        if constexpr (s == 0) {
          part[s][i] = z;
        } else {
          part[s][i] = rotate(z, unitRoot<V, s*(2 * i + 1), n>());
        }
      });
    });
    unroll<radix>([&](auto s) TFMGEN_INLINE {
      oddTransposed<length, V>([&](auto i) TFMGEN_INLINE { return part[s][i]; },
                               [&](auto u, const V& value) TFMGEN_INLINE { out(at<radix * u + s>, value); });
    });
  }
}

} // namespace tfmgen::dct4
