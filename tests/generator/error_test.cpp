// What the generator knows of rounding errors, on programs small enough to tell by hand.
#include "error/analysis.hpp"
#include "lower/complex64.hpp"
#include "plan/complex64.hpp"
#include "plan/real.hpp"
#include "random.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tfmgen::error {
namespace {

constexpr double kSingle = 0x1p-24;

lower::RealKernel forwardKernel(int length) {
  return lower::assignments(transform::forwardReal(*plan::realPlans(length).forward), lower::Transform::forward);
}

struct Roundings {
  std::ptrdiff_t toSamples;
  std::ptrdiff_t inDouble;
  std::ptrdiff_t withScale;
  bool operator==(const Roundings&) const = default;
};

Roundings roundings(const Program& p) {
  const auto steps = [&](double unit) {
    return std::ranges::count_if(p.steps(), [unit](const Step& s) { return s.unit == unit; });
  };
  return {steps(1), steps(kDoubleUnit), std::ranges::count_if(p.outputs(), &Output::endsInDouble)};
}

TEST(GeneratorError, StepsAreTheRoundingsOfAKernel) {
  // Length 8 in 32 bits: 20 sums, two products in double, each the end of an assignment.
  EXPECT_EQ(roundings(program(forwardKernel(8), 8, 32)), (Roundings{22, 2, 0}));
  EXPECT_EQ(roundings(program(forwardKernel(8), 8, 64)), (Roundings{22, 0, 0}));
  // Length 5: six sums; eight products and six sums in double, in four expressions that take the scale in.
  EXPECT_EQ(roundings(program(forwardKernel(5), 5, 32)), (Roundings{6, 14, 4}));
  // Both lanes of length 4: eight sums, and rotations that cost nothing.
  const auto four = lower::complex64(*plan::complex64(4), transform::RootSign::forward);
  EXPECT_EQ(roundings(program(four, 4, 64)), (Roundings{16, 0, 0}));
}

TEST(GeneratorError, EqualAndExactStepsAreNotCountedAgain) {
  Program p(2, 32);
  const Term a{0, 1};
  const Term b{1, 1};
  const Term difference = p.add(a, b.times(-1));
  EXPECT_EQ(difference.step, p.add(b, a.times(-1)).step);
  EXPECT_EQ(difference.factor, -p.add(b, a.times(-1)).factor);
  EXPECT_EQ(p.multiply(0.3, a).step, p.multiply(-0.3, a).step);
  EXPECT_EQ(p.multiply(-0.5, a).step, a.step);
  EXPECT_EQ(p.add(a, {}).step, a.step);
  EXPECT_TRUE(p.add(a, a.times(-1)).isZero());
  EXPECT_EQ(p.assign(difference).step, difference.step);
  EXPECT_EQ(roundings(p), (Roundings{2, 0, 0}));
}

// The graph of a kernel without rounding is the transform, up to its constants.
TEST(GeneratorError, GraphsComputeTheirTransforms) {
  for (const int length : {6, 13, 16, 23, 47, 64}) {
    const Program p = program(forwardKernel(length), static_cast<std::size_t>(length), 64);
    const QuadMatrix computed = linear(p).outputs;
    const Exact exact = exactReal(length, lower::Transform::forward);
    for (std::size_t i = 0; i < computed.size(); ++i) {
      for (std::size_t j = 0; j < computed.size(); ++j) {
        ASSERT_TRUE(number::magnitude(computed[i][j] - exact.matrix[i][j]) < 0x1p-49)
            << length << ": " << i << ", " << j;
      }
    }
  }
}

// y = c (a + b) on float, and what it should be.
struct Example {
  Program program{2, 32};
  Exact exact{{{}}, 0};

  explicit Example(double constant) {
    program.addOutput({program.multiply(constant, program.add({0, 1}, {1, 1}))});
    exact = {{{number::Quad{constant}, number::Quad{constant}}}, std::numbers::sqrt2 * constant};
  }
  [[nodiscard]] Figures figures() const { return Analysis(program, exact).figures(kUnscaled); }
};

TEST(GeneratorError, BoundIsThatOfTheOperationsInTurn) {
  EXPECT_NEAR(Example(1).figures().bound, 1, 1e-6); // one sum
  EXPECT_NEAR(Example(0.75).figures().bound, 2, 1e-6);
  EXPECT_GT(Example(0.75).figures().bound, 2) << "the product rounds what is rounded already";
  Program cancelling(2, 32); // (a + b) - b: the first sum may be large where the result is small
  const Term sum = cancelling.add({0, 1}, {1, 1});
  cancelling.addOutput({cancelling.add(sum, {1, -1})});
  EXPECT_NEAR(Analysis(cancelling, {{{1, 0}}, 1}).figures(kUnscaled).bound, 1 + std::numbers::sqrt2, 0.6);
}

TEST(GeneratorError, AConstantOfTooFewBitsShows) {
  Program p(1, 64);
  p.addOutput({p.multiply(static_cast<double>(static_cast<float>(std::numbers::inv_sqrt3)), {0, 1})});
  const Figures figures = Analysis(p, {{{std::numbers::inv_sqrt3}}, std::numbers::inv_sqrt3}).figures(kUnscaled);
  EXPECT_GT(figures.bound, 1e6);
  EXPECT_GT(figures.predicted, 1e6);
}

// Sums lose few bits of numbers with as many: their errors are no uniform noise.
TEST(GeneratorError, PredictionMeetsSimulation) {
  test::Random random(5);
  const auto normal = [&] { // of twelve uniform numbers
    double sum = 0;
    for (int i = 0; i < 12; ++i) {
      sum += random.real<double>(test::Spread::uniform) / 2;
    }
    return static_cast<float>(sum);
  };
  for (const float constant : {1.0F, 0.7F}) {
    constexpr int kCount = 200000;
    double sum = 0;
    for (int i = 0; i < kCount; ++i) {
      const float a = normal();
      const float b = normal();
      const float total = a + b;
      const float y = constant * total;
      const double error = static_cast<double>(y) - static_cast<double>(constant) * (static_cast<double>(a) + b);
      sum += error * error;
    }
    const Example example(constant);
    const double measured = std::sqrt(sum / kCount / 2) / (kSingle * example.exact.norm);
    EXPECT_NEAR(example.figures().predicted / measured, 1, 0.03) << constant;
  }
}

} // namespace
} // namespace tfmgen::error
