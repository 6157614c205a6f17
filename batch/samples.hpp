// Samples of 32 bits whose products by constants are double, a frame a lane: T(expression) in the text of a kernel
// means for every lane what it means for a scalar. All other samples are plain vectors, whose operators are those of
// the language.
#pragma once

#include "kernel/vector.hpp"

namespace tfmgen::batch {

template <int bytes>
struct Samples;

// What an expression is behind its first product by a constant: doubles, until the end of the assignment rounds them
// once.
template <int bytes>
struct Widened {
  using V = Vector<double, bytes>;
  V low; // of the lower half of the lanes
  V high;

  TFMGEN_INLINE Widened(V lower, V upper) : low(lower), high(upper) {}
  TFMGEN_INLINE Widened(Samples<bytes> x) : Widened(x, std::make_integer_sequence<int, kLanesOf<V>>{}) {}

  TFMGEN_INLINE friend Widened operator+(const Widened& a, const Widened& b) {
    return {a.low + b.low, a.high + b.high};
  }
  TFMGEN_INLINE friend Widened operator-(const Widened& a, const Widened& b) {
    return {a.low - b.low, a.high - b.high};
  }
  TFMGEN_INLINE friend Widened operator*(const Widened& a, const Widened& b) {
    return {a.low * b.low, a.high * b.high};
  }
  TFMGEN_INLINE friend Widened operator*(double constant, const Widened& x) {
    return {constant * x.low, constant * x.high};
  }
  TFMGEN_INLINE friend Widened operator-(int zero, const Widened& x) { return {zero - x.low, zero - x.high}; }

private:
  template <int... lane>
  TFMGEN_INLINE Widened(Samples<bytes> x, std::integer_sequence<int, lane...> /*half*/)
      : low(__builtin_convertvector(__builtin_shufflevector(x.v, x.v, lane...), V)),
        high(__builtin_convertvector(__builtin_shufflevector(x.v, x.v, (kLanesOf<V> + lane)...), V)) {}
};

template <int bytes>
struct Samples {
  using V = Vector<float, bytes>;
  V v;

  TFMGEN_INLINE Samples(V lanes) : v(lanes) {}
  TFMGEN_INLINE explicit Samples(const Widened<bytes>& x)
      : Samples(x, std::make_integer_sequence<int, kLanesOf<V>>{}) {}

  TFMGEN_INLINE friend Samples operator+(Samples a, Samples b) { return a.v + b.v; }
  TFMGEN_INLINE friend Samples operator-(Samples a, Samples b) { return a.v - b.v; }
  TFMGEN_INLINE friend Samples operator*(Samples a, Samples b) { return a.v * b.v; }
  TFMGEN_INLINE friend Samples operator-(Samples a) { return -a.v; }
  TFMGEN_INLINE friend Widened<bytes> operator*(double constant, Samples x) { return constant * Widened<bytes>(x); }
  // Whole numbers are exact in either type.
  TFMGEN_INLINE friend Samples operator*(int number, Samples x) { return static_cast<float>(number) * x.v; }
  TFMGEN_INLINE friend Samples operator-(int number, Samples x) { return static_cast<float>(number) - x.v; }

private:
  template <int... lane>
  TFMGEN_INLINE Samples(const Widened<bytes>& x, std::integer_sequence<int, lane...> /*all*/)
      : v(__builtin_shufflevector(__builtin_convertvector(x.low, Half), __builtin_convertvector(x.high, Half),
                                  lane...)) {}

  using Half = Vector<float, bytes / 2>;
};

} // namespace tfmgen::batch
