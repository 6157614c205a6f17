// Every entry against the definition in quadruple precision.
#include "families.hpp"
#include "quad.hpp"
#include "random.hpp"

#include <algorithm>
#include <limits>

namespace tfmgen::test {
namespace {

constexpr int kVectors = 8;

// Largest admitted root mean square of the relative L2 error, in units of half the distance from 1 to the next number.
// Rader within Rader, at 47, is the worst with a little over 3; most lengths stay below 2.
constexpr double kBound = 3.5;

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
    for (int vector = 0; vector < kVectors; ++vector) {
      const Spread spread = vector < kVectors / 2 ? Spread::uniform : Spread::wide;
      const std::vector<Real> source = random.reals<Real>(entry.sourceReals(), spread);
      sum += squaredRelativeError(entry, source, kFlags[static_cast<std::size_t>(vector) % kFlags.size()]);
    }
    const double error = std::sqrt(sum / kVectors) / (std::numeric_limits<Real>::epsilon() / 2);
    ASSERT_LE(error, kBound);
    if (error > worst) {
      worst = error;
      worstName = entry.name();
    }
  });
  RecordProperty("worst", worstName + " " + std::to_string(worst));
}

} // namespace
} // namespace tfmgen::test
