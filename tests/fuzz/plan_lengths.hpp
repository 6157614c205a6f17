// Lengths that the fuzz targets try plans of, and the bytes that a build of them writes.
#pragma once

#include "dct4_sizes.hpp"
#include "input.hpp"

#include <array>

namespace tfmgen::test {

// Longer plans are not built, and neither are they asked for where they would be.
inline constexpr std::int32_t kLongestBuilt = 1 << 17;

inline std::int32_t anyPlanLength(Input& input) {
  const auto power = [&](std::size_t exponents) { return 1 << (1 + input.below(exponents)); };
  switch (input.below(8)) {
  case 0: return power(9) + 1;
  case 1: return static_cast<std::int32_t>(input.below(2000)) - 8;
  case 2: return power(8) * (2 * static_cast<std::int32_t>(input.below(64)) + 1);
  case 3: return input.once(16) ? power(17) : power(12); // plans of splits, of one in the other on rare occasions
  case 4: return input.take<std::int32_t>();
  default: return power(7);
  }
}

// The buffer that tfmgDCT4Init needs at an address aligned to 32. That of a refused length is written to, too, until
// the refusal: by the records and tables of the levels before it, never by scratch, which is taken last.
template <class T>
std::int64_t planBytes(std::int64_t length) {
  if (dct4Accepts<T>(length)) {
    return dct4Size<T>(length);
  }
  constexpr std::int64_t lanes = 16 / sizeof(T);
  // As the library chooses it, for lengths that are no power of two as well.
  const auto factor = [](std::int64_t half) -> std::int64_t {
    constexpr std::array<std::array<std::int64_t, 2>, 5> rows = {{{512, 32}, {128, 16}, {32, 8}, {16, 4}, {4, 2}}};
    const auto* const row =
        std::find_if(rows.begin(), rows.end(), [half](const auto& r) { return half >= r[0] && half % r[1] == 0; });
    return row == rows.end() ? 0 : (*row)[1];
  };
  std::int64_t bytes = 1312;
  std::int64_t f = factor(length / 2);
  if (f == 0) {
    return bytes;
  }
  bytes += up32(length / (2 * f) / lanes * 2 * f * 16);
  for (std::int64_t m = length / f; (f = factor(m / 2)) != 0; m /= f) {
    bytes += 800 + up32(m / (2 * f) * (2 * f - 2) * 16);
  }
  return bytes + 800;
}

// What a build takes besides at an address that is no multiple of 32 and whose low half is negative as a signed number:
// the remainder to the next record is then negative.
inline std::size_t planShift(const void* buffer) {
  const auto address = reinterpret_cast<std::uintptr_t>(buffer);
  return (address >> 31 & 1) != 0 && address % 32 != 0 ? 32 - address % 32 : 0;
}

} // namespace tfmgen::test
