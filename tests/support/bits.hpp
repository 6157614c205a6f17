// Comparison of results bit for bit: +0 differs from -0, and equal NaNs are equal.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ios>

namespace tfmgen::test {

// Bits of the real number of `realBytes` bytes at any address.
inline std::uint64_t bitsAt(const void* address, std::size_t realBytes) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, address, realBytes); // little-endian
  return bits;
}

// Equal with the sign of zero, or both NaN.
template <class Real>
bool isSameReal(Real a, Real b) {
  return (a == b && std::signbit(a) == std::signbit(b)) || (std::isnan(a) && std::isnan(b));
}

// Compares `bytes` bytes and names the first real number that differs.
inline ::testing::AssertionResult sameBits(const void* expected, const void* actual, std::size_t bytes,
                                           std::size_t realBytes) {
  if (std::memcmp(expected, actual, bytes) == 0) {
    return ::testing::AssertionSuccess();
  }
  const auto* a = static_cast<const std::byte*>(expected);
  const auto* b = static_cast<const std::byte*>(actual);
  const auto at = static_cast<std::size_t>(std::mismatch(a, a + bytes, b).first - a) / realBytes * realBytes;
  return ::testing::AssertionFailure() << "real number " << at / realBytes << " is 0x" << std::hex
                                       << bitsAt(b + at, realBytes) << " and should be 0x" << bitsAt(a + at, realBytes);
}

} // namespace tfmgen::test
