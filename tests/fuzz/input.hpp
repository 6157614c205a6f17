// What the fuzz targets share: choices made from a string of bytes, and the end of a run that broke a promise.
#pragma once

#include "bits.hpp"
#include "random.hpp"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <span>
#include <string>

namespace tfmgen::test {

inline void require(bool kept, const std::string& promise) {
  if (!kept) {
    std::fprintf(stderr, "broken promise: %s\n", promise.c_str());
    std::abort();
  }
}

class Input {
public:
  explicit Input(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  [[nodiscard]] bool empty() const { return bytes_.empty(); }

  // The next bytes; zeros behind the end.
  template <class Number>
  Number take() {
    Number value = 0;
    const std::size_t count = std::min(sizeof value, bytes_.size());
    std::memcpy(&value, bytes_.data(), count);
    bytes_ = bytes_.subspan(count);
    return value;
  }

  // 0 .. count - 1, for counts up to 65536.
  std::size_t below(std::size_t count) {
    return (count <= 256 ? std::size_t{take<std::uint8_t>()} : std::size_t{take<std::uint16_t>()}) % count;
  }
  bool once(std::size_t in) { return below(in) == 0; }

private:
  std::span<const std::uint8_t> bytes_;
};

template <class Real>
Real anyReal(Random& random, std::size_t kind) {
  using Limits = std::numeric_limits<Real>;
  constexpr Real special[] = {Real(0),       -Real(0),          Limits::infinity(), -Limits::infinity(),
                              Limits::max(), Limits::lowest(),  Limits::min(),      Limits::denorm_min(),
                              Real(1),       -Limits::epsilon()};
  switch (kind) {
  case 0: return random.real<Real>(Spread::uniform);
  case 1: return random.real<Real>(Spread::wide);
  case 2: return special[random.bits() % std::size(special)];
  default: {
    const std::uint64_t bits = random.bits(); // NaNs among them
    Real value;
    std::memcpy(&value, &bits, sizeof value);
    return value;
  }
  }
}

// Fills `bytes` with reals of a spread that the input chooses.
template <class Real>
void fillWithReals(std::span<std::byte> bytes, Input& input) {
  Random random(input.take<std::uint32_t>());
  const std::size_t kind = input.below(4);
  for (std::size_t i = 0; i + sizeof(Real) <= bytes.size(); i += sizeof(Real)) {
    const Real value = anyReal<Real>(random, kind);
    std::memcpy(&bytes[i], &value, sizeof value);
  }
}

// Bit for bit, but any NaN for any NaN: which of two NaNs a sum returns is the processor's choice by operand order.
template <class Real>
bool sameReals(std::span<const std::byte> expected, std::span<const std::byte> actual) {
  for (std::size_t i = 0; i + sizeof(Real) <= expected.size(); i += sizeof(Real)) {
    Real a;
    Real b;
    std::memcpy(&a, &expected[i], sizeof a);
    std::memcpy(&b, &actual[i], sizeof b);
    const bool equal = bitsAt(&a, sizeof a) == bitsAt(&b, sizeof b);
    if (!equal && !(std::isnan(a) && std::isnan(b))) {
      return false;
    }
  }
  return true;
}

} // namespace tfmgen::test

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
