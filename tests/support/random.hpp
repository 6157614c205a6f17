// Random numbers that are the same in every build: the standard library leaves its distributions to the implementation.
#pragma once

#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace tfmgen::test {

// How the magnitudes of random samples are spread.
enum class Spread {
  uniform, // over [-1, 1)
  wide     // the same times a power of two from 2^-20 to 2^20
};

class Random {
public:
  explicit Random(std::uint64_t seed) : state_(seed) {}

  // splitmix64
  std::uint64_t bits() {
    std::uint64_t z = state_ += 0x9E3779B97F4A7C15U;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
    return z ^ (z >> 31);
  }

  template <class Real>
  Real real(Spread spread) {
    const double uniform = std::ldexp(static_cast<double>(static_cast<std::int64_t>(bits()) >> 11), -52);
    const int exponent = spread == Spread::wide ? static_cast<int>(bits() % 41) - 20 : 0;
    return static_cast<Real>(std::ldexp(uniform, exponent));
  }

  template <class Real>
  std::vector<Real> reals(std::integral auto count, Spread spread) {
    std::vector<Real> values(static_cast<std::size_t>(count));
    for (Real& value : values) {
      value = real<Real>(spread);
    }
    return values;
  }

  // `count` reals of 4 or 8 bytes each, as the bytes that they have in memory.
  std::vector<std::byte> bytesOfReals(std::size_t realBytes, std::size_t count, Spread spread) {
    std::vector<std::byte> bytes(realBytes * count);
    if (realBytes == sizeof(float)) {
      std::memcpy(bytes.data(), reals<float>(count, spread).data(), bytes.size());
    } else {
      std::memcpy(bytes.data(), reals<double>(count, spread).data(), bytes.size());
    }
    return bytes;
  }

private:
  std::uint64_t state_;
};

} // namespace tfmgen::test
