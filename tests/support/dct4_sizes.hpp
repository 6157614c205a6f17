// Which lengths a DCT-IV has a plan for, and the bytes of its buffer, stated apart from the library's walk: accepted
// lengths by their form, sizes by what a plan of that form holds.
#pragma once

#include <bit>
#include <cstdint>

namespace tfmgen::test {

constexpr std::int64_t up32(std::int64_t bytes) {
  return (bytes + 31) / 32 * 32;
}

// Too long for a size of 32 bits, and accepted with what is left of it.
template <class T>
constexpr bool dct4SizeWraps(std::int64_t length) {
  const std::int64_t power = length & -2;
  return power == 1 << 30 || (sizeof(T) == 8 && power == 1 << 29);
}

template <class T>
constexpr bool dct4Accepts(std::int64_t length) {
  constexpr int lastExponent = sizeof(T) == 4 ? 26 : 25;
  constexpr int firstOddExponent = sizeof(T) == 4 ? 5 : 3;
  const bool odd = length > 4 && length % 2 == 1;
  const std::int64_t power = odd ? length - 1 : length;
  if (power < 2 || !std::has_single_bit(static_cast<std::uint64_t>(power))) {
    return false;
  }
  const int exponent = std::countr_zero(static_cast<std::uint64_t>(power));
  return (exponent >= (odd ? firstOddExponent : 1) && exponent <= lastExponent) || dct4SizeWraps<T>(length);
}

// The factor that a level takes when its length is a power of two of at least 32.
constexpr std::int64_t dct4Factor(std::int64_t length) {
  return length >= 1024 ? 32 : length >= 256 ? 16 : length >= 64 ? 8 : 4;
}

// Of an accepted length. Beyond 32, N = 2^k or 2^k + 1: the table of the top level has one N B rounded by the lengths
// 2^k; each level has its records and N samples of scratch.
template <class T>
constexpr std::int64_t dct4Size(std::int64_t length) {
  const auto power = static_cast<std::int64_t>(std::bit_floor(static_cast<std::uint64_t>(length)));
  if (length == power && length <= 32) {
    return 256;
  }
  const auto b = static_cast<std::int64_t>(sizeof(T));
  std::int64_t f = power == 8 || power == 16 ? 2 : dct4Factor(power);
  std::int64_t size = 1312 + power * b + up32(length * b);
  for (std::int64_t m = power / f; m > 64; m /= f) {
    f = dct4Factor(m);
    size += 800 + up32(m / (2 * f) * (2 * f - 2) * 16) + up32(length * b);
  }
  return size;
}

} // namespace tfmgen::test
