// From flag to factor: exact constants, and their place as the last multiplication of every output.
#include "bits.hpp"
#include "families.hpp"
#include "quad.hpp"
#include "random.hpp"
#include "scale.hpp"

#include <limits>
#include <set>

namespace tfmgen::test {
namespace {

template <class Real>
struct Neighbourhood { // the numbers that round to a value lie between these two; exact in quadruple precision
  Quad below;
  Quad above;
  explicit Neighbourhood(Real value)
      : below((Quad{std::nextafter(value, Real(0))} + Quad{value}) / 2),
        above((Quad{std::nextafter(value, std::numeric_limits<Real>::max())} + Quad{value}) / 2) {}
};

// All products below are exact in 113 bits: each bound has one bit more than its type.
template <class Real>
bool isNearestReciprocal(Real value, Quad d) {
  const Neighbourhood<Real> around(value);
  return around.below * d <= 1 && 1 <= around.above * d;
}

bool isNearestRoot(double value, int n) {
  const Neighbourhood<double> around(value);
  return around.below * around.below < n && n < around.above * around.above;
}

template <class Real>
bool isNearestReciprocalRoot(Real value, int n) {
  const Neighbourhood<Real> around(value);
  return around.below * around.below * n < 1 && 1 < around.above * around.above * n;
}

TEST(Scale, ExpectedFactorsAreCorrectlyRounded) {
  for (int n = kShortest; n <= kLongest; ++n) {
    EXPECT_TRUE(isNearestReciprocal(static_cast<float>(1.0L / n), n)) << n;
    EXPECT_TRUE(isNearestReciprocal(static_cast<double>(1.0L / n), n)) << n;
    EXPECT_TRUE(isNearestReciprocalRoot(expectedReciprocalRoot<float>(n), n)) << n;
    const double root = std::sqrt(static_cast<double>(n));
    EXPECT_TRUE(isNearestRoot(root, n)) << n;
    EXPECT_TRUE(isNearestReciprocal(expectedReciprocalRoot<double>(n), root)) << n;
  }
}

TEST(Scale, QuotientByTheRoundedRootIsNotTheNearestDoubleAt18Lengths) {
  std::set<int> lengths;
  for (int n = kShortest; n <= kLongest; ++n) {
    if (!isNearestReciprocalRoot(expectedReciprocalRoot<double>(n), n)) {
      lengths.insert(n);
    }
  }
  EXPECT_EQ(lengths, (std::set<int>{2, 3, 6, 7, 8, 12, 15, 18, 19, 22, 24, 28, 32, 34, 48, 59, 60, 63}));
  EXPECT_EQ(expectedReciprocalRoot<double>(2), 0.7071067811865475);
  EXPECT_EQ(expectedReciprocalRoot<double>(3), 0.5773502691896258);
  EXPECT_EQ(expectedReciprocalRoot<double>(64), 0.125);
}

// The chirp route rounds on the way, also for an impulse.
bool isChirp(const Entry& entry) {
  return entry.family.isComplex() && entry.family.realBytes == sizeof(float) && (entry.n == 47 || entry.n == 59);
}

template <class Real>
std::vector<Real> transform(const Entry& entry, const std::vector<Real>& source, std::int32_t flag) {
  std::vector<Real> result(entry.destinationReals());
  EXPECT_EQ(entry(source.data(), result.data(), flag), tfmStsOk);
  return result;
}

TEST(Scale, ImpulseGivesTheFactorExactly) {
  forEachTypedEntry([]<class Real>(const Entry& entry) {
    if (isChirp(entry)) {
      return;
    }
    std::vector<Real> impulse(entry.sourceReals());
    impulse[0] = 1;
    for (const std::int32_t flag : kFlags) {
      const Real scale = expectedScale<Real>(entry.family, entry.n, flag);
      const std::vector<Real> result = transform(entry, impulse, flag);
      // Imaginary parts are 0: every second real of a complex result, and whatever a packed spectrum holds beside R(k).
      std::vector<Real> expected(result.size(), entry.family.kind == Kind::realForward ? Real(0) : scale);
      for (std::size_t i = 1; entry.family.isComplex() && i < expected.size(); i += 2) {
        expected[i] = 0;
      }
      for (int k = 0; entry.family.kind == Kind::realForward && 2 * k <= entry.n; ++k) {
        expected[static_cast<std::size_t>(spectrumSlot(entry.family.format, entry.n, k).re)] = scale;
      }
      ASSERT_EQ(result, expected) << "flag " << flag; // by value: 0 of either sign
    }
  });
}

TEST(Scale, ChirpImpulseOfLength47RoundsOnTheWay) {
  forEachEntry([](const Entry& entry) {
    if (entry.n == 47 && isChirp(entry) && entry.family.kind == Kind::complexForward) {
      Tfm32fc x[47] = {{1.0F, 0.0F}};
      ASSERT_EQ(entry(x, x, TFM_DIV_FWD_BY_N), tfmStsOk);
      ASSERT_EQ(static_cast<double>(x[0].re), 0.02127659320831299);
    }
  });
}

TEST(Scale, IsTheLastProductOfEveryOutput) {
  forEachTypedEntry([]<class Real>(const Entry& entry) {
    if (!entry.family.scalesByProduct(entry.n)) {
      return;
    }
    for (const Spread spread : {Spread::uniform, Spread::wide}) {
      const std::vector<Real> source = Random(3).reals<Real>(entry.sourceReals(), spread);
      const std::vector<Real> unscaled = transform(entry, source, TFM_NO_DIV);
      for (const std::int32_t flag : kFlags) {
        std::vector<Real> expected = unscaled;
        for (Real& value : expected) {
          value *= expectedScale<Real>(entry.family, entry.n, flag);
        }
        const std::vector<Real> result = transform(entry, source, flag);
        ASSERT_TRUE(sameBits(expected.data(), result.data(), sizeof(Real) * result.size(), sizeof(Real)))
            << "flag " << flag;
      }
    }
  });
}

TEST(Scale, FlagsOfTheSameFactorGiveTheSameBits) {
  forEachTypedEntry([]<class Real>(const Entry& entry) {
    const std::vector<Real> source = Random(4).reals<Real>(entry.sourceReals(), Spread::wide);
    for (const std::int32_t a : kFlags) {
      for (const std::int32_t b : kFlags) {
        if (expectedScale<Real>(entry.family, entry.n, a) == expectedScale<Real>(entry.family, entry.n, b)) {
          const std::vector<Real> first = transform(entry, source, a);
          const std::vector<Real> second = transform(entry, source, b);
          ASSERT_TRUE(sameBits(first.data(), second.data(), sizeof(Real) * first.size(), sizeof(Real)))
              << "flags " << a << " and " << b;
        }
      }
    }
  });
}

} // namespace
} // namespace tfmgen::test
