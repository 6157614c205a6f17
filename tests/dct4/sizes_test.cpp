// Which lengths have a plan, and how large its buffer is.
#include "dct4.hpp"
#include "dct4_sizes.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace tfmgen::test {
namespace {

template <class T>
class Dct4Sizes : public ::testing::Test {
protected:
  static void check(std::int64_t n) {
    constexpr std::int32_t kOld = -12345;
    std::int32_t size = kOld;
    const TfmStatus status = Dct4<T>::getSize(static_cast<std::int32_t>(n), &size);
    if (!dct4Accepts<T>(n)) {
      ASSERT_EQ(status, tfmStsBadSize) << n;
      ASSERT_EQ(size, kOld) << n;
    } else {
      ASSERT_EQ(status, tfmStsOk) << n;
      ASSERT_EQ(size, static_cast<std::int32_t>(dct4Size<T>(n))) << n;
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
