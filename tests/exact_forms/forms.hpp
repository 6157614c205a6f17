// Kernels against their forms: the same operations in the order and the orientation in which the form states them, one
// rounding each, in plain scalars. Results are compared bit for bit, signs of zeros included; of a NaN only that it is
// one.
#pragma once

#include "bits.hpp"
#include "random.hpp"
#include "tfmgen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace tfmgen::test {

// Calls visit(x) for vectors x of `count` numbers: all those of zeros and ones of both signs where they are few enough;
// many periodic ones of these with a few changes, since their sums cancel; random ones of these and of other numbers,
// and of many magnitudes.
template <class Real, class Visit>
void forEachInput(std::size_t count, const Visit& visit) {
  constexpr std::array<Real, 10> kValues{Real(0),
                                         -Real(0),
                                         1,
                                         -1,
                                         3,
                                         Real(-0.3),
                                         Real(0.1),
                                         Real(-1e-20),
                                         -std::numeric_limits<Real>::denorm_min(),
                                         std::numeric_limits<Real>::infinity()};
  constexpr std::size_t kUnits = 4; // zeros and ones, the first of the values
  constexpr std::size_t kLongestExhaustive = 8;
  constexpr int kTrials = 400;
  std::vector<Real> x(count);
  if (count <= kLongestExhaustive) {
    for (std::size_t code = 0; code < std::size_t{1} << (2 * count); ++code) {
      for (std::size_t i = 0; i < count; ++i) {
        x[i] = kValues[code >> (2 * i) & (kUnits - 1)];
      }
      visit(x);
    }
  }
  Random random(count);
  for (int trial = 0; trial < kTrials; ++trial) {
    for (const std::size_t period : {1U, 2U, 3U, 4U, 5U, 8U, 16U}) {
      for (std::size_t i = 0; i < count; ++i) {
        x[i] = i < period ? kValues[random.bits() % (trial % 2 == 0 ? 2 : kUnits)] : x[i - period];
      }
      for (auto changes = random.bits() % 4; changes > 0; --changes) {
        x[random.bits() % count] = kValues[random.bits() % kUnits]; // NOLINT(clang-analyzer-core.DivideZero)
      }
      visit(x);
    }
    for (const std::size_t choices : {kUnits, kValues.size() - 1, kValues.size()}) {
      std::ranges::generate(x, [&] { return kValues[random.bits() % choices]; });
      visit(x);
    }
    visit(random.reals<Real>(count, trial % 2 == 0 ? Spread::uniform : Spread::wide));
  }
}

template <class Real>
::testing::AssertionResult sameNumbers(const std::vector<Real>& expected, std::span<const Real> actual) {
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const bool areNaNs = std::isnan(expected[i]) && std::isnan(actual[i]);
    if (!areNaNs && bitsAt(&expected[i], sizeof(Real)) != bitsAt(&actual[i], sizeof(Real))) {
      return ::testing::AssertionFailure() << "result " << i << " is " << actual[i] << " and should be " << expected[i];
    }
  }
  return ::testing::AssertionSuccess();
}

template <class Real>
struct Places {
  Real* source;
  Real* result;
};

// Compares form(x, flag) with what run(x, places, flag) writes from places.source to places.result, for every flag and
// at places on 16-byte boundaries and off them.
template <class Real, class Form, class Run>
void expectForm(std::size_t count, std::size_t results, std::span<const std::int32_t> flags, const Form& form,
                const Run& run) {
  constexpr std::size_t kDisplaced = 16 / sizeof(Real) - 1;
  struct alignas(16) Block {
    std::array<Real, 16 / sizeof(Real)> reals;
  };
  std::vector<Block> source((count + results + kDisplaced) * sizeof(Real) / sizeof(Block) + 2);
  std::vector<Block> result(source);
  std::size_t turn = 0;
  bool isExact = true; // the first difference of a kernel is enough
  forEachInput<Real>(count, [&](const std::vector<Real>& x) {
    if (!isExact) {
      return;
    }
    const std::int32_t flag = flags[turn % flags.size()];
    const std::size_t displacement = turn / flags.size() % 2 * kDisplaced;
    ++turn;
    const Places<Real> at{source.front().reals.data() + displacement, result.front().reals.data() + displacement};
    ASSERT_EQ(run(x, at, flag), tfmStsOk);
    const auto comparison = sameNumbers<Real>(form(x, flag), {at.result, results});
    isExact = static_cast<bool>(comparison);
    EXPECT_TRUE(comparison) << "flag " << flag << ", input " << ::testing::PrintToString(x);
  });
}

} // namespace tfmgen::test
