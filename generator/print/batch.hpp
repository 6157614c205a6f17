// Kernels for batches of frames: the texts of single calls over other types, and which routines are made of them.
#pragma once

#include "files.hpp"
#include "lower/kernel.hpp"
#include "lower/real.hpp"
#include "transform/root_sign.hpp"

#include <string>

namespace tfmgen::print {

// A frame a lane: complex elements of 32-bit samples by their parts.
struct BatchComplex32 {
  lower::RealKernel kernel;
  bool isDouble; // constants are doubles, as in the scalar kernels of short lengths
  transform::RootSign sign;
  int length;
  std::string plan;
};

Piece batchPiece(const BatchComplex32& k, int registers);

// A frame in each 16 bytes: complex elements of 64-bit samples.
Piece batchComplex64Piece(const lower::Kernel& kernel, int length, const std::string& plan, int registers);

// A frame a lane, both sample types.
Piece batchRealPiece(const lower::RealKernel& kernel, lower::Transform transform, int length, const std::string& plan,
                     int registers);

// What a file of such kernels begins with.
std::string batchPreamble();

} // namespace tfmgen::print
