// Complex elements in vectors as they lie in memory: the real part of each in an even lane, the imaginary part in the
// next one.
#pragma once

#include "access.hpp"

namespace tfmgen {

// Complex elements of a, from 0 on, and of b, numbered behind them; -1 where any will do.
template <int... element, class V>
TFMGEN_INLINE inline V shuffleElements(V a, V b) {
  static_assert(sizeof(Element<V>) == 4);
  using Pairs = Vector<double, sizeof(V)>;
  return bitCast<V>(shuffle<element...>(bitCast<Pairs>(a), bitCast<Pairs>(b)));
}

// The parts of every element change places.
template <class V>
TFMGEN_INLINE inline V swapParts(V v) {
  return withIndices<kLanesOf<V>>([&](auto... i) TFMGEN_INLINE { return shuffle<(i ^ 1)...>(v, v); });
}

} // namespace tfmgen
