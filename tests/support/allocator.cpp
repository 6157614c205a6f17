#include "allocator.hpp"

#include "guarded.hpp"
#include "tfmcore.h"

#include <gtest/gtest.h>

#include <map>
#include <mutex>

namespace tfmgen::test {

AllocatorLog allocatorLog;

namespace {

std::mutex allocatorMutex;

// Every block ends at an inaccessible page, is aligned to 16 bytes and no further, and is full of NaNs.
std::map<void*, GuardedMemory>& blocks() {
  static std::map<void*, GuardedMemory> all;
  return all;
}

} // namespace
} // namespace tfmgen::test

void* tfmMalloc(std::int32_t byteCount) {
  using namespace tfmgen::test;
  const std::lock_guard lock(allocatorMutex);
  allocatorLog.sizes.push_back(byteCount);
  allocatorLog.lastBlock = nullptr;
  if (!allocatorLog.failing) {
    const auto bytes = static_cast<std::size_t>(byteCount);
    GuardedMemory memory(bytes);
    allocatorLog.lastBlock = memory.array(bytes, Edge::end);
    blocks().emplace(allocatorLog.lastBlock, std::move(memory));
  }
  return allocatorLog.lastBlock;
}

void tfmFree(void* block) {
  using namespace tfmgen::test;
  const std::lock_guard lock(allocatorMutex);
  allocatorLog.freed.push_back(block);
  if (block == nullptr) {
    return;
  }
  const auto known = blocks().find(block);
  if (known == blocks().end()) {
    ADD_FAILURE() << "tfmFree of a pointer that tfmMalloc has not given";
    return;
  }
  std::memcpy(&allocatorLog.wordAtFree, block, sizeof allocatorLog.wordAtFree);
  blocks().erase(known);
}
