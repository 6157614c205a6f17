// What the transform computes, in every arrangement of the arrays.
#include "guarded.hpp"
#include "support.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <thread>

namespace tfmgen::test {
namespace {

template <class T>
class Dct4Values : public ::testing::Test {
protected:
  static constexpr long double kEpsilon = std::numeric_limits<T>::epsilon();

  static std::vector<T> transform(const std::vector<T>& x) {
    const Plan<T> plan(static_cast<std::int32_t>(x.size()));
    std::vector<T> y(x.size());
    EXPECT_EQ(Dct4<T>::run(x.data(), y.data(), plan()), tfmStsOk);
    return y;
  }
};
using Samples = ::testing::Types<Tfm32f, Tfm64f>;
TYPED_TEST_SUITE(Dct4Values, Samples);

TEST(Dct4Reference, DftAgreesWithDefinition) {
  for (const std::size_t n : {2U, 8U, 64U, 512U}) {
    const auto x = randomSamples<double>(n, 1);
    EXPECT_LT(maxError(dct4ByDft(x), dct4ByDefinition(x)), 1e-16L * static_cast<long double>(n)) << n;
  }
}

TYPED_TEST(Dct4Values, AgreeWithDefinition) {
  for (std::int32_t n = 2; n <= 2048; n *= 2) {
    const auto x = randomSamples<TypeParam>(n, 7);
    EXPECT_LT(relativeL2Error(this->transform(x), dct4ByDefinition(x)), 2 * this->kEpsilon) << n;
  }
}

TYPED_TEST(Dct4Values, AgreeWithReferenceAboveDefinition) {
  for (std::int32_t n = 4096; n <= 1 << 18; n *= 2) {
    const auto x = randomSamples<TypeParam>(n, 8);
    EXPECT_LT(relativeL2Error(this->transform(x), dct4ByDft(x)), 2 * this->kEpsilon) << n;
  }
}

// Every entry of the matrix is met by one impulse: a wrong sign or place shows at full size.
TYPED_TEST(Dct4Values, ImpulsesGiveTheMatrix) {
  for (const std::size_t n : {2U, 4U, 8U, 16U, 32U, 64U, 128U, 256U}) {
    const long double bound = n == 64 ? (sizeof(TypeParam) == 4 ? 2.3e-7L : 2.4e-14L) : 8 * this->kEpsilon;
    for (std::size_t at = 0; at < n; ++at) {
      const auto x = impulse<TypeParam>(n, at);
      EXPECT_LT(maxError(this->transform(x), dct4ByDefinition(x)), bound) << n << " at " << at;
    }
  }
}

TYPED_TEST(Dct4Values, ShortestLengthIsRoundedOnce) {
  const auto c = static_cast<TypeParam>(std::cos(std::numbers::pi_v<long double> / 8));
  const auto s = static_cast<TypeParam>(std::sin(std::numbers::pi_v<long double> / 8));
  EXPECT_EQ(this->transform({1, 0}), (std::vector<TypeParam>{c, s}));
  EXPECT_EQ(this->transform({0, 1}), (std::vector<TypeParam>{s, -c}));
}

TYPED_TEST(Dct4Values, TwoCallsMultiplyByHalfTheLength) {
  for (const std::size_t n : {8U, 1024U, 8192U}) {
    const auto x = randomSamples<TypeParam>(n, 9);
    std::vector<long double> expected(x.begin(), x.end());
    for (long double& value : expected) {
      value *= static_cast<long double>(n) / 2;
    }
    EXPECT_LT(relativeL2Error(this->transform(this->transform(x)), expected), 4 * this->kEpsilon) << n;
  }
}

TYPED_TEST(Dct4Values, SameBitsInPlaceMisalignedAndRepeated) {
  using T = TypeParam;
  for (std::int32_t n = 2; n <= 8192; n *= 2) {
    const auto count = static_cast<std::size_t>(n);
    const auto x = randomSamples<T>(count, 10);
    const Plan<T> plan(n);
    std::vector<T> expected(count);
    ASSERT_EQ(Dct4<T>::run(x.data(), expected.data(), plan()), tfmStsOk);
    const std::size_t bytes = count * sizeof(T);

    std::vector<T> inPlace = x;
    ASSERT_EQ(Dct4<T>::run(inPlace.data(), inPlace.data(), plan()), tfmStsOk);
    EXPECT_EQ(std::memcmp(inPlace.data(), expected.data(), bytes), 0) << n;

    // At any address, up to the first inaccessible byte and from the last one on.
    for (const std::size_t shift : {std::size_t{0}, std::size_t{1}, sizeof(T)}) {
      GuardedMemory src(bytes + shift);
      GuardedMemory dst(bytes + shift);
      std::byte* const from = src.array(bytes, Edge::end, shift);
      std::byte* const front = dst.array(bytes + shift, Edge::start);
      std::byte* const to = front + shift;
      std::memcpy(from, x.data(), bytes);
      ASSERT_EQ(Dct4<T>::run(reinterpret_cast<const T*>(from), reinterpret_cast<T*>(to), plan()), tfmStsOk);
      EXPECT_EQ(std::memcmp(to, expected.data(), bytes), 0) << n << " shifted by " << shift;
      EXPECT_EQ(std::memcmp(from, x.data(), bytes), 0) << "the source has changed";
      EXPECT_TRUE(std::all_of(front, to, [](std::byte b) { return b == std::byte{0xFF}; }));

      auto* const tail = dst.array<T>(bytes, Edge::end, shift);
      ASSERT_EQ(Dct4<T>::run(x.data(), tail, plan()), tfmStsOk);
      EXPECT_EQ(std::memcmp(static_cast<void*>(tail), expected.data(), bytes), 0) << n;
    }
  }
}

TYPED_TEST(Dct4Values, OddLengthThatPassesLeavesGapsAndTouchesTheElementBehind) {
  using T = TypeParam;
  const Plan<T> plan(33);
  constexpr T kOld = 77;
  std::vector<T> y(35, kOld);
  auto x = impulse<T>(35, 33); // the element behind the last one is read
  ASSERT_EQ(Dct4<T>::run(x.data(), y.data(), plan()), tfmStsOk);
  for (std::size_t k = 0; k < y.size(); ++k) {
    const bool gap = k == 4 || k == 5 || k == 12 || k == 13 || k == 20 || k == 21 || k == 28 || k == 29 || k == 34;
    EXPECT_EQ(y[k] == kOld, gap) << k;
  }
  EXPECT_TRUE(std::any_of(y.begin(), y.end(), [](T value) { return value != 0 && value != kOld; }));

  constexpr std::size_t bytes = 34 * sizeof(T);
  GuardedMemory src(bytes);
  GuardedMemory dst(bytes);
  EXPECT_EQ(Dct4<T>::run(src.array<T>(bytes, Edge::end), dst.array<T>(bytes, Edge::end), plan()), tfmStsOk);
}

// Of a plan of 2 to 32 only the kind is read: it may lie in read-only memory and serve many threads.
TYPED_TEST(Dct4Values, ShortPlansAreReadOnlyAndShared) {
  using T = TypeParam;
  for (std::int32_t n = 2; n <= 32; n *= 2) {
    GuardedMemory buffer(256);
    TfmgDCT4Plan* plan = nullptr;
    ASSERT_EQ(Dct4<T>::init(&plan, n, buffer.array(256, Edge::start)), tfmStsOk);
    buffer.makeReadOnly();
    std::vector<std::thread> threads;
    std::vector<int> faults(4);
    for (unsigned i = 0; i < faults.size(); ++i) {
      threads.emplace_back([&, i] {
        const auto x = randomSamples<T>(n, i);
        const auto expected = this->transform(x);
        for (int round = 0; round < 200; ++round) {
          std::vector<T> y(x.size());
          faults[i] += Dct4<T>::run(x.data(), y.data(), plan) != tfmStsOk || y != expected;
        }
      });
    }
    for (std::thread& thread : threads) {
      thread.join();
    }
    EXPECT_EQ(faults, std::vector<int>(4)) << n;
  }
}

TYPED_TEST(Dct4Values, PlansOfOneLengthRunSideBySide) {
  using T = TypeParam;
  const auto x = randomSamples<T>(4096, 3);
  const auto expected = this->transform(x);
  std::vector<std::thread> threads;
  std::vector<int> faults(3);
  threads.reserve(faults.size());
  for (int& fault : faults) {
    threads.emplace_back([&] {
      const Plan<T> plan(4096);
      for (int round = 0; round < 50; ++round) {
        std::vector<T> y(x.size());
        fault += Dct4<T>::run(x.data(), y.data(), plan()) != tfmStsOk || y != expected;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(faults, std::vector<int>(3));
}

TYPED_TEST(Dct4Values, ChecksOfACall) {
  using T = TypeParam;
  const Plan<T> plan(8);
  std::vector<T> x(8, 1);
  std::vector<T> y(8, 5);
  EXPECT_EQ(Dct4<T>::run(nullptr, y.data(), plan()), tfmStsNullPtr);
  EXPECT_EQ(Dct4<T>::run(x.data(), nullptr, plan()), tfmStsNullPtr);
  EXPECT_EQ(Dct4<T>::run(x.data(), y.data(), nullptr), tfmStsNullPtr);
  EXPECT_EQ(y, std::vector<T>(8, 5));
}

} // namespace
} // namespace tfmgen::test
