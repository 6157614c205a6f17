// Complex kernels with their entries.
#pragma once

#include "files.hpp"
#include "lower/kernel.hpp"
#include "lower/real.hpp"
#include "pack/packed.hpp"
#include "transform/root_sign.hpp"
#include "wide/program.hpp"

#include <optional>
#include <string>
#include <variant>

namespace tfmgen::print {

// How the bodies for aligned and for unaligned arrays stand in the machine code.
enum class Bodies { one, inOneFunction, inTwoFunctions };

// A program for the registers of a level.
struct WideKernel {
  wide::Program program;
  int registers;
};

// A kernel with its place in the library.
struct ComplexKernel {
  // On vectors, on the parts of elements as scalars, or on the vectors of a level.
  std::variant<lower::Kernel, lower::RealKernel, WideKernel> kernel;
  transform::RootSign sign;
  int length;
  int sampleBits; // of a real number
  std::string plan;
  Bodies bodies;
  std::optional<pack::Packed> packed = std::nullopt; // what stands in its place
};

// DFTFwd_CToC_15_64fc
std::string kernelName(const ComplexKernel& k);

graph::Counts counts(const ComplexKernel& k);

Piece complexPiece(const ComplexKernel& k);

// What a file of complex kernels begins with.
std::string complexPreamble();

} // namespace tfmgen::print
