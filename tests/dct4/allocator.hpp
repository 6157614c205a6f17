// The memory functions of this test program, which the library calls in place of the core library's.
#pragma once

#include <cstdint>

namespace dct4test {

struct Allocator {
  int mallocs = 0;
  int frees = 0;
  std::int32_t lastBytes = 0;
  void* lastBlock = nullptr;     // what tfmMalloc returned last
  void* lastFreed = nullptr;     // what tfmFree was given last
  std::uintptr_t wordAtFree = 0; // the first 8 bytes of that block, for a block that is not null
  bool failing = false;          // tfmMalloc returns null
};

// Counts since the last reset. Tests that look at it run in one thread.
inline Allocator allocator;

} // namespace dct4test
