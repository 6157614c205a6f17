#include "tfmcore.h"

#include <cstddef>
#include <cstdlib>

namespace {

// A cache line: no two blocks share one, and every vector access to a block may be an aligned one.
constexpr std::size_t kAlignment = 64;

constexpr std::size_t roundUp(std::size_t bytes) {
  return (bytes + kAlignment - 1) / kAlignment * kAlignment;
}

} // namespace

void* tfmMalloc(int32_t byteCount) {
  if (byteCount < 0) {
    return nullptr;
  }
  const std::size_t bytes = byteCount == 0 ? 1 : static_cast<std::size_t>(byteCount);
  return std::aligned_alloc(kAlignment, roundUp(bytes));
}

void tfmFree(void* block) {
  std::free(block);
}
