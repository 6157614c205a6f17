// Kernels on vector registers as C++ text.
#pragma once

#include "lower/kernel.hpp"
#include "numbers.hpp"

#include <string>

namespace tfmgen::print {

struct VectorType {
  Precision precision;
  int lanes;
  bool isRepeated = false; // V is any number of such vectors side by side, which share their constants
  int registers = 15;      // of 16: one holds the scale or a constant
};

// The statements of a kernel, one a line, for a function with these names in scope: Access (how arrays are reached), x
// and y (source and destination as arrays of real numbers), s (the scale in all lanes), V (the vector type).
std::string vectorStatements(const lower::Kernel& kernel, const VectorType& type);

} // namespace tfmgen::print
