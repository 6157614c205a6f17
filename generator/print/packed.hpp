// Packed kernels as C++ text.
#pragma once

#include "pack/code.hpp"

#include <string>

namespace tfmgen::print {

// The statements of a kernel, one a line, for a function with these names in scope: x and y (source and destination),
// s (the scale).
std::string packedStatements(const pack::Code& code);

} // namespace tfmgen::print
