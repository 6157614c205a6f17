// What the tests of the DCT-IV share: plans, samples, references.
#pragma once

#include "dct4.hpp"
#include "random.hpp"

#include <algorithm>
#include <cmath>
#include <complex>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <numbers>
#include <vector>

namespace tfmgen::test {

// A plan of the library's own allocation.
template <class T>
class Plan {
public:
  explicit Plan(std::int32_t length) {
    if (Dct4<T>::initAlloc(&plan_, length) != tfmStsOk) {
      std::abort();
    }
  }
  ~Plan() { Dct4<T>::free(plan_); }
  Plan(const Plan&) = delete;
  Plan& operator=(const Plan&) = delete;

  TfmgDCT4Plan* operator()() const { return plan_; }

private:
  TfmgDCT4Plan* plan_ = nullptr;
};

// Uniform over [-1, 1).
template <class T>
std::vector<T> randomSamples(std::integral auto count, std::uint64_t seed) {
  return Random(seed).reals<T>(count, Spread::uniform);
}

template <class T>
std::vector<T> impulse(std::integral auto count, std::integral auto at) {
  std::vector<T> samples(static_cast<std::size_t>(count));
  samples[static_cast<std::size_t>(at)] = 1;
  return samples;
}

// cos(pi numerator / denominator), reduced in integers first.
inline long double cosPiRatio(std::int64_t numerator, std::int64_t denominator) {
  const std::int64_t n = numerator % (2 * denominator);
  return std::cos(std::numbers::pi_v<long double> * static_cast<long double>(n) /
                  static_cast<long double>(denominator));
}

// The defining sum.
template <class T>
std::vector<long double> dct4ByDefinition(const std::vector<T>& x) {
  const std::size_t n = x.size();
  std::vector<long double> table(8 * n);
  for (std::size_t i = 0; i < table.size(); ++i) {
    table[i] = cosPiRatio(static_cast<std::int64_t>(i), static_cast<std::int64_t>(4 * n));
  }
  std::vector<long double> y(x.size());
  for (std::size_t k = 0; k < n; ++k) {
    for (std::size_t t = 0; t < n; ++t) {
      y[k] += static_cast<long double>(x[t]) * table[(2 * t + 1) * (2 * k + 1) % (8 * n)];
    }
  }
  return y;
}

using ComplexL = std::complex<long double>;

// exp(i pi numerator / denominator).
inline ComplexL halfTurns(std::int64_t numerator, std::int64_t denominator) {
  return std::polar(1.0L, std::numbers::pi_v<long double> * static_cast<long double>(numerator) /
                              static_cast<long double>(denominator));
}

// Forward DFT of a power-of-two length, by halves.
inline std::vector<ComplexL> dft(const std::vector<ComplexL>& x) {
  const std::size_t half = x.size() / 2;
  if (half == 0) {
    return x;
  }
  std::vector<ComplexL> even(half);
  std::vector<ComplexL> odd(half);
  for (std::size_t i = 0; i < half; ++i) {
    even[i] = x[2 * i];
    odd[i] = x[2 * i + 1];
  }
  even = dft(even);
  odd = dft(odd);
  std::vector<ComplexL> y(x.size());
  for (std::size_t i = 0; i < half; ++i) {
    const ComplexL turned = odd[i] * halfTurns(-static_cast<std::int64_t>(i), static_cast<std::int64_t>(half));
    y[i] = even[i] + turned;
    y[i + half] = even[i] - turned;
  }
  return y;
}

// The same transform through a complex DFT of half the length; N is a power of two.
template <class T>
std::vector<long double> dct4ByDft(const std::vector<T>& x) {
  const std::size_t n = x.size();
  const auto twiddle = [n](std::size_t i) {
    return halfTurns(-static_cast<std::int64_t>(4 * i + 1), static_cast<std::int64_t>(4 * n));
  };
  std::vector<ComplexL> z(n / 2);
  for (std::size_t i = 0; i < n / 2; ++i) {
    z[i] = ComplexL(x[2 * i], x[n - 1 - 2 * i]) * twiddle(i);
  }
  z = dft(z);
  std::vector<long double> y(n);
  for (std::size_t k = 0; k < n / 2; ++k) {
    const ComplexL value = z[k] * halfTurns(-static_cast<std::int64_t>(k), static_cast<std::int64_t>(n));
    y[2 * k] = value.real();
    y[n - 1 - 2 * k] = -value.imag();
  }
  return y;
}

// Largest distance and root-mean-square size.
template <class T>
long double maxError(const std::vector<T>& actual, const std::vector<long double>& expected) {
  long double worst = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    worst = std::max(worst, std::abs(static_cast<long double>(actual[i]) - expected[i]));
  }
  return worst;
}

template <class T>
long double relativeL2Error(const std::vector<T>& actual, const std::vector<long double>& expected) {
  long double error = 0;
  long double size = 0;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const long double difference = static_cast<long double>(actual[i]) - expected[i];
    error += difference * difference;
    size += expected[i] * expected[i];
  }
  return std::sqrt(error / size);
}

} // namespace tfmgen::test
