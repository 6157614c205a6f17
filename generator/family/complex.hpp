// The complex kernels of the library, forward and then inverse, shortest first.
#pragma once

#include "level.hpp"
#include "print/complex.hpp"

#include <cstdint>
#include <optional>
#include <vector>

namespace tfmgen::family {

// As they are at the baseline.
print::ComplexKernel complex32(int length, transform::RootSign sign);
print::ComplexKernel complex64(int length, transform::RootSign sign);

// Those of a level: on its registers where that is faster. With a seed: packed by that seed, wherever the estimate says
// that it is faster, to be measured.
std::vector<print::ComplexKernel> complex32(Level level);
std::vector<print::ComplexKernel> complex64(Level level, std::optional<std::uint64_t> seed = {});

// Whether a kernel is another one than at the baseline.
bool isOfLevel(const print::ComplexKernel& kernel);

} // namespace tfmgen::family
