#include "roots.hpp"

#include "modular.hpp"

namespace tfmgen::number {

namespace {

// pi as a sum of doubles, each exact in its digits, to more than 113 bits.
constexpr Quad kPi = Quad{3.141592653589793116e+00} + Quad{1.224646799147353207e-16} + Quad{-2.994769809718339666e-33} +
                     Quad{1.112454220863365282e-49};

// The first octant, 8*k <= n, where both series converge fast and neither part cancels.
Complex firstOctant(long k, long n) {
  const Quad angle = 2 * kPi * static_cast<Quad>(k) / static_cast<Quad>(n);
  Complex sum{0, 0};
  Quad term = 1;
  for (int i = 0; i < 40; i += 2) {
    sum.re += term;
    term = term * angle / (i + 1);
    sum.im += term;
    term = -term * angle / (i + 2);
  }
  return sum;
}

} // namespace

Complex root(long k, long n) {
  k = modulo(k, n);
  if (2 * k > n) {
    return conjugate(root(n - k, n));
  }
  if (4 * k > n) {
    const Complex mirrored = root(n - 2 * k, 2 * n); // exp(i*(pi - t))
    return {-mirrored.re, mirrored.im};
  }
  if (8 * k > n) {
    const Complex swapped = root(n - 4 * k, 4 * n); // exp(i*(pi/2 - t))
    return {swapped.im, swapped.re};
  }
  return firstOctant(k, n);
}

} // namespace tfmgen::number
