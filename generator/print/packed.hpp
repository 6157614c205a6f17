// Packed kernels as C++ text.
#pragma once

#include "pack/packed.hpp"

#include <string>

namespace tfmgen::print {

// The statements of a kernel, one a line, for a function with these names in scope: x and y (source and destination),
// s (the scale).
std::string packedStatements(const pack::Code& code);

// "Packed in vectors of 4: 100 operations, ..."
std::string packedSummary(const pack::Packed& packed);

} // namespace tfmgen::print
