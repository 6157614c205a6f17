// Sums and differences fused with a product by 1 or -1 have the bits of the sums and differences alone.
#include "bits.hpp"
#include "fused_sums.hpp"
#include "hard_values.hpp"
#include "processor_level.hpp"

#include <gtest/gtest.h>

namespace tfmgen::test {
namespace {

constexpr int kTrials = 20000;

template <class Real>
::testing::AssertionResult hasBits(Real expected, Real actual) {
  if (isSameReal(expected, actual)) {
    return ::testing::AssertionSuccess();
  }
  return ::testing::AssertionFailure() << actual << " should be " << expected;
}

template <int bytes, class Real>
void check() {
  Random random(9);
  for (int trial = 0; trial < kTrials; ++trial) {
    FusedSums<Real> sums{};
    for (int i = 0; i < kFusedLanes; ++i) {
      sums.a[i] = hardReal<Real>(random, HardKind::mixed);
      // Sums that cancel, or lie halfway between two numbers, come from operands of nearly the same size.
      const Real near = std::ldexp(sums.a[i], -static_cast<int>(random.bits() % 3) * std::numeric_limits<Real>::digits);
      sums.b[i] = random.bits() % 2 == 0 ? hardReal<Real>(random, HardKind::mixed) : near;
      sums.signs[i] = random.bits() % 2 == 0 ? Real(1) : Real(-1);
    }
    fuse<bytes>(sums);
    for (int i = 0; i < kFusedLanes; ++i) {
      const Real sum = sums.a[i] + sums.b[i];
      const Real difference = sums.a[i] - sums.b[i];
      ASSERT_TRUE(hasBits(sums.signs[i] > 0 ? sum : difference, sums.mixed[i])) << sums.a[i] << " and " << sums.b[i];
      ASSERT_TRUE(hasBits(i % 2 == 0 ? difference : sum, sums.subtractAdd[i])) << sums.a[i] << " and " << sums.b[i];
      ASSERT_TRUE(hasBits(i % 2 == 0 ? sum : difference, sums.addSubtract[i])) << sums.a[i] << " and " << sums.b[i];
    }
  }
}

TEST(FusedSums, HaveTheBitsOfSumsAndDifferences) {
  if (!processorHas("x86-64-v3")) {
    GTEST_SKIP() << "this processor has no x86-64-v3";
  }
  check<16, float>();
  check<16, double>();
  check<32, float>();
  check<32, double>();
  if (!processorHas("x86-64-v4")) {
    GTEST_SKIP() << "this processor has no x86-64-v4";
  }
  check<64, float>();
  check<64, double>();
}

} // namespace
} // namespace tfmgen::test
