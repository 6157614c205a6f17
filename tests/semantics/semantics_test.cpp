#include "expressions.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tfmgen::test {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Semantics, ProductIsRoundedBeforeTheSum) {
  const double a = 1 + 0x1p-30;
  EXPECT_EQ(productThenSum(a, a, -(1 + 0x1p-29)), 0.0); // fused: 2^-60
}

TEST(Semantics, SumsKeepTheirOrder) {
  EXPECT_EQ(sumThenDifference(0x1p60, 1.0), 0.0);
  EXPECT_EQ(sumOfFour(1.0, 0x1p60, -0x1p60, 1.0), 1.0);
  EXPECT_EQ(sumOfFour(0x1p60, -0x1p60, 1.0, 1.0), 2.0);
}

TEST(Semantics, ZerosAndInfinitiesCount) {
  EXPECT_FALSE(std::signbit(subtractFromZero(0.0)));
  EXPECT_TRUE(std::isnan(timesZero(kInfinity)));
  EXPECT_TRUE(std::signbit(timesZero(-1.0)));
}

TEST(Semantics, QuotientIsNoProduct) {
  EXPECT_EQ(quotientByThree(5.0), 0x1.aaaaaaaaaaaabp+0);
  EXPECT_NE(quotientByThree(5.0), 5.0 * (1.0 / 3.0));
}

TEST(Semantics, EveryTypeRoundsInItsOwnPrecision) {
  EXPECT_EQ(roundedSum(0x1p24F, 1.0F, 0x1p24F), 0.0F); // extended precision: 1
  // A product rounded to single would lose the 2^-24; in double it is exact until the end.
  EXPECT_EQ(widenedProduct(1 + 0x1p-12F, 1 + 0x1p-12, -(1 + 0x1p-11F)), 0x1p-24F);
}

TEST(Semantics, ScalarLoopsCompute) {
  const double a[4] = {1, 2, 3, 5};
  double b[4];
  butterflies(a, b);
  EXPECT_EQ(b[0], 4);
  EXPECT_EQ(b[3], -3);
  const float c[4] = {1, 2, 3, 4};
  float d[4];
  addFour(c, c, d);
  scaleAll(d, 2, d, 4);
  EXPECT_EQ(d[3], 16);
}

} // namespace
} // namespace tfmgen::test
