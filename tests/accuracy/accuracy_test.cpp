// Every entry against the definition in quadruple precision.
#include "families.hpp"
#include "quad.hpp"
#include "random.hpp"

#include <algorithm>
#include <initializer_list>
#include <limits>

namespace tfmgen::test {
namespace {

constexpr int kVectors = 8;

// Largest admitted root mean square of the relative L2 error, in units of half the distance from 1 to the next number.
// Convolutions inside convolutions cost most, then prime factors that need one at all. 32-bit samples of a real signal
// gain from products in double.
double bound(const Entry& entry) {
  const auto isMultiple = [&](std::initializer_list<int> primes) {
    return std::any_of(primes.begin(), primes.end(), [&](int p) { return entry.n % p == 0; });
  };
  const double complexBound = isMultiple({47, 53, 59})                               ? 3.2
                              : isMultiple({13, 17, 19, 23, 29, 31, 37, 41, 43, 61}) ? 2.4
                                                                                     : 2.0;
  const bool productsInDouble = !entry.family.isComplex() && entry.family.realBytes == sizeof(float);
  return productsInDouble ? 0.85 * complexBound : complexBound;
}

double squaredNorm(const std::vector<Quad>& values) {
  Quad sum = 0;
  for (const Quad value : values) {
    sum += value * value;
  }
  return static_cast<double>(sum);
}

template <class Real>
double squaredRelativeError(const Entry& entry, const std::vector<Real>& source, std::int32_t flag) {
  std::vector<Real> result(entry.destinationReals());
  EXPECT_EQ(entry(source.data(), result.data(), flag), tfmStsOk);
  std::vector<Quad> exact = reference(entry, std::vector<Quad>(source.begin(), source.end()));
  const Quad scale = exactScale(entry.family, entry.n, flag);
  std::vector<Quad> difference(exact.size());
  for (std::size_t i = 0; i < exact.size(); ++i) {
    exact[i] *= scale;
    difference[i] = exact[i] - Quad{result[i]};
  }
  return squaredNorm(difference) / squaredNorm(exact);
}

TEST(Accuracy, ErrorStaysAFewHalfUnits) {
  double worst = 0;
  std::string worstName;
  forEachTypedEntry([&]<class Real>(const Entry& entry) {
    Random random(8);
    double sum = 0;
    for (std::size_t vector = 0; vector < kVectors; ++vector) {
      const Spread spread = vector < kVectors / 2 ? Spread::uniform : Spread::wide;
      const std::vector<Real> source = random.reals<Real>(entry.sourceReals(), spread);
      sum += squaredRelativeError(entry, source, kFlags[vector % kFlags.size()]);
    }
    const double error = std::sqrt(sum / kVectors) / (std::numeric_limits<Real>::epsilon() / 2);
    ASSERT_LE(error, bound(entry));
    if (error > worst) {
      worst = error;
      worstName = entry.name();
    }
  });
  RecordProperty("worst", worstName + " " + std::to_string(worst));
}

} // namespace
} // namespace tfmgen::test
