// Real kernels with their entries.
#pragma once

#include "files.hpp"
#include "lower/real.hpp"
#include "lower/spectrum.hpp"
#include "pack/packed.hpp"

#include <span>
#include <string>

namespace tfmgen::print {

// A packed kernel in the place of the scalar one for one sample type and one format. For odd lengths that of the format
// pack serves perm as well.
struct PackedEntry {
  lower::Format format;
  int sampleBits;
  pack::Packed packed;
};

// One text serves both sample types and, by the format of its spectrum, all entries of a length but the packed ones.
Piece realPiece(const lower::RealKernel& kernel, lower::Transform transform, int length, const std::string& plan,
                std::span<const PackedEntry> packed = {});

// DFTFwd_RToCCS_15_32f, DFTInv_CCSToR_15_32f, Hartley_15_32f
std::string entryName(lower::Transform transform, lower::Format format, int length, int sampleBits);

// What a count is printed under: DFTFwd_RToSpectrum_15, DFTInv_SpectrumToR_15, Hartley_15.
std::string kernelName(lower::Transform transform, int length);

// What a file of real kernels begins with.
std::string realPreamble();

} // namespace tfmgen::print
