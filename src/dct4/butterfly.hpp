// Rotations and short complex transforms over any value type: a scalar, or the lanes of a vector.
//
// Everything here is unrolled while it is compiled and inlined into one straight line, at any level of optimisation.
#pragma once

#include "constants.hpp"
#include "kernel/access.hpp"
#include "kernel/unroll.hpp"

namespace tfmgen::dct4 {

// An index known to the compiler, so that a functor can hand it on as a template argument.
template <int i>
inline constexpr Index<i> at{};

template <class V>
struct Complex {
  V re;
  V im;
};

// cos and sin of pi numerator / denominator as constants of the value type.
template <class V, int numerator, int denominator>
TFMGEN_INLINE inline Complex<V> unitRoot() {
  constexpr auto c = static_cast<Element<V>>(cosPi(numerator, denominator));
  constexpr auto s = static_cast<Element<V>>(sinPi(numerator, denominator));
  return {broadcast<V>(c), broadcast<V>(s)};
}

// z times a complex number of modulus 1: four multiplications, two additions.
template <class V>
TFMGEN_INLINE inline Complex<V> rotate(Complex<V> z, Complex<V> root) {
  return {z.re * root.re - z.im * root.im, z.re * root.im + z.im * root.re};
}

// Which of the numbers are conjugated on the way. A conjugate costs nothing: it exchanges an addition with a
// subtraction, or the operands of a subtraction.
enum class Conjugate {
  none,
  secondHalfIn,  // the second half of the inputs
  secondHalfOut, // the second half of the outputs
};

template <class V>
struct Pair {
  Complex<V> sum;
  Complex<V> difference;
};

// a + b and a - b.
template <Conjugate conjugate, class V>
TFMGEN_INLINE inline Pair<V> butterfly(Complex<V> a, Complex<V> b) {
  if constexpr (conjugate == Conjugate::secondHalfIn) {
    return {{a.re + b.re, a.im - b.im}, {a.re - b.re, a.im + b.im}};
  } else if constexpr (conjugate == Conjugate::secondHalfOut) {
    return {{a.re + b.re, a.im + b.im}, {a.re - b.re, b.im - a.im}};
  } else {
    return {{a.re + b.re, a.im + b.im}, {a.re - b.re, a.im - b.im}};
  }
}

// a + i b and a - i b.
template <Conjugate conjugate, class V>
TFMGEN_INLINE inline Pair<V> quarterButterfly(Complex<V> a, Complex<V> b) {
  static_assert(conjugate != Conjugate::secondHalfIn);
  if constexpr (conjugate == Conjugate::secondHalfOut) {
    return {{a.re - b.im, a.im + b.re}, {a.re + b.im, b.re - a.im}};
  } else {
    return {{a.re - b.im, a.im + b.re}, {a.re + b.im, a.im - b.re}};
  }
}

// z e(pi/4): the two products by cos(pi/4) come last.
template <class V>
TFMGEN_INLINE inline Complex<V> rotateEighth(Complex<V> z) {
  const V r = unitRoot<V, 1, 4>().re;
  return {(z.re - z.im) * r, (z.re + z.im) * r};
}

// The transform sum over k of e(2 pi k l / g) z(k), l = 0 .. g-1, of length g = 2, 4 or 8. in(at<k>) gives input k,
// asked for once and when it is needed; out(at<l>, value) takes result l.
template <int g, Conjugate conjugate, class In, class Out>
TFMGEN_INLINE inline void shortTransform(const In& in, const Out& out) {
  constexpr Conjugate first = conjugate == Conjugate::secondHalfIn ? conjugate : Conjugate::none;
  constexpr Conjugate last = conjugate == Conjugate::secondHalfOut ? conjugate : Conjugate::none;
  if constexpr (g == 2) {
    const auto z0 = in(at<0>);
    const auto result = butterfly<conjugate>(z0, in(at<1>));
    out(at<0>, result.sum);
    out(at<1>, result.difference);
  } else if constexpr (g == 4) {
    const auto z0 = in(at<0>);
    const auto even = butterfly<first>(z0, in(at<2>));
    const auto z1 = in(at<1>);
    const auto odd = butterfly<first>(z1, in(at<3>));
    const auto whole = butterfly<last>(even.sum, odd.sum);
    out(at<0>, whole.sum);
    out(at<2>, whole.difference);
    const auto quarter = quarterButterfly<last>(even.difference, odd.difference);
    out(at<1>, quarter.sum);
    out(at<3>, quarter.difference);
  } else {
    static_assert(g == 8 && conjugate != Conjugate::secondHalfIn);
    using Value = decltype(in(at<0>));
    Value even[4];
    Value odd[4];
    const auto transformHalf = [&](auto parity, Value* half) TFMGEN_INLINE {
      shortTransform<4, Conjugate::none>([&](auto k) TFMGEN_INLINE { return in(at<2 * k + parity>); },
                                         [&](auto l, const Value& z) TFMGEN_INLINE { half[l] = z; });
    };
    transformHalf(at<0>, even);
    transformHalf(at<1>, odd);
    // e(2 pi l / 8) of the odd half is 1, e(pi/4), i, i e(pi/4).
    const auto finish = [&](auto l, const auto& pair) TFMGEN_INLINE {
      out(l, pair.sum);
      out(at<l + 4>, pair.difference);
    };
    finish(at<0>, butterfly<last>(even[0], odd[0]));
    finish(at<1>, butterfly<last>(even[1], rotateEighth(odd[1])));
    finish(at<2>, quarterButterfly<last>(even[2], odd[2]));
    finish(at<3>, quarterButterfly<last>(even[3], rotateEighth(odd[3])));
  }
}

} // namespace tfmgen::dct4
