#include "allocator.hpp"

#include "tfmcore.h"

#include <cstdlib>
#include <cstring>
#include <mutex>

namespace {
std::mutex allocatorMutex;
} // namespace

void* tfmMalloc(int32_t byteCount) {
  const std::lock_guard lock(allocatorMutex);
  auto& state = dct4test::allocator;
  ++state.mallocs;
  state.lastBytes = byteCount;
  state.lastBlock = state.failing ? nullptr : std::malloc(static_cast<std::size_t>(byteCount));
  return state.lastBlock;
}

void tfmFree(void* block) {
  const std::lock_guard lock(allocatorMutex);
  auto& state = dct4test::allocator;
  ++state.frees;
  state.lastFreed = block;
  if (block != nullptr) {
    std::memcpy(&state.wordAtFree, block, sizeof(state.wordAtFree));
  }
  std::free(block);
}
