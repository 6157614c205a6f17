// Cosines and sines of rational multiples of pi as compile-time constants, each rounded once to the sample type.
#pragma once

namespace tfmgen::dct4 {

inline constexpr long double kPi = 3.14159265358979323846264338327950288L;

// Taylor sums for angles up to pi/4, smallest terms first by Horner's rule; the remainder is below 2^-66.
constexpr long double cosSeries(long double x) {
  long double sum = 1;
  for (int k = 20; k > 0; k -= 2) {
    sum = 1 - x * x / (k * (k - 1)) * sum;
  }
  return sum;
}

constexpr long double sinSeries(long double x) {
  long double sum = 1;
  for (int k = 21; k > 1; k -= 2) {
    sum = 1 - x * x / (k * (k - 1)) * sum;
  }
  return x * sum;
}

// cos(pi numerator / denominator), numerator >= 0. The angle is reduced to the first octant as a ratio of integers,
// where it is exact.
constexpr long double cosPi(int numerator, int denominator) {
  const int n = numerator % (2 * denominator);
  if (n > denominator) {
    return cosPi(2 * denominator - n, denominator);
  }
  if (2 * n > denominator) {
    return -cosPi(denominator - n, denominator);
  }
  if (4 * n > denominator) {
    return sinSeries(kPi * (denominator - 2 * n) / (2 * denominator));
  }
  return cosSeries(kPi * n / denominator);
}

// sin(pi numerator / denominator), numerator >= 0.
constexpr long double sinPi(int numerator, int denominator) {
  return cosPi(2 * numerator + 3 * denominator, 2 * denominator);
}

constexpr long double tanPi(int numerator, int denominator) {
  return sinPi(numerator, denominator) / cosPi(numerator, denominator);
}

} // namespace tfmgen::dct4
