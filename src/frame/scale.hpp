// Flag and length to scale factor. The factors are compile-time constants of each kernel: no division and no square
// root happens at run time.
#pragma once

#include "kernel/inline.hpp"
#include "tfmgen.h"

#include <cstdint>

namespace tfmgen {

// Which flags divide: the three columns of the table in the public header.
enum class Direction { forward, inverse, none };

// The double nearest to the square root of a small whole number. With v = n * 4^k this is the whole number nearest to
// sqrt(v), which takes all 53 bits of the significand, divided by 2^k.
constexpr double nearestSquareRoot(int n) {
  __extension__ using Wide = unsigned __int128;
  int shift = 0;
  Wide v = static_cast<Wide>(n);
  while (v < Wide{1} << 104) {
    v <<= 2;
    ++shift;
  }
  std::uint64_t root = 0;
  for (std::uint64_t bit = std::uint64_t{1} << 52; bit != 0; bit >>= 1) {
    const std::uint64_t trial = root | bit;
    if (Wide{trial} * trial <= v) {
      root = trial;
    }
  }
  if (v > Wide{root} * root + root) {
    ++root; // sqrt(v) lies above root + 1/2
  }
  return static_cast<double>(root) / static_cast<double>(std::uint64_t{1} << shift);
}

template <class Real, int N>
inline constexpr Real kReciprocal = Real(1) / Real(N);

// Two roundings in double, as the quotient 1.0 / sqrt(N) has; the nearest float to it is the nearest to the exact
// value.
template <class Real, int N>
inline constexpr Real kReciprocalRoot = static_cast<Real>(1.0 / nearestSquareRoot(N));

// Stores the factor for `flag` in `scale`; false when the flag is none of the four. Plain comparisons, one value after
// the other: an index into a table of factors would be a load that depends on the caller's flag.
template <class Real, int N, Direction direction>
TFMGEN_INLINE inline bool selectScale(std::int32_t flag, Real& scale) {
  constexpr bool forwardDivides = direction != Direction::inverse;
  constexpr bool inverseDivides = direction != Direction::forward;
  if (flag == TFM_NO_DIV) {
    scale = Real(1);
  } else if (flag == TFM_DIV_BY_SQRTN) {
    scale = kReciprocalRoot<Real, N>;
  } else if (flag == TFM_DIV_FWD_BY_N) {
    scale = forwardDivides ? kReciprocal<Real, N> : Real(1);
  } else if (flag == TFM_DIV_INV_BY_N) {
    scale = inverseDivides ? kReciprocal<Real, N> : Real(1);
  } else {
    return false;
  }
  return true;
}

} // namespace tfmgen
