// Which lengths have a plan, and how large its buffer is, stated apart from the library's walk: accepted lengths by
// their form, sizes by what a plan of that form holds.
#include "dct4.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <limits>

namespace tfmgen::test {
namespace {

constexpr std::int64_t up32(std::int64_t bytes) {
  return (bytes + 31) / 32 * 32;
}

// The factor that a level takes when its length is a power of two of at least 32.
constexpr std::int64_t factorOf(std::int64_t length) {
  return length >= 1024 ? 32 : length >= 256 ? 16 : length >= 64 ? 8 : 4;
}

// Length N = 2^k or 2^k + 1 from 33 (32-bit) or 9 (64-bit) on: the table of the top level has one N B rounded by the
// lengths 2^k; each level has its records and N samples of scratch.
template <class T>
std::int64_t expectedSize(std::int64_t length) {
  const auto power = static_cast<std::int64_t>(std::bit_floor(static_cast<std::uint64_t>(length)));
  const auto b = static_cast<std::int64_t>(sizeof(T));
  std::int64_t f = power == 8 || power == 16 ? 2 : factorOf(power);
  std::int64_t size = 1312 + power * b + up32(length * b);
  for (std::int64_t m = power / f; m > 64; m /= f) {
    f = factorOf(m);
    size += 800 + up32(m / (2 * f) * (2 * f - 2) * 16) + up32(length * b);
  }
  return size;
}

template <class T>
class Dct4Sizes : public ::testing::Test {
protected:
  static constexpr int kLastExponent = sizeof(T) == 4 ? 26 : 25;
  static constexpr int kFirstOddExponent = sizeof(T) == 4 ? 5 : 3;

  static bool accepted(std::int64_t n) {
    const bool odd = n > 4 && n % 2 == 1;
    const std::int64_t power = odd ? n - 1 : n;
    if (power < 2 || !std::has_single_bit(static_cast<std::uint64_t>(power))) {
      return false;
    }
    const int exponent = std::countr_zero(static_cast<std::uint64_t>(power));
    return (exponent >= (odd ? kFirstOddExponent : 1) && exponent <= kLastExponent) || wrapped(power);
  }

  // Too long for a size of 32 bits, and accepted with what is left of it.
  static bool wrapped(std::int64_t power) { return power == 1 << 30 || (sizeof(T) == 8 && power == 1 << 29); }

  static void check(std::int64_t n) {
    constexpr std::int32_t kOld = -12345;
    std::int32_t size = kOld;
    const TfmStatus status = Dct4<T>::getSize(static_cast<std::int32_t>(n), &size);
    if (!accepted(n)) {
      ASSERT_EQ(status, tfmStsBadSize) << n;
      ASSERT_EQ(size, kOld) << n;
    } else {
      ASSERT_EQ(status, tfmStsOk) << n;
      const bool fixed = n <= 32 && std::has_single_bit(static_cast<std::uint64_t>(n));
      ASSERT_EQ(size, static_cast<std::int32_t>(fixed ? 256 : expectedSize<T>(n))) << n;
    }
  }
};
using Samples = ::testing::Types<Tfm32f, Tfm64f>;
TYPED_TEST_SUITE(Dct4Sizes, Samples);

TYPED_TEST(Dct4Sizes, EveryLengthUpToAMillion) {
  for (std::int64_t n = -2000; n <= 1'000'000; ++n) {
    ASSERT_NO_FATAL_FAILURE(this->check(n));
  }
}

TYPED_TEST(Dct4Sizes, AroundAndBetweenTheLargePowers) {
  for (int exponent = 19; exponent <= 30; ++exponent) {
    const std::int64_t power = std::int64_t{1} << exponent;
    for (std::int64_t n = power - 70; n <= power + 70; ++n) {
      ASSERT_NO_FATAL_FAILURE(this->check(n));
    }
    for (const std::int64_t eighths : {9, 10, 11, 12, 13, 14, 15}) {
      ASSERT_NO_FATAL_FAILURE(this->check(power / 8 * eighths));
    }
  }
  for (const auto n : {std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max(), -64}) {
    ASSERT_NO_FATAL_FAILURE(this->check(n));
  }
}

TEST(Dct4SizesInNumbers, PublishedFigures) {
  struct Figure {
    std::int32_t length;
    std::int32_t size32f;
    std::int32_t size64f;
  };
  for (const Figure& figure :
       {Figure{2, 256, 256}, Figure{32, 256, 256}, Figure{33, 1600, 1856}, Figure{64, 1824, 2336},
        Figure{128, 2336, 3360}, Figure{1024, 9504, 17696}, Figure{4096, 53056, 102208}, Figure{65536, 820288, 1606720},
        Figure{131072, 2165344, 4262496}, Figure{1 << 30, 536874912, 536874912}}) {
    std::int32_t size = 0;
    EXPECT_EQ(tfmgDCT4GetSize_32f(figure.length, &size), tfmStsOk);
    EXPECT_EQ(size, figure.size32f) << figure.length;
    EXPECT_EQ(tfmgDCT4GetSize_64f(figure.length, &size), tfmStsOk);
    EXPECT_EQ(size, figure.size64f) << figure.length;
  }
  std::int32_t size = 0;
  EXPECT_EQ(tfmgDCT4GetSize_64f(9, &size), tfmStsOk);
  EXPECT_EQ(size, 1472);
}

} // namespace
} // namespace tfmgen::test
