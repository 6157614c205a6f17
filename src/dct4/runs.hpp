// How the stages reach the caller's arrays and the plan's tables with vectors of any width.
#pragma once

#include "kernel/access.hpp"

namespace tfmgen::dct4 {

// ---- Adjacent samples of the caller, at any address. With the baseline's registers they go one by one.

// Lane l from from[l * step], step 1 or -1.
template <class V, int step>
TFMGEN_INLINE inline V loadRun(const Element<V>* from) {
  if constexpr (kRegisterBytes == kBlockBytes) {
    return gather<V>(from, step);
  } else if constexpr (step == 1) {
    return loadUnaligned<V>(from);
  } else {
    return reverse(loadUnaligned<V>(from - (kLanesOf<V> - 1)));
  }
}

// Lane l to to[l * step].
template <int step, class V>
TFMGEN_INLINE inline void storeRun(Element<V>* to, V v) {
  if constexpr (kRegisterBytes == kBlockBytes) {
    scatter(to, step, v);
  } else if constexpr (step == 1) {
    storeUnaligned(to, v);
  } else {
    storeUnaligned(to - (kLanesOf<V> - 1), reverse(v));
  }
}

// ---- Tables, which are made of vectors of kBlockBytes

// One of equal lanes.
template <class V>
TFMGEN_INLINE inline V loadRepeated(const Element<V>* entry) {
  if constexpr (sizeof(V) == kBlockBytes) {
    return loadAligned<V>(entry);
  } else {
    return broadcast<V>(*entry);
  }
}

// As many as fill V, at the distance `step`.
template <class V>
TFMGEN_INLINE inline V loadBlocks(const Element<V>* from, std::ptrdiff_t step) {
  if constexpr (sizeof(V) == kBlockBytes) {
    return loadAligned<V>(from);
  } else {
    using Half = Vector<Element<V>, sizeof(V) / 2>;
    constexpr std::ptrdiff_t half = sizeof(Half) / kBlockBytes;
    return join(loadBlocks<Half>(from, step), loadBlocks<Half>(from + half * step, step));
  }
}

} // namespace tfmgen::dct4
