// From the arguments of a call to its batch.
#pragma once

#include "batch.hpp"
#include "tfmbatch.h"

#include <array>

namespace tfmgen::batch {

// Widths of registers that frames may be processed in.
inline constexpr std::array kWidths = {64, 32, 16};

// The widest registers that the processor has.
int widest();

// Checks the arguments and transforms the batch with registers of at most `bytes` bytes; 0: frame by frame.
TfmStatus call(const Family& family, const void* src, TfmbLayout srcLayout, void* dst, TfmbLayout dstLayout,
               std::int32_t length, std::int64_t count, std::int32_t flag, int bytes);

} // namespace tfmgen::batch
