// Real kernels with their entries.
#pragma once

#include "files.hpp"
#include "lower/real.hpp"

#include <string>

namespace tfmgen::print {

// One text serves both sample types and, by the format of its spectrum, all entries of a length.
Piece realPiece(const lower::RealKernel& kernel, lower::Transform transform, int length, const std::string& plan);

// What a count is printed under: DFTFwd_RToSpectrum_15, DFTInv_SpectrumToR_15, Hartley_15.
std::string kernelName(lower::Transform transform, int length);

// What a file of real kernels begins with.
std::string realPreamble();

} // namespace tfmgen::print
