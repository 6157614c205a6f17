// Writes the page on the accuracy of the DCT-IV to standard output: dct4_accuracy > docs/dct4-accuracy.md
#include "support.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

namespace tfmgen::test {
namespace {

constexpr std::int32_t kLongest = 1 << 18;

struct Errors {
  long double l2 = 0;    // root mean square of the relative L2 errors of the vectors
  long double worst = 0; // largest error of an output, in units of the root mean square of all outputs
};

// Uniform over [-1, 1). The page keeps its vectors, so that its figures can be compared from one version to the next.
template <class T>
std::vector<T> pageSamples(std::size_t count, unsigned seed) {
  std::mt19937 bits(seed);
  std::vector<T> samples(count);
  for (T& sample : samples) {
    sample = static_cast<T>(std::ldexp(static_cast<double>(bits()), -31) - 1.0);
  }
  return samples;
}

template <class T>
Errors randomErrors(std::int32_t n) {
  const Plan<T> plan(n);
  const int vectors = std::clamp(65536 / n, 2, 512);
  Errors errors;
  for (int i = 0; i < vectors; ++i) {
    const auto x = pageSamples<T>(static_cast<std::size_t>(n), static_cast<unsigned>(i));
    std::vector<T> y(x.size());
    Dct4<T>::run(x.data(), y.data(), plan());
    const auto exact = dct4ByDft(x);
    long double square = 0;
    for (const long double value : exact) {
      square += value * value;
    }
    const long double relative = relativeL2Error(y, exact);
    errors.l2 += relative * relative / vectors;
    errors.worst = std::max(errors.worst, maxError(y, exact) / std::sqrt(square / n));
  }
  errors.l2 = std::sqrt(errors.l2);
  return errors;
}

// The largest error of an entry of the matrix.
template <class T>
long double impulseError(std::int32_t n) {
  const Plan<T> plan(n);
  long double worst = 0;
  for (std::int32_t at = 0; at < n; ++at) {
    const auto x = impulse<T>(n, at);
    std::vector<T> y(x.size());
    Dct4<T>::run(x.data(), y.data(), plan());
    for (std::int32_t k = 0; k < n; ++k) {
      const long double exact = cosPiRatio((2 * std::int64_t{at} + 1) * (2 * k + 1), 4 * std::int64_t{n});
      worst = std::max(worst, std::abs(y.begin()[k] - exact));
    }
  }
  return worst;
}

void print() {
  std::puts(
      "# Accuracy of the DCT-IV\n\n"
      "Written by `dct4_accuracy`. Errors against a reference in 64-bit-mantissa arithmetic, for random samples,\n"
      "uniform over [-1, 1): the relative L2 error (root mean square over the vectors) and the largest error of an\n"
      "output in units of the root mean square of all outputs; for unit impulses at every position up to length 1024\n"
      "the largest error of an output.\n\n"
      "| N | 32-bit L2 | largest | impulses | 64-bit L2 | largest | impulses |\n"
      "|---:|---:|---:|---:|---:|---:|---:|");
  for (std::int32_t n = 2; n <= kLongest; n *= 2) {
    const Errors single = randomErrors<Tfm32f>(n);
    const Errors twofold = randomErrors<Tfm64f>(n);
    std::printf("| %d | %.2Le | %.2Le | ", n, single.l2, single.worst);
    if (n <= 1024) {
      std::printf("%.2Le | %.2Le | %.2Le | %.2Le |\n", impulseError<Tfm32f>(n), twofold.l2, twofold.worst,
                  impulseError<Tfm64f>(n));
    } else {
      std::printf("| %.2Le | %.2Le | |\n", twofold.l2, twofold.worst);
    }
  }
}

} // namespace
} // namespace tfmgen::test

int main() {
  tfmgen::test::print();
  return 0;
}
