// The general entries: length first, then whatever the routine of that length says.
#include "bits.hpp"
#include "families.hpp"
#include "random.hpp"

#include <climits>

namespace tfmgen::test {
namespace {

constexpr std::size_t kRoom = (kLongest + 2) * 16;

TEST(GeneralEntry, RefusesOtherLengthsBeforeItLooksAtAnythingElse) {
  alignas(16) std::byte source[kRoom] = {};
  alignas(16) std::byte destination[kRoom] = {};
  const std::byte before[kRoom] = {};
  constexpr std::int32_t lengths[] = {INT_MIN, INT_MIN + 2, INT_MIN + 64, -65536,        -64,    -2, -1, 0, 1, 65, 66,
                                      128,     256 + 8,     65536 + 8,    (1 << 30) + 8, INT_MAX};
  for (const Family& family : families()) {
    SCOPED_TRACE(family.name);
    for (const std::int32_t len : lengths) {
      for (const std::int32_t flag : {8, 0}) {
        EXPECT_EQ(family.general(source, destination, len, flag), tfmStsBadSize) << len;
        EXPECT_EQ(family.general(nullptr, destination, len, flag), tfmStsBadSize) << len;
        EXPECT_EQ(family.general(source, nullptr, len, flag), tfmStsBadSize) << len;
      }
    }
    EXPECT_EQ(std::memcmp(destination, before, kRoom), 0) << "destination touched";
  }
}

TEST(GeneralEntry, HandsOverToTheRoutineOfTheLength) {
  forEachEntry([](const Entry& entry) {
    const Family& family = entry.family;
    alignas(16) std::byte source[kRoom] = {};
    const auto values = Random(2).bytesOfReals(family.realBytes, entry.sourceReals(), Spread::uniform);
    std::copy(values.begin(), values.end(), source);
    for (const std::int32_t flag : kFlags) {
      // A routine of another length would write less or more than the right one.
      alignas(16) std::byte expected[kRoom] = {};
      alignas(16) std::byte actual[kRoom] = {};
      ASSERT_EQ(entry(source, expected, flag), tfmStsOk);
      ASSERT_EQ(family.general(source, actual, entry.n, flag), tfmStsOk);
      ASSERT_TRUE(sameBits(expected, actual, kRoom, family.realBytes)) << "flag " << flag;
    }
    ASSERT_EQ(family.general(source, source, entry.n, 99), tfmStsBadFlag);
    ASSERT_EQ(family.general(nullptr, source, entry.n, 99), tfmStsNullPtr);
    ASSERT_EQ(family.general(source, nullptr, entry.n, TFM_NO_DIV), tfmStsNullPtr);
  });
}

} // namespace
} // namespace tfmgen::test
