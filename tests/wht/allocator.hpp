// A tfmMalloc and tfmFree of the test program, in place of those of the core library.
#pragma once

#include <cstdint>
#include <vector>

namespace tfmgen::test {

struct AllocatorLog {
  std::vector<std::int32_t> sizes; // of all blocks asked for
  int live = 0;                    // blocks not yet freed
};

extern AllocatorLog allocatorLog;

} // namespace tfmgen::test
