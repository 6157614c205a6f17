// General entries: one range test, one indexed jump.
#pragma once

#include "kernel/inline.hpp"
#include "tfmgen.h"

#include <cstddef>
#include <cstdint>

namespace tfmgen {

// Hands the call over to table[size - first]; the status is that of the routine jumped to. `size` goes where the
// routine of one size has no argument, so the remaining arguments are passed on as they stand.
template <std::int32_t first, class Entry, std::size_t count, class... Arguments>
TFMGEN_INLINE inline TfmStatus dispatch(Entry* const (&table)[count], std::int32_t size, Arguments... arguments) {
  const auto index = static_cast<std::uint32_t>(size) - static_cast<std::uint32_t>(first);
  if (index >= count) {
    return tfmStsBadSize;
  }
  return table[index](arguments...);
}

} // namespace tfmgen

// The general entry of a DFT or Hartley family whose routines are all declared in the public header.
#define TFMGEN_TABLE_ENTRY(N, family, suffix, Sample) tfmg##family##_##N##_##suffix,
#define TFMGEN_DEFINE_DISPATCHER(family, suffix, Sample)                                                               \
  TfmStatus tfmg##family##_##suffix(const Sample* pSrc, Sample* pDst, int32_t len, int32_t flag) {                     \
    using Entry = TfmStatus(const Sample*, Sample*, int32_t);                                                          \
    static constexpr Entry* kTable[] = {TFMGEN_FOR_EACH_LENGTH(TFMGEN_TABLE_ENTRY, family, suffix, Sample)};           \
    return tfmgen::dispatch<2>(kTable, len, pSrc, pDst, flag);                                                         \
  }
