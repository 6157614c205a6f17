// The constants of the kernels, from their computation to the text.
#include "lower/complex32.hpp"
#include "lower/complex64.hpp"
#include "number/modular.hpp"
#include "number/roots.hpp"
#include "plan/complex32.hpp"
#include "plan/complex64.hpp"
#include "plan/real.hpp"
#include "print/numbers.hpp"
#include "print/scalars.hpp"
#include "print/vectors.hpp"
#include "quadmath.hpp"
#include "transform/complex.hpp"
#include "transform/real.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <regex>
#include <string>
#include <utility>
#include <vector>

namespace tfmgen {
namespace {

using number::Quad;

constexpr Quad kUnit = Quad{0x1p-112}; // of a number in [1, 2)

TEST(GeneratorConstants, RootsOfUnityHaveQuadruplePrecision) {
  const Quad pi = acosq(-1);
  for (long n = 1; n <= 256; ++n) {
    for (long k = -n; k <= 2 * n; ++k) {
      const number::Complex w = number::root(k, n);
      const Quad angle = 2 * pi * static_cast<Quad>(number::modulo(k, n)) / static_cast<Quad>(n); // below 7
      ASSERT_TRUE(number::magnitude(w.re - cosq(angle)) < 8 * kUnit) << k << " / " << n;
      ASSERT_TRUE(number::magnitude(w.im - sinq(angle)) < 8 * kUnit) << k << " / " << n;
      if (4 * k % n == 0) {
        ASSERT_TRUE((w.re == 0) != (w.im == 0)) << "a quarter turn is exact: " << k << " / " << n;
      }
    }
  }
}

TEST(GeneratorConstants, RaderMultipliersHaveOneMagnitude) {
  for (const int p : {5, 7, 11, 13, 23, 31, 61}) {
    for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
      const auto factors = transform::raderMultipliers(p, number::primitiveRoot(p), sign);
      ASSERT_EQ(std::ssize(factors), p - 1);
      EXPECT_EQ(static_cast<double>(factors[0].re), -1.0 / (p - 1));
      EXPECT_EQ(static_cast<double>(factors[0].im), 0.0);
      for (std::size_t m = 1; m < factors.size(); ++m) {
        const double magnitude = std::hypot(static_cast<double>(factors[m].re), static_cast<double>(factors[m].im));
        EXPECT_NEAR(magnitude, std::sqrt(static_cast<double>(p)) / (p - 1), 1e-15) << p << ", bin " << m;
      }
    }
  }
}

// The magnitudes of all numbers with a fraction in a text.
std::vector<double> numbersIn(const std::string& text) {
  static const std::regex number(R"(\d+\.\d+(e-?\d+)?)");
  std::vector<double> found;
  for (std::sregex_iterator i(text.begin(), text.end(), number), end; i != end; ++i) {
    found.push_back(std::strtod(i->str().c_str(), nullptr));
  }
  return found;
}

void expectAmong(const std::vector<double>& numbers, std::initializer_list<double> expected, double tolerance) {
  for (const double e : expected) {
    EXPECT_TRUE(std::ranges::any_of(numbers, [&](double x) { return std::abs(x - e) <= tolerance; })) << e;
  }
}

std::vector<double> numbersOf(const lower::Kernel& kernel, const print::VectorType& type) {
  return numbersIn(print::vectorStatements(kernel, type));
}

TEST(GeneratorConstants, RaderMultipliersStandInTheText) {
  const auto single = [](int length, transform::RootSign sign) {
    const auto kernel = lower::complex32(*plan::complex32(length), sign);
    return numbersOf(kernel, {print::Precision::single, 4});
  };
  constexpr double eighthDecimal = 0.5e-8;
  constexpr double halfUnit = 0x1p-26; // of float below 1/2
  for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
    expectAmong(single(7, sign), {0.16666667, 0.44095856, 0.40668890, 0.17043647, 0.39507824, 0.19585104},
                eighthDecimal + halfUnit);
    expectAmong(single(13, sign),
                {0.08333333, 0.30046260, 0.25624767, 0.15689139, 0.25826040, 0.15355569, 0.28757036, 0.08706930,
                 0.07590298, 0.29071724, 0.30023864, 0.01159911},
                eighthDecimal + halfUnit);
    // Two bins share a product in 64-bit kernels, which doubles its factors.
    expectAmong(numbersOf(lower::complex64(*plan::complex64(13), sign), {print::Precision::twofold, 2}),
                {0.08333333, 0.30046261, 2 * 0.25624767, 2 * 0.15689139}, 2 * eighthDecimal);
  }
}

// The roots of a Good-Thomas plan on complex data are those of its factors.
TEST(GeneratorConstants, FactorsOfComplexKernelsHaveTheConstantsOfTheirLength) {
  const auto numbers = [](int length) {
    return numbersOf(lower::complex64(*plan::complex64(length), transform::RootSign::forward),
                     {print::Precision::twofold, 2});
  };
  for (const auto& [composite, factor] :
       {std::pair{26, 13}, {39, 13}, {52, 13}, {34, 17}, {18, 9}, {50, 25}, {54, 27}}) {
    const std::vector<double> among = numbers(composite);
    for (const double constant : numbers(factor)) {
      EXPECT_TRUE(std::ranges::count(among, constant) > 0) << constant << " of " << factor << " in " << composite;
    }
  }
}

TEST(GeneratorConstants, ZerosInChirpsAreExact) {
  for (const int length : {47, 59}) {
    const lower::Kernel kernel = lower::complex32(*plan::complex32(length), transform::RootSign::forward);
    for (const double constant : numbersOf(kernel, {print::Precision::single, 4})) {
      EXPECT_TRUE(constant == 0 || constant > 1e-6) << constant << ", length " << length;
    }
  }
}

TEST(GeneratorConstants, LastRaderMultipliersOfRealKernels) {
  const auto numbers = [](const plan::PlanPtr& plan, auto build, lower::Transform transform) {
    return numbersIn(print::scalarStatements(lower::assignments(build(*plan), transform), {}));
  };
  for (const int length : {13, 26, 53}) {
    const plan::RealPlans& plans = plan::realPlans(length);
    expectAmong(numbers(plans.forward, transform::forwardReal, lower::Transform::forward), {0.3004626062886657}, 0);
    expectAmong(numbers(plans.hartley, transform::hartley, lower::Transform::hartley), {0.3004626062886657}, 0);
    expectAmong(numbers(plans.inverse, transform::inverseReal, lower::Transform::inverse), {0.3004626062886657}, 0);
  }
  for (const int length : {11, 22, 33, 44, 55}) {
    expectAmong(numbers(plan::realPlans(length).inverse, transform::inverseReal, lower::Transform::inverse),
                {0.33166247903554}, 0);
  }
}

TEST(GeneratorConstants, LiteralsReadBackAsTheNumberRoundedOnce) {
  for (long k = 0; k < 131; ++k) {
    const Quad x = number::cosine(k, 131) / static_cast<Quad>(k + 1);
    EXPECT_EQ(std::strtof(print::literal(x, print::Precision::single).c_str(), nullptr), static_cast<float>(x));
    EXPECT_EQ(std::strtod(print::literal(x, print::Precision::twofold).c_str(), nullptr), static_cast<double>(x));
  }
  // Just above the middle between two floats, and on it when rounded to double first.
  const Quad middle = Quad{1} + Quad{0x1p-24};
  EXPECT_EQ(std::strtof(print::literal(middle + Quad{0x1p-60}, print::Precision::single).c_str(), nullptr),
            1 + 0x1p-23F);
}

} // namespace
} // namespace tfmgen
