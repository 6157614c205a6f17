// Status of every entry by its arguments, and what a failed call leaves alone.
#include "families.hpp"
#include "random.hpp"

#include <algorithm>
#include <climits>

namespace tfmgen::test {
namespace {

constexpr std::int32_t kBadFlags[] = {0,  3,  5,  6,   7,   9,       10,      12, 13, 14,     15,
                                      16, 17, 24, 128, 264, 1 << 20, INT_MIN, -1, -8, INT_MAX};
constexpr std::size_t kRoom = 64 * 16 + 32;

// An array with surroundings, at a displacement from a 16-byte boundary.
struct Array {
  alignas(64) std::byte bytes[kRoom];
  std::byte* at(std::size_t displacement) { return bytes + 16 + displacement; }
};

TfmStatus expectedStatus(const void* src, const void* dst, std::int32_t flag) {
  if (src == nullptr || dst == nullptr) {
    return tfmStsNullPtr;
  }
  return std::find(kFlags.begin(), kFlags.end(), flag) == kFlags.end() ? tfmStsBadFlag : tfmStsOk;
}

TEST(Statuses, FollowPointersThenFlagInBothBodies) {
  forEachEntry([](const Entry& entry) {
    Array source;
    Array destination;
    Array before;
    const auto values = Random(1).bytesOfReals(entry.family.realBytes, entry.sourceReals() + 4, Spread::uniform);
    std::memset(before.bytes, 0xA5, kRoom);

    const auto check = [&](std::byte* src, std::byte* dst, std::int32_t flag) {
      std::copy(values.begin(), values.end(), source.bytes + 16);
      std::memset(destination.bytes, 0xA5, kRoom);
      const TfmStatus expected = expectedStatus(src, dst, flag);
      ASSERT_EQ(entry(src, dst, flag), expected) << "src " << src << " dst " << dst << " flag " << flag;
      if (expected != tfmStsOk) {
        ASSERT_EQ(std::memcmp(destination.bytes, before.bytes, kRoom), 0) << "destination touched";
      }
      ASSERT_EQ(std::memcmp(source.bytes + 16, values.data(), values.size()), 0) << "source touched";
    };
    for (std::byte* const src : {static_cast<std::byte*>(nullptr), source.at(0), source.at(8)}) {
      for (std::byte* const dst : {static_cast<std::byte*>(nullptr), destination.at(0), destination.at(8)}) {
        for (const std::int32_t flag : kBadFlags) {
          check(src, dst, flag);
        }
        for (const std::int32_t flag : kFlags) {
          check(src, dst, flag);
        }
      }
    }
  });
}

} // namespace
} // namespace tfmgen::test
