#include "tfmcore.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <cstring>
#include <set>
#include <vector>

namespace {

TEST(CoreMemory, BlocksStartAtACacheLineAndAreUsableToTheirEnd) {
  std::vector<void*> blocks;
  for (const std::int32_t bytes : {1, 15, 16, 63, 64, 65, 1000, 4096, 1 << 20}) {
    void* const block = tfmMalloc(bytes);
    ASSERT_NE(block, nullptr) << bytes;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 64, 0U) << bytes;
    std::memset(block, 0x5A, static_cast<std::size_t>(bytes));
    blocks.push_back(block);
  }
  EXPECT_EQ(std::set<void*>(blocks.begin(), blocks.end()).size(), blocks.size());
  for (void* const block : blocks) {
    tfmFree(block);
  }
}

TEST(CoreMemory, CountOfZeroGivesABlockOfItsOwn) {
  void* const first = tfmMalloc(0);
  void* const second = tfmMalloc(0);
  EXPECT_NE(first, nullptr);
  EXPECT_NE(second, nullptr);
  EXPECT_NE(first, second);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(first) % 64, 0U);
  tfmFree(first);
  tfmFree(second);
}

TEST(CoreMemory, NegativeCountGivesNull) {
  for (const std::int32_t bytes : {-1, -64, INT_MIN}) {
    EXPECT_EQ(tfmMalloc(bytes), nullptr) << bytes;
  }
}

TEST(CoreMemory, LargestCountIsServedOrRefused) {
  void* const block = tfmMalloc(INT_MAX);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 64, 0U);
  tfmFree(block);
}

TEST(CoreMemory, FreeAcceptsNull) {
  tfmFree(nullptr);
}

} // namespace
