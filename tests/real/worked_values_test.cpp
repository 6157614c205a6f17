// Real and Hartley transforms of small signals whose results are known in full.
#include "entries.hpp"

#include <limits>

namespace tfmgen::test {
namespace {

std::vector<double> ramp(int n) {
  std::vector<double> x;
  for (int i = 1; i <= n; ++i) {
    x.push_back(i);
  }
  return x;
}

TEST(RealWorkedValues, ProductInDoubleIsSeenInTheLastBits) {
  std::vector<float> x(8);
  x[1] = 9;
  EXPECT_EQ(static_cast<double>(run(entry<float>(Kind::realForward, Format::pack, 8), x, TFM_NO_DIV)[1]),
            6.363961219787598);
}

TEST(RealWorkedValues, SpectraOfRamps) {
  const auto spectrum = [](Format format, int n) {
    return run(entry<double>(Kind::realForward, format, n), ramp(n), TFM_NO_DIV);
  };
  using Values = std::vector<double>;
  EXPECT_EQ(spectrum(Format::ccs, 4), (Values{10, 0, -2, 2, -2, 0}));
  EXPECT_EQ(spectrum(Format::pack, 4), (Values{10, -2, 2, -2}));
  EXPECT_EQ(spectrum(Format::perm, 4), (Values{10, -2, -2, 2}));
  const Values eight = spectrum(Format::perm, 8);
  const Values rounded{36, -4, -4, 9.6568542, -4, 4, -4, 1.6568542};
  for (std::size_t i = 0; i < eight.size(); ++i) {
    EXPECT_NEAR(eight[i], rounded[i], 5e-8);
  }
  const auto hartley = [](int n) { return run(entry<double>(Kind::hartley, Format::plain, n), ramp(n), TFM_NO_DIV); };
  EXPECT_EQ(hartley(4), (Values{10, -4, -2, 0}));
  EXPECT_EQ(hartley(8),
            (Values{36, -13.65685424949238, -8, -5.656854249492381, -4, -2.3431457505076194, 0, 5.65685424949238}));
}

TEST(RealWorkedValues, InverseDoesNotReadTheZerosOfCcs) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(
      run<double>(entry<double>(Kind::realInverse, Format::ccs, 4), {10, kNaN, -2, 2, -2, kNaN}, TFM_DIV_INV_BY_N),
      ramp(4));
}

} // namespace
} // namespace tfmgen::test
