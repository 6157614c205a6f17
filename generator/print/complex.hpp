// Complex kernels with their entries.
#pragma once

#include "files.hpp"
#include "lower/kernel.hpp"
#include "lower/real.hpp"
#include "transform/root_sign.hpp"

#include <string>
#include <variant>

namespace tfmgen::print {

// How the bodies for aligned and for unaligned arrays stand in the machine code.
enum class Bodies { one, inOneFunction, inTwoFunctions };

// A kernel with its place in the library.
struct ComplexKernel {
  std::variant<lower::Kernel, lower::RealKernel> kernel; // on vectors, or on the parts of elements as scalars
  transform::RootSign sign;
  int length;
  int sampleBits; // of a real number
  std::string plan;
  Bodies bodies;
};

// DFTFwd_CToC_15_64fc
std::string kernelName(const ComplexKernel& k);

graph::Counts counts(const ComplexKernel& k);

Piece complexPiece(const ComplexKernel& k);

// What a file of complex kernels begins with.
std::string complexPreamble();

} // namespace tfmgen::print
