// The real kernels of the library: forward, inverse and Hartley for each length.
#pragma once

#include "level.hpp"
#include "print/real.hpp"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tfmgen::family {

struct RealKernel {
  lower::RealKernel kernel;
  lower::Transform transform;
  int length;
  std::string plan;
};

std::vector<RealKernel> realKernels();

// The routines of a kernel, packed at a level where that is faster. With a seed: packed by that seed, wherever the
// estimate says that it is faster, to be measured.
std::vector<print::RealEntry> entries(const RealKernel& kernel, Level level, std::optional<std::uint64_t> seed = {});

} // namespace tfmgen::family
