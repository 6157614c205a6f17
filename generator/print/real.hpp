// Real kernels with their entries.
#pragma once

#include "files.hpp"
#include "lower/real.hpp"
#include "lower/spectrum.hpp"
#include "pack/packed.hpp"

#include <optional>
#include <span>
#include <string>

namespace tfmgen::print {

// A routine of one sample type and one format, with the packed kernel that stands in the place of the scalar one. For
// odd lengths the format pack stands for perm as well.
struct RealEntry {
  lower::Format format;
  int sampleBits;
  std::optional<pack::Packed> packed = std::nullopt;
};

// The kernel with these entries: one text serves both sample types and all formats but where an entry is packed.
Piece realPiece(const lower::RealKernel& kernel, lower::Transform transform, int length, const std::string& plan,
                std::span<const RealEntry> entries);

// DFTFwd_RToCCS_15_32f, DFTInv_CCSToR_15_32f, Hartley_15_32f
std::string entryName(lower::Transform transform, lower::Format format, int length, int sampleBits);

// What a count is printed under: DFTFwd_RToSpectrum_15, DFTInv_SpectrumToR_15, Hartley_15.
std::string kernelName(lower::Transform transform, int length);

// What a file of real kernels begins with.
std::string realPreamble();

} // namespace tfmgen::print
