// The number in which constants are computed: 113 bits of significand, so that rounding to double or float happens
// once.
#pragma once

namespace tfmgen::number {

__extension__ typedef __float128 Quad; // NOLINT(modernize-use-using): the only spelling that both compilers accept

constexpr Quad magnitude(Quad x) {
  return x < 0 ? -x : x;
}

} // namespace tfmgen::number
