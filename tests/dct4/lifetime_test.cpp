// How plans come and go: checks, ownership, the arena word, allocator calls.
#include "allocator.hpp"
#include "guarded.hpp"
#include "support.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

namespace tfmgen::test {
namespace {

void* atAddress(std::uintptr_t address) {
  return reinterpret_cast<void*>(address); // NOLINT(performance-no-int-to-ptr): the tests choose addresses
}

template <class T>
class Dct4Lifetime : public ::testing::Test {
protected:
  void SetUp() override { allocatorLog = {}; }
  void TearDown() override { allocatorLog = {}; }

  // A pointer that is left as it is; nothing is behind it.
  static TfmgDCT4Plan* marker() { return static_cast<TfmgDCT4Plan*>(atAddress(64)); }

  static std::uintptr_t word(const void* buffer) {
    std::uintptr_t value = 0;
    std::memcpy(&value, buffer, sizeof(value));
    return value;
  }
};
using Samples = ::testing::Types<Tfm32f, Tfm64f>;
TYPED_TEST_SUITE(Dct4Lifetime, Samples);

TYPED_TEST(Dct4Lifetime, PointersAreCheckedFirst) {
  using A = Dct4<TypeParam>;
  TfmgDCT4Plan* plan = this->marker();
  alignas(32) std::byte buffer[256] = {};
  EXPECT_EQ(A::init(nullptr, 1, buffer), tfmStsNullPtr);
  EXPECT_EQ(A::init(&plan, 1, nullptr), tfmStsNullPtr);
  EXPECT_EQ(A::initAlloc(nullptr, 1), tfmStsNullPtr);
  EXPECT_EQ(A::free(nullptr), tfmStsNullPtr);
  EXPECT_EQ(plan, this->marker());
  EXPECT_TRUE(std::all_of(std::begin(buffer), std::end(buffer), [](std::byte b) { return b == std::byte{0}; }));
  EXPECT_TRUE(allocatorLog.sizes.empty());
  EXPECT_TRUE(allocatorLog.freed.empty());
}

TYPED_TEST(Dct4Lifetime, OneAllocationThatFreeReturnsWithTheArenaUnwound) {
  using A = Dct4<TypeParam>;
  for (const std::int32_t length : {2, 32, 33, 64, 1024, 4096, 131072}) {
    allocatorLog = {};
    TfmgDCT4Plan* plan = nullptr;
    std::int32_t size = 0;
    ASSERT_EQ(A::getSize(length, &size), tfmStsOk);
    ASSERT_EQ(A::initAlloc(&plan, length), tfmStsOk);
    EXPECT_EQ(A::free(plan), tfmStsOk);
    EXPECT_EQ(allocatorLog.sizes, std::vector{size});
    EXPECT_EQ(allocatorLog.freed, std::vector{allocatorLog.lastBlock});
    EXPECT_EQ(allocatorLog.wordAtFree, reinterpret_cast<std::uintptr_t>(plan)) << length;
  }
}

TYPED_TEST(Dct4Lifetime, RefusedLengthsAllocateNothing) {
  for (const std::int32_t length : {-64, 0, 1, 3, 48, 96, 1000, 1 << 28}) {
    TfmgDCT4Plan* plan = this->marker();
    EXPECT_EQ(Dct4<TypeParam>::initAlloc(&plan, length), tfmStsBadSize) << length;
    EXPECT_EQ(plan, this->marker());
  }
  EXPECT_TRUE(allocatorLog.sizes.empty());
  EXPECT_TRUE(allocatorLog.freed.empty());
}

TYPED_TEST(Dct4Lifetime, FailedAllocationIsANullPointer) {
  allocatorLog.failing = true;
  TfmgDCT4Plan* plan = this->marker();
  EXPECT_EQ(Dct4<TypeParam>::initAlloc(&plan, 64), tfmStsNullPtr);
  EXPECT_EQ(plan, this->marker());
  EXPECT_EQ(allocatorLog.sizes.size(), 1U);
  EXPECT_EQ(allocatorLog.freed, std::vector<void*>{nullptr});
}

// Refusals come out of the build, which has written into the buffer; the bookkeeping of its way back counts scratch
// that was never taken.
TEST(Dct4Refusal, LeavesThePlanPointerAndUnwindsTheArena) {
  struct Case {
    std::int32_t length;
    std::ptrdiff_t word32f; // distance from the buffer to the arena word
    std::ptrdiff_t word64f;
  };
  constexpr std::ptrdiff_t kAccepted = 1;
  const auto up32 = [](std::ptrdiff_t bytes) { return (bytes + 31) / 32 * 32; };
  const std::int32_t odd = 1001;
  for (const Case& refused : {Case{0, 64, 64}, Case{1, 32, 32}, Case{-8, 64 + 32, 64 + 64}, Case{17, -32, kAccepted},
                              Case{56, -160, 64 - 448}, Case{odd, 64 - up32(4L * odd), 64 - up32(8L * odd)},
                              // 64-bit: a column of 12 is split by 2, and its columns of 6 once more before the refusal
                              Case{96, 64 - 384, 64 - 3 * 768}}) {
    const auto check = [&]<class T>(T /*sample*/, std::ptrdiff_t word) {
      if (word == kAccepted) {
        return;
      }
      std::vector<std::byte> memory(8192);
      std::byte* buffer = memory.data() + (32 - reinterpret_cast<std::uintptr_t>(memory.data()) % 32);
      auto* const marker = reinterpret_cast<TfmgDCT4Plan*>(buffer);
      TfmgDCT4Plan* plan = marker;
      EXPECT_EQ(Dct4<T>::init(&plan, refused.length, buffer), tfmStsBadSize) << refused.length;
      EXPECT_EQ(plan, marker);
      std::uintptr_t actual = 0;
      std::memcpy(&actual, buffer, sizeof(actual));
      EXPECT_EQ(static_cast<std::ptrdiff_t>(actual - reinterpret_cast<std::uintptr_t>(buffer)), word)
          << refused.length << ", " << sizeof(T) << " bytes";
    };
    check(Tfm32f{}, refused.word32f);
    check(Tfm64f{}, refused.word64f);
  }
}

TYPED_TEST(Dct4Lifetime, BufferStartsAtAnyAddress) {
  using A = Dct4<TypeParam>;
  for (const std::int32_t length : {2, 16, 64, 4096}) {
    std::int32_t size = 0;
    ASSERT_EQ(A::getSize(length, &size), tfmStsOk);
    const auto x = randomSamples<TypeParam>(length, 2);
    std::vector<TypeParam> expected(x.size());
    const Plan<TypeParam> aligned(length);
    ASSERT_EQ(A::run(x.data(), expected.data(), aligned()), tfmStsOk);
    for (const std::uintptr_t shift : {0U, 1U, 8U, 16U, 31U}) {
      // No byte in front of the buffer, and none behind the size but for the 31 of a negative remainder.
      const auto room = static_cast<std::size_t>(size) + 32;
      GuardedMemory memory(room + shift);
      std::byte* buffer = memory.array(room + shift, Edge::start) + shift;
      const bool negative = ((reinterpret_cast<std::uintptr_t>(buffer) >> 31) & 1) != 0 && shift != 0;
      TfmgDCT4Plan* plan = nullptr;
      ASSERT_EQ(A::init(&plan, length, buffer), tfmStsOk);
      EXPECT_EQ(reinterpret_cast<std::byte*>(plan) - buffer, static_cast<std::ptrdiff_t>((negative ? 96 : 64) - shift));
      std::vector<TypeParam> y(x.size());
      ASSERT_EQ(A::run(x.data(), y.data(), plan), tfmStsOk);
      EXPECT_EQ(y, expected);
      std::byte* const end = buffer + size + (negative ? 32 - shift : 0);
      EXPECT_TRUE(std::all_of(end, buffer - shift + room, [](std::byte b) { return b == std::byte{0xFF}; }));
    }
  }
}

// The same rule at chosen addresses, on both sides of bit 31.
TYPED_TEST(Dct4Lifetime, FirstRecordFollowsTheSignOfTheLowAddressHalf) {
  for (const std::uintptr_t base : {std::uintptr_t{0x700040000000}, std::uintptr_t{0x7000c0000000}}) {
    void* block =
        mmap(atAddress(base), 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    if (block != atAddress(base)) {
      GTEST_SKIP() << "the address is taken";
    }
    auto* buffer = static_cast<std::byte*>(block) + 8;
    TfmgDCT4Plan* plan = nullptr;
    ASSERT_EQ(Dct4<TypeParam>::init(&plan, 32, buffer), tfmStsOk);
    const bool negative = (base & 0x80000000U) != 0;
    EXPECT_EQ(reinterpret_cast<std::byte*>(plan) - buffer, negative ? 88 : 56);
    EXPECT_EQ(this->word(buffer), reinterpret_cast<std::uintptr_t>(plan) + 192);
    munmap(block, 4096);
  }
}

TYPED_TEST(Dct4Lifetime, ABufferServesOnePlanAfterAnother) {
  using A = Dct4<TypeParam>;
  std::vector<std::byte> memory(256 + 32);
  std::byte* buffer = memory.data() + (32 - reinterpret_cast<std::uintptr_t>(memory.data()) % 32);
  for (std::int32_t length = 32; length >= 2; length /= 2) {
    TfmgDCT4Plan* plan = nullptr;
    ASSERT_EQ(A::init(&plan, length, buffer), tfmStsOk);
    const auto x = impulse<TypeParam>(length, 0);
    std::vector<TypeParam> y(x.size());
    ASSERT_EQ(A::run(x.data(), y.data(), plan), tfmStsOk);
    EXPECT_LT(maxError(y, dct4ByDefinition(x)), 1e-6L);
  }
}

} // namespace
} // namespace tfmgen::test
