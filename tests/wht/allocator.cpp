#include "allocator.hpp"

#include "guarded_block.hpp"
#include "tfmcore.h"

#include <gtest/gtest.h>

#include <map>

namespace tfmgen::test {

AllocatorLog allocatorLog;

namespace {

// Every block ends at an inaccessible page, is aligned to 16 bytes and no further, and is full of NaNs.
std::map<void*, GuardedBlock>& blocks() {
  static std::map<void*, GuardedBlock> all;
  return all;
}

} // namespace
} // namespace tfmgen::test

void* tfmMalloc(std::int32_t byteCount) {
  using namespace tfmgen::test;
  allocatorLog.sizes.push_back(byteCount);
  ++allocatorLog.live;
  GuardedBlock block(static_cast<std::size_t>(byteCount), Edge::end);
  void* const address = block.begin();
  blocks().emplace(address, std::move(block));
  return address;
}

void tfmFree(void* block) {
  using namespace tfmgen::test;
  --allocatorLog.live;
  if (blocks().erase(block) != 1) {
    ADD_FAILURE() << "tfmFree of a pointer that tfmMalloc has not given";
  }
}
