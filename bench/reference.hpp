// The transforms by their definitions, in a type so much wider than the samples that its own error does not show.
#pragma once

#include "routines/routine.hpp"

#include <algorithm>
#include <cmath>
#include <random>
#include <type_traits>

namespace bench {

__extension__ typedef __float128 Quad; // NOLINT(modernize-use-using): the spelling that both compilers accept

// The wide type for samples of type T: quadruple precision where long double has only 11 bits more.
template <class T>
using WideFor = std::conditional_t<sizeof(T) == sizeof(float), long double, Quad>;

template <class Wide>
class Reference {
public:
  explicit Reference(int n) : n_(static_cast<std::size_t>(n)), cosine_(n_), sine_(n_) {
    for (std::size_t k = 0; k < n_; ++k) {
      fillRoot(k);
    }
  }

  // The unscaled result for these numbers, both in the order of positions().
  template <class T>
  std::vector<Wide> operator()(Family family, const std::vector<T>& numbers) const {
    Complexes x(n_);
    switch (family) {
    case Family::complexForward:
    case Family::complexInverse:
      for (std::size_t i = 0; i < n_; ++i) {
        x[i] = {Wide(numbers[2 * i]), Wide(numbers[2 * i + 1])};
      }
      return interleaved(transform(x, family == Family::complexForward));
    case Family::realForward: return packed(transform(fromReal(numbers), true));
    case Family::realInverse: return combined(transform(fromHalfSpectrum(numbers), false), Wide(0));
    case Family::hartley: return combined(transform(fromReal(numbers), true), Wide(-1));
    }
    return {};
  }

private:
  struct Complex {
    Wide re;
    Wide im;
  };
  using Complexes = std::vector<Complex>;

  // cos and sin of 2*pi*k/n by their power series, reduced to half a turn. pi is given as a sum of doubles.
  void fillRoot(std::size_t k) {
    const Quad pi = Quad(3.141592653589793116e+00) + Quad(1.224646799147353207e-16) + Quad(-2.994769809718339666e-33);
    const bool lowerHalf = 2 * k > n_;
    const Quad angle = 2 * pi * static_cast<Quad>(lowerHalf ? n_ - k : k) / static_cast<Quad>(n_);
    Quad cosine = 0;
    Quad sine = 0;
    Quad term = 1;
    for (int i = 0; i < 48; i += 2) {
      cosine += term;
      term *= angle / (i + 1);
      sine += term;
      term *= -angle / (i + 2);
    }
    cosine_[k] = static_cast<Wide>(cosine);
    sine_[k] = static_cast<Wide>(lowerHalf ? -sine : sine);
  }

  // Sums over pairs x[j] and x[n-j], whose roots are conjugates: a quarter of the products of the plain definition.
  [[nodiscard]] Complexes transform(const Complexes& x, bool forward) const {
    Complexes result(n_);
    for (std::size_t k = 0; 2 * k <= n_; ++k) {
      Complex even = x[0];   // sum of (x[j] + x[n-j]) cos
      Complex odd{0, 0};     // sum of (x[j] - x[n-j]) sin
      std::size_t angle = 0; // j * k mod n
      for (std::size_t j = 1; 2 * j <= n_; ++j) {
        angle = (angle + k) % n_;
        const Complex mirrored = 2 * j == n_ ? Complex{0, 0} : x[n_ - j];
        even.re += (x[j].re + mirrored.re) * cosine_[angle];
        even.im += (x[j].im + mirrored.im) * cosine_[angle];
        odd.re += (x[j].re - mirrored.re) * sine_[angle];
        odd.im += (x[j].im - mirrored.im) * sine_[angle];
      }
      const Complex lower{even.re + odd.im, even.im - odd.re};
      const Complex upper{even.re - odd.im, even.im + odd.re};
      result[k] = forward ? lower : upper;
      if (k != 0) {
        result[n_ - k] = forward ? upper : lower;
      }
    }
    return result;
  }

  template <class T>
  [[nodiscard]] [[nodiscard]] Complexes fromReal(const std::vector<T>& numbers) const {
    Complexes x(n_);
    for (std::size_t i = 0; i < n_; ++i) {
      x[i] = {Wide(numbers[i]), Wide(0)};
    }
    return x;
  }

  template <class T>
  [[nodiscard]] [[nodiscard]] Complexes fromHalfSpectrum(const std::vector<T>& numbers) const {
    Complexes x(n_);
    x[0] = {Wide(numbers[0]), Wide(0)};
    for (std::size_t k = 1; 2 * k <= n_; ++k) {
      const Wide im = 2 * k == n_ ? Wide(0) : Wide(numbers[2 * k]);
      x[k] = {Wide(numbers[2 * k - 1]), im};
      x[n_ - k] = {x[k].re, 2 * k == n_ ? im : -im};
    }
    return x;
  }

  static std::vector<Wide> interleaved(const Complexes& x) {
    std::vector<Wide> numbers;
    for (const Complex& z : x) {
      numbers.insert(numbers.end(), {z.re, z.im});
    }
    return numbers;
  }

  // Bin 0, then re and im of the bins up to n/2, without the imaginary part of bin n/2 of even n.
  [[nodiscard]] std::vector<Wide> packed(const Complexes& x) const {
    std::vector<Wide> numbers{x[0].re};
    for (std::size_t i = 1; i < n_; ++i) {
      numbers.push_back(i % 2 != 0 ? x[(i + 1) / 2].re : x[i / 2].im);
    }
    return numbers;
  }

  // re + factor * im.
  static std::vector<Wide> combined(const Complexes& x, Wide factor) {
    std::vector<Wide> numbers;
    for (const Complex& z : x) {
      numbers.push_back(z.re + factor * z.im);
    }
    return numbers;
  }

  std::size_t n_;
  std::vector<Wide> cosine_;
  std::vector<Wide> sine_;
};

// Relative L2 error of a result.
template <class T, class Wide>
double relativeError(const std::vector<T>& numbers, const std::vector<Wide>& exact) {
  Wide error = 0;
  Wide norm = 0;
  for (std::size_t i = 0; i < exact.size(); ++i) {
    const Wide difference = Wide(numbers[i]) - exact[i];
    error += difference * difference;
    norm += exact[i] * exact[i];
  }
  return std::sqrt(static_cast<double>(error / norm));
}

// Uniform in [-1, 1].
template <class T>
std::vector<T> randomNumbers(std::size_t count, std::mt19937_64& engine) {
  std::uniform_real_distribution<T> uniform(T(-1), T(1));
  std::vector<T> numbers(count);
  std::generate(numbers.begin(), numbers.end(), [&] { return uniform(engine); });
  return numbers;
}

} // namespace bench
