// Where the search for a packing begins its random choices, as data.
#pragma once

#include "level.hpp"

#include <cstdint>
#include <string>

namespace tfmgen::family {

// The seed whose packing was measured to be the fastest among a few. The kernel is named by the first of its routines
// that share a packing: DFTFwd_RToCCS_15_32f for those of all formats, DFTFwd_CToC_15_64fc for both directions.
std::uint64_t measuredSeed(Level level, const std::string& kernel);

} // namespace tfmgen::family
