// The exported functions: statuses in their order, nothing touched by a call that fails or has nothing to do, and each
// name bound to its transform.
#include "cases.hpp"

#include <thread>

namespace tfmgen::test {
namespace {

constexpr std::int32_t kGoodFlag = TFM_NO_DIV;

TEST(BatchEntries, StatusesInOrder) {
  alignas(16) std::byte memory[2][2048];
  const TfmbLayout layout{1, 66};
  for (const BatchFamily& family : batchFamilies()) {
    SCOPED_TRACE(family.name);
    std::memset(memory, 0x5A, sizeof memory);
    const auto call = [&](const void* src, void* dst, std::int32_t len, std::int64_t count, std::int32_t flag) {
      return family.call(src, layout, dst, layout, len, count, flag);
    };
    for (const std::int32_t len : {-1, 0, 1, 65, 1 << 30}) {
      EXPECT_EQ(call(nullptr, nullptr, len, 1, 0), tfmStsBadSize);
      EXPECT_EQ(call(memory[0], memory[1], len, 0, kGoodFlag), tfmStsBadSize);
    }
    for (const std::int64_t count : {std::int64_t{-1}, std::numeric_limits<std::int64_t>::min()}) {
      EXPECT_EQ(call(nullptr, nullptr, 8, count, 0), tfmStsBadSize);
      EXPECT_EQ(call(memory[0], memory[1], 8, count, kGoodFlag), tfmStsBadSize);
    }
    for (const std::int64_t count : {0, 1, 2, 100}) {
      EXPECT_EQ(call(nullptr, memory[1], 8, count, 0), tfmStsNullPtr);
      EXPECT_EQ(call(memory[0], nullptr, 64, count, kGoodFlag), tfmStsNullPtr);
      for (const std::int32_t flag : {-1, 0, 3, 5, 12, 16}) {
        EXPECT_EQ(call(memory[0], memory[1], 2, count, flag), tfmStsBadFlag);
      }
    }
    for (const std::int32_t flag : kFlags) {
      EXPECT_EQ(call(memory[0], memory[1], 64, 0, flag), tfmStsOk);
    }
    for (const std::byte value : memory[1]) {
      ASSERT_EQ(value, std::byte{0x5A});
    }
  }
}

// One batch split among threads as the header tells, against single calls.
TEST(BatchEntries, PartsOfABatchInThreads) {
  constexpr std::int64_t count = 203;
  for (const BatchFamily& family : batchFamilies()) {
    SCOPED_TRACE(family.name);
    const Family& single = family.single;
    for (const int n : {5, 24}) {
      const std::size_t inBytes = family.sourceLength(n) * single.elementBytes();
      const std::size_t outBytes = family.destinationLength(n) * single.elementBytes();
      const TfmbLayout from{1, static_cast<std::int64_t>(family.sourceLength(n))};
      const TfmbLayout to{1, static_cast<std::int64_t>(family.destinationLength(n))};
      Random random(3);
      std::vector<std::byte> source(inBytes * count);
      fill(source, single.realBytes, random, Numbers::wide);
      std::vector<std::byte> expected(outBytes * count);
      std::vector<std::byte> actual(outBytes * count);
      for (std::size_t f = 0; f < count; ++f) {
        single.general(source.data() + f * inBytes, expected.data() + f * outBytes, n, TFM_DIV_BY_SQRTN);
      }
      std::vector<std::thread> threads;
      struct Part {
        std::size_t first;
        std::int64_t count;
      };
      for (const auto [first, part] : {Part{0, 64}, Part{64, 1}, Part{65, 5}, Part{70, 58}, Part{128, count - 128}}) {
        threads.emplace_back([&, first = first, part = part] {
          family.call(source.data() + first * inBytes, from, actual.data() + first * outBytes, to, n, part,
                      TFM_DIV_BY_SQRTN);
        });
      }
      for (std::thread& thread : threads) {
        thread.join();
      }
      ASSERT_TRUE(sameBits(expected.data(), actual.data(), expected.size(), single.realBytes)) << "length " << n;
    }
  }
}

} // namespace
} // namespace tfmgen::test
