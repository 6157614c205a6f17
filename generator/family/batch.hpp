// The kernels for batches of frames, as texts for a machine of so many registers.
#pragma once

#include "print/files.hpp"

#include <vector>

namespace tfmgen::family {

std::vector<print::Piece> batchComplex32(int registers);
std::vector<print::Piece> batchComplex64(int registers);
std::vector<print::Piece> batchReal(int registers);

} // namespace tfmgen::family
