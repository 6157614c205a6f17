// A batch beside the same frames by single calls.
#pragma once

#include "bits.hpp"
#include "call.hpp"
#include "families.hpp"
#include "random.hpp"
#include "registry.hpp"

#include <cmath>
#include <limits>
#include <vector>

namespace tfmgen::test {

// Elements of frames somewhere in memory, counted from element 0 of frame 0.
struct Extent {
  std::ptrdiff_t least = 0;
  std::ptrdiff_t most = 0;

  Extent(const TfmbLayout& layout, std::size_t length, std::int64_t count) {
    const std::ptrdiff_t steps = (static_cast<std::ptrdiff_t>(length) - 1) * layout.step;
    const std::ptrdiff_t distances = (count - 1) * layout.distance;
    for (const std::ptrdiff_t end : {steps, distances}) {
      (end < 0 ? least : most) += end;
    }
  }
  [[nodiscard]] std::size_t elements() const { return static_cast<std::size_t>(most - least + 1); }
};

// The kinds of numbers that a kernel may meet.
enum class Numbers { uniform, wide, zeros, infinities, denormals };

template <class Real>
Real drawn(Random& random, Numbers numbers) {
  const std::uint64_t choice = random.bits() % 8;
  const Real plain = random.real<Real>(numbers == Numbers::wide ? Spread::wide : Spread::uniform);
  switch (numbers) {
  case Numbers::zeros: return choice < 7 ? std::copysign(Real(0), plain) : plain;
  case Numbers::infinities: return choice == 0 ? std::copysign(std::numeric_limits<Real>::infinity(), plain) : plain;
  case Numbers::denormals: return plain * std::numeric_limits<Real>::min();
  default: return plain;
  }
}

// Real numbers of one sample type as bytes: filled, and compared but for the sign and the payload of NaNs.
void fill(std::vector<std::byte>& bytes, std::size_t realBytes, Random& random, Numbers numbers);
::testing::AssertionResult sameNumbers(const std::byte* expected, const std::byte* actual, std::size_t bytes,
                                       std::size_t realBytes);

struct BatchCase {
  const BatchFamily& family;
  int n;
  TfmbLayout src;
  TfmbLayout dst;
  std::int64_t count;
  std::int32_t flag;
  Numbers numbers;
  bool isInPlace = false;
};

std::ostream& operator<<(std::ostream& out, const BatchCase& c);

// Runs the batch at `bytes` bytes a register, arrays displaced from a boundary, and holds all memory of the
// destination, gaps included, against single calls.
::testing::AssertionResult agrees(const BatchCase& c, int bytes, std::uint64_t seed);

// The widths that this processor has, and 0 for single calls.
std::vector<int> widths();

} // namespace tfmgen::test
