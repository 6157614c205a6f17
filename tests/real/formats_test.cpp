// What real and Hartley transforms of every length have in common.
#include "bits.hpp"
#include "entries.hpp"
#include "random.hpp"
#include "scale.hpp"

#include <limits>

namespace tfmgen::test {
namespace {

template <class Check>
void forEachLength(const Check& check) {
  for (int n = kShortest; n <= kLongest; ++n) {
    SCOPED_TRACE(n);
    check.template operator()<float>(n);
    check.template operator()<double>(n);
  }
}

template <class Real>
::testing::AssertionResult sameReals(const std::vector<Real>& expected, const std::vector<Real>& actual) {
  if (expected.size() != actual.size()) {
    return ::testing::AssertionFailure() << "sizes differ";
  }
  return sameBits(expected.data(), actual.data(), sizeof(Real) * expected.size(), sizeof(Real));
}

template <class Real>
std::vector<Real> samples(int n) {
  return Random(static_cast<std::uint64_t>(n)).reals<Real>(n, Spread::uniform);
}

// Sums of n terms of magnitude 1 are exact to a few times this.
template <class Real>
Real tolerance(int n) {
  return std::numeric_limits<Real>::epsilon() * static_cast<Real>(4 * n);
}

template <class Real>
void expectNear(const std::vector<Real>& expected, const std::vector<Real>& actual, Real bound) {
  for (std::size_t i = 0; i < expected.size(); ++i) {
    ASSERT_NEAR(expected[i], actual[i], bound) << i;
  }
}

TEST(RealFormats, HoldTheSameBitsAndCcsHoldsPositiveZeros) {
  forEachLength([]<class Real>(int n) {
    for (const Spread spread : {Spread::uniform, Spread::wide}) {
      const auto x = Random(5).reals<Real>(n, spread);
      for (const std::int32_t flag : kFlags) {
        const auto packed = run(entry<Real>(Kind::realForward, Format::pack, n), x, flag);
        for (const Format format : kFormats) {
          const auto expected = repacked(packed, n, Format::pack, format, Real(0));
          ASSERT_TRUE(sameReals(expected, run(entry<Real>(Kind::realForward, format, n), x, flag)));
        }
      }
    }
  });
}

TEST(RealFormats, GiveTheSameSamplesWhateverTheUnusedElementsHold) {
  forEachLength([]<class Real>(int n) {
    const auto packed = Random(6).reals<Real>(n, Spread::wide);
    const auto expected = run(entry<Real>(Kind::realInverse, Format::pack, n), packed, TFM_DIV_BY_SQRTN);
    for (const Real filler : {Real(0), std::numeric_limits<Real>::quiet_NaN()}) {
      for (const Format format : kFormats) {
        const auto spectrum = repacked(packed, n, Format::pack, format, filler);
        ASSERT_TRUE(sameReals(expected, run(entry<Real>(Kind::realInverse, format, n), spectrum, TFM_DIV_BY_SQRTN)));
      }
    }
  });
}

TEST(RealFormats, ZerosOfCcsDoNotDependOnTheSamples) {
  forEachLength([]<class Real>(int n) {
    using Limits = std::numeric_limits<Real>;
    for (const Real sample : {Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), Real(-0.0)}) {
      const std::vector<Real> x(static_cast<std::size_t>(n), sample);
      const auto ccs = run(entry<Real>(Kind::realForward, Format::ccs, n), x, TFM_NO_DIV);
      ASSERT_EQ(bitsAt(&ccs[1], sizeof(Real)), 0U);
      if (n % 2 == 0) {
        ASSERT_EQ(bitsAt(&ccs.back(), sizeof(Real)), 0U);
      }
    }
  });
}

// A result that ends in a constant product is scaled before it is rounded, so that it cannot always be the product of
// the rounded result. A kernel that rounds twice passes every other test.
TEST(RealScale, SharesTheRoundingOfAConstantProduct) {
  for (int n = kShortest; n <= kLongest; ++n) {
    const Entry kernel = entry<float>(Kind::realForward, Format::pack, n);
    if (kernel.family.scalesByProduct(n)) {
      continue;
    }
    const auto scale = expectedScale<float>(kernel.family, n, TFM_DIV_FWD_BY_N);
    Random random(7);
    bool differs = false;
    for (int trial = 0; trial < 100; ++trial) {
      const auto x = random.reals<float>(n, Spread::uniform);
      auto products = run(kernel, x, TFM_NO_DIV);
      std::ranges::transform(products, products.begin(), [scale](float v) { return v * scale; });
      differs = differs || products != run(kernel, x, TFM_DIV_FWD_BY_N);
    }
    EXPECT_TRUE(differs) << n;
  }
}

TEST(RealRoundTrip, GivesTheSamplesBack) {
  forEachLength([]<class Real>(int n) {
    const auto x = samples<Real>(n);
    for (const std::int32_t flag : {TFM_DIV_FWD_BY_N, TFM_DIV_INV_BY_N, TFM_DIV_BY_SQRTN}) {
      for (const Format format : kFormats) {
        const auto spectrum = run(entry<Real>(Kind::realForward, format, n), x, flag);
        expectNear(x, run(entry<Real>(Kind::realInverse, format, n), spectrum, flag), tolerance<Real>(2));
      }
    }
    const Entry hartley = entry<Real>(Kind::hartley, Format::plain, n);
    expectNear(x, run(hartley, run(hartley, x, TFM_DIV_BY_SQRTN), TFM_DIV_BY_SQRTN), tolerance<Real>(2));
    expectNear(x, run(hartley, run(hartley, x, TFM_NO_DIV), TFM_DIV_INV_BY_N), tolerance<Real>(2));
  });
}

TEST(Hartley, IsTheDifferenceAndTheSumOfTheParts) {
  forEachLength([]<class Real>(int n) {
    const auto x = samples<Real>(n);
    const auto ccs = run(entry<Real>(Kind::realForward, Format::ccs, n), x, TFM_NO_DIV);
    std::vector<Real> expected(x.size());
    for (std::size_t k = 0; 2 * k <= x.size(); ++k) {
      expected[k] = ccs[2 * k] - ccs[2 * k + 1];
      expected[(x.size() - k) % x.size()] = ccs[2 * k] + ccs[2 * k + 1];
    }
    expectNear(expected, run(entry<Real>(Kind::hartley, Format::plain, n), x, TFM_NO_DIV), tolerance<Real>(n));
  });
}

} // namespace
} // namespace tfmgen::test
