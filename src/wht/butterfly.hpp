// The stages of the transform between registers.
#pragma once

#include "kernel/unroll.hpp"

namespace tfmgen::wht {

// One step of the transform: the element whose index bit is clear becomes the sum, the other one the difference.
template <class Value>
TFMGEN_INLINE inline void butterfly(Value& clear, Value& set) {
  const Value difference = clear - set;
  clear = clear + set;
  set = difference;
}

// The stages on `bits` index bits, lowest first, over the 2^bits values at distance `stride` from number `first` on.
// Depth first: one part is finished before the next one begins, so that few values are in work at a time, and the last
// two stages are taken together. Each value goes to sink(Index<number>, value) right behind its last stage.
template <int bits, int stride, int first, class Value, int count, class Sink>
TFMGEN_INLINE inline void butterflies(Value (&values)[count], const Sink& sink) {
  if constexpr (bits == 0) {
    sink(Index<first>{}, values[first]);
  } else {
    constexpr int lastBits = bits < 3 ? 1 : 2;
    constexpr int part = stride << (bits - lastBits);
    unroll<1 << lastBits>([&](auto k) TFMGEN_INLINE {
      butterflies<bits - lastBits, stride, first + k * part>(values, [](auto, const Value&) TFMGEN_INLINE {});
    });
    unroll<1 << (bits - lastBits)>([&](auto k) TFMGEN_INLINE {
      constexpr int clear = first + k * stride;
      if constexpr (lastBits == 1) {
        butterfly(values[clear], values[clear + part]);
        sink(Index<clear>{}, values[clear]);
        sink(Index<clear + part>{}, values[clear + part]);
      } else {
        butterflies<lastBits, part, clear>(values, sink);
      }
    });
  }
}

} // namespace tfmgen::wht
