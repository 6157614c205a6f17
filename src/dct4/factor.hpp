// How a length is factored. The size query and the construction walk the same factors.
#pragma once

#include <cstdint>
#include <initializer_list>

namespace tfmgen::dct4 {

// Chooses the factor of a level by `half`, half the length: large factors for large lengths, as long as they divide it.
// False when no factor serves; `factor` is left alone then.
constexpr bool tfmgDCT4ChooseFactor(std::int32_t half, std::int32_t& factor) {
  struct Row {
    std::int32_t atLeast;
    std::int32_t factor;
  };
  for (const Row row : {Row{512, 32}, Row{128, 16}, Row{32, 8}, Row{16, 4}, Row{4, 2}}) {
    if (half >= row.atLeast && half % row.factor == 0) {
      factor = row.factor;
      return true;
    }
  }
  return false;
}

// log2 of `value` where it is a power of two from 2 to `last`, else `otherwise`: the kind of a record that has one
// straight-line kernel for each such value.
constexpr std::int32_t kindOf(std::int32_t value, std::int32_t last, std::int32_t otherwise) {
  std::int32_t kind = 1;
  for (std::int32_t power = 2; power <= last; power *= 2, ++kind) {
    if (value == power) {
      return kind;
    }
  }
  return otherwise;
}

// Lengths up to this one are straight-line codelets without tables.
inline constexpr std::int32_t kLastCodelet = 32;
// The longest column with a straight-line kernel.
inline constexpr std::int32_t kLastColumn = 64;
// The largest factor, of a plan and of a split.
inline constexpr std::int32_t kLastFactor = 32;

// The last index of the input extended to twice its length: sample m >= N of it is minus sample mirror - m.
constexpr std::int32_t mirrorOf(std::int32_t length) {
  return static_cast<std::int32_t>(2U * static_cast<std::uint32_t>(length) - 1U);
}

} // namespace tfmgen::dct4
