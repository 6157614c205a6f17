// One sample of each frame of a group, a frame a lane, with the arithmetic of scalar kernels: T(expression) in the text
// of a kernel means for every lane what it means for a scalar.
#pragma once

#include "kernel/vector.hpp"

namespace tfmgen::batch {

template <class RealType, int bytes>
struct Samples {
  using Real = RealType;
  Vector<Real, bytes> v;

  Samples() = default;
  TFMGEN_INLINE explicit Samples(Vector<Real, bytes> lanes) : v(lanes) {}
  TFMGEN_INLINE explicit Samples(int x) : v(broadcast<Vector<Real, bytes>>(static_cast<Real>(x))) {}
};

// What an expression of 32-bit samples is behind its first product by a constant: doubles, until the end of the
// assignment rounds them once.
template <int bytes>
struct Widened {
  Vector<double, bytes> low; // of the lower half of the lanes
  Vector<double, bytes> high;
};

template <int bytes>
struct Samples<float, bytes> {
  using Real = float;
  Vector<float, bytes> v;

  Samples() = default;
  TFMGEN_INLINE explicit Samples(Vector<float, bytes> lanes) : v(lanes) {}
  TFMGEN_INLINE explicit Samples(int x) : v(broadcast<Vector<float, bytes>>(static_cast<float>(x))) {}
  TFMGEN_INLINE explicit Samples(const Widened<bytes>& x) : v(join(convert<float>(x.low), convert<float>(x.high))) {}
};

template <class Real, int bytes>
TFMGEN_INLINE inline Samples<Real, bytes> operator+(Samples<Real, bytes> a, Samples<Real, bytes> b) {
  return Samples<Real, bytes>(a.v + b.v);
}
template <class Real, int bytes>
TFMGEN_INLINE inline Samples<Real, bytes> operator-(Samples<Real, bytes> a, Samples<Real, bytes> b) {
  return Samples<Real, bytes>(a.v - b.v);
}
template <class Real, int bytes>
TFMGEN_INLINE inline Samples<Real, bytes> operator*(Samples<Real, bytes> a, Samples<Real, bytes> b) {
  return Samples<Real, bytes>(a.v * b.v);
}
template <class Real, int bytes>
TFMGEN_INLINE inline Samples<Real, bytes> operator-(Samples<Real, bytes> a) {
  return Samples<Real, bytes>(-a.v);
}

// A constant of the sample type.
template <class Real, int bytes>
TFMGEN_INLINE inline Samples<Real, bytes> operator*(Real constant, Samples<Real, bytes> x) {
  return Samples<Real, bytes>(broadcast<Vector<Real, bytes>>(constant) * x.v);
}

// ---- Expressions in double

template <int bytes>
TFMGEN_INLINE inline Widened<bytes> widened(Samples<float, bytes> x) {
  return {convert<double>(lowHalf(x.v)), convert<double>(highHalf(x.v))};
}
template <int bytes>
TFMGEN_INLINE inline Widened<bytes> widened(Widened<bytes> x) {
  return x;
}

template <class T>
inline constexpr bool isWidened = false;
template <int bytes>
inline constexpr bool isWidened<Widened<bytes>> = true;

template <class A, class B>
concept EitherIsWidened = isWidened<A> || isWidened<B>;

template <class A, class B>
requires EitherIsWidened<A, B> TFMGEN_INLINE inline auto operator+(A a, B b) {
  const auto x = widened(a);
  const auto y = widened(b);
  return decltype(widened(a)){x.low + y.low, x.high + y.high};
}
template <class A, class B>
requires EitherIsWidened<A, B> TFMGEN_INLINE inline auto operator-(A a, B b) {
  const auto x = widened(a);
  const auto y = widened(b);
  return decltype(widened(a)){x.low - y.low, x.high - y.high};
}
template <class A, class B>
requires EitherIsWidened<A, B> TFMGEN_INLINE inline auto operator*(A a, B b) {
  const auto x = widened(a);
  const auto y = widened(b);
  return decltype(widened(a)){x.low * y.low, x.high * y.high};
}
template <int bytes>
TFMGEN_INLINE inline Widened<bytes> operator*(double constant, Widened<bytes> x) {
  const auto c = broadcast<Vector<double, bytes>>(constant);
  return {c * x.low, c * x.high};
}
template <int bytes>
TFMGEN_INLINE inline Widened<bytes> operator*(double constant, Samples<float, bytes> x) {
  return constant * widened(x);
}

} // namespace tfmgen::batch
