// Roots of unity.
#pragma once

#include "quad.hpp"

namespace tfmgen::number {

struct Complex {
  Quad re;
  Quad im;
};

constexpr Complex operator+(Complex a, Complex b) {
  return {a.re + b.re, a.im + b.im};
}

constexpr Complex operator*(Complex a, Complex b) {
  return {a.re * b.re - a.im * b.im, a.re * b.im + a.im * b.re};
}

constexpr Complex operator*(Quad a, Complex b) {
  return {a * b.re, a * b.im};
}

constexpr Complex conjugate(Complex a) {
  return {a.re, -a.im};
}

// A sum of roots of which a part is zero has noise there.
constexpr Complex withExactZeros(Complex sum) {
  constexpr Quad kNoise = 1e-28;
  return {magnitude(sum.re) < kNoise ? 0 : sum.re, magnitude(sum.im) < kNoise ? 0 : sum.im};
}

// exp(2*pi*i*k/n), reduced to the first octant; exact where a part is 0 or 1 in magnitude.
Complex root(long k, long n);

inline Quad cosine(long k, long n) {
  return root(k, n).re;
}

} // namespace tfmgen::number
