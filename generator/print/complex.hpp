// Complex kernels with their entries.
#pragma once

#include "files.hpp"
#include "lower/kernel.hpp"
#include "transform/root_sign.hpp"

#include <string>

namespace tfmgen::print {

// A kernel with its place in the library.
struct ComplexKernel {
  lower::Kernel kernel;
  transform::RootSign sign;
  int length;
  int sampleBits; // of a real number
  std::string plan;
};

// How the bodies for aligned and for unaligned arrays stand in the machine code.
enum class Bodies { inOneFunction, inTwoFunctions };

// DFTFwd_CToC_15_64fc
std::string kernelName(const ComplexKernel& k);

Piece complexPiece(const ComplexKernel& k, Bodies bodies);

// What a file of complex kernels begins with.
std::string complexPreamble();

} // namespace tfmgen::print
