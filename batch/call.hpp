// From the arguments of a call to its batch.
#pragma once

#include "batch.hpp"
#include "tfmbatch.h"

#include <array>

namespace tfmgen::batch {

// Widths of registers, in bytes, from the widest down. Every processor has the last.
inline constexpr std::array kWidths = {64, 32, 16};

bool processorHas(int bytes);

// Checks the arguments and transforms the batch with registers of at most `bytes` bytes that the processor has; 0:
// frame by frame.
TfmStatus call(const Family& family, const void* src, TfmbLayout srcLayout, void* dst, TfmbLayout dstLayout,
               std::int32_t length, std::int64_t count, std::int32_t flag, int bytes);

} // namespace tfmgen::batch
