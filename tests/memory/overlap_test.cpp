// Source and destination in the same memory.
#include "bits.hpp"
#include "families.hpp"
#include "random.hpp"

#include <algorithm>

namespace tfmgen::test {
namespace {

constexpr std::size_t kLargest = 1024; // bytes of an array

struct Case {
  std::vector<std::byte> values;
  alignas(16) std::byte expected[kLargest];

  explicit Case(const Entry& entry)
      : values(Random(7).bytesOfReals(entry.family.realBytes, entry.sourceReals(), Spread::uniform)) {
    alignas(16) std::byte source[kLargest];
    std::copy(values.begin(), values.end(), source);
    EXPECT_EQ(entry(source, expected, TFM_DIV_BY_SQRTN), tfmStsOk);
  }
};

TEST(Overlap, InPlaceGivesTheBitsOfSeparateArrays) {
  forEachEntry([](const Entry& entry) {
    const Case test(entry);
    for (std::size_t displacement = 0; displacement < 16; ++displacement) {
      alignas(16) std::byte field[kLargest + 16];
      std::byte* const array = field + displacement;
      std::copy(test.values.begin(), test.values.end(), array);
      ASSERT_EQ(entry(array, array, TFM_DIV_BY_SQRTN), tfmStsOk);
      ASSERT_TRUE(sameBits(test.expected, array, entry.destinationBytes(), entry.family.realBytes))
          << "displacement " << displacement;
      // The spectrum of an inverse transform in CCS format is longer than the signal; its end stays.
      for (std::size_t i = entry.destinationBytes(); i < entry.sourceBytes(); ++i) {
        ASSERT_EQ(array[i], test.values[i]) << "byte " << i;
      }
    }
  });
}

// Only complex transforms promise it: they read the whole source before their first store.
TEST(Overlap, AnyShiftOfAComplexDestinationGivesTheBitsOfSeparateArrays) {
  forEachEntry([](const Entry& entry) {
    if (!entry.family.isComplex()) {
      return;
    }
    const Case test(entry);
    const std::size_t bytes = entry.sourceBytes();
    alignas(16) std::byte field[2 * kLargest];
    for (std::size_t shift = 1; shift < bytes; ++shift) {
      const auto check = [&](std::byte* src, std::byte* dst) {
        std::copy(test.values.begin(), test.values.end(), src);
        ASSERT_EQ(entry(src, dst, TFM_DIV_BY_SQRTN), tfmStsOk);
        ASSERT_TRUE(sameBits(test.expected, dst, bytes, entry.family.realBytes))
            << "shift of " << dst - src << " bytes";
      };
      check(field, field + shift);
      check(field + shift, field);
    }
  });
}

} // namespace
} // namespace tfmgen::test
