// Loops that are gone before the compiler chooses registers: every index is a constant.
#pragma once

#include <type_traits>
#include <utility>

namespace tfmgen {

template <int index>
using Index = std::integral_constant<int, index>;

// Runs step(Index<0>{}), step(Index<1>{}), ... step(Index<count - 1>{}).
template <int count, class Step>
[[gnu::always_inline]] inline void unroll(const Step& step) {
  [&]<int... index>(std::integer_sequence<int, index...>) __attribute__((always_inline)) {
    (step(Index<index>{}), ...);
  }
  (std::make_integer_sequence<int, count>{});
}

} // namespace tfmgen
