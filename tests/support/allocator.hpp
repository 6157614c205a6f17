// A tfmMalloc and tfmFree of the test program, which the library calls in place of those of the core library.
#pragma once

#include <cstdint>
#include <vector>

namespace tfmgen::test {

struct AllocatorLog {
  std::vector<std::int32_t> sizes; // of all blocks asked for
  std::vector<void*> freed;        // what tfmFree was given, null included
  void* lastBlock = nullptr;       // what tfmMalloc returned last
  std::uintptr_t wordAtFree = 0;   // the first 8 bytes of the block freed last
  bool failing = false;            // tfmMalloc returns null
};

// What happened since the last reset. Tests that look at it run in one thread.
extern AllocatorLog allocatorLog;

} // namespace tfmgen::test
