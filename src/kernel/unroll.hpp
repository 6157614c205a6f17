// Loops that are gone before the compiler chooses registers: every index is a constant.
#pragma once

#include "inline.hpp"

#include <utility>

namespace tfmgen {

template <int index>
struct Index {
  static constexpr int value = index;
  TFMGEN_INLINE constexpr operator int() const { return value; }
};

// use(Index<0>{}, Index<1>{}, ... Index<count - 1>{}).
template <int count, class Use>
TFMGEN_INLINE inline constexpr auto withIndices(const Use& use) {
  return [&]<int... index>(std::integer_sequence<int, index...>) TFMGEN_INLINE {
    return use(Index<index>{}...);
  }
  (std::make_integer_sequence<int, count>{});
}

// Runs step(Index<0>{}), step(Index<1>{}), ... step(Index<count - 1>{}).
template <int count, class Step>
TFMGEN_INLINE inline void unroll(const Step& step) {
  withIndices<count>([&](auto... index) TFMGEN_INLINE { (step(index), ...); });
}

} // namespace tfmgen
