// Numbers at which results of equal value may differ in their bits: zeros of both signs, sums that cancel, the ends of
// the range.
#pragma once

#include "random.hpp"

#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>
#include <vector>

namespace tfmgen::test {

enum class HardKind { uniform, zeros, zerosAndOnes, smallIntegers, denormals, anyExponent, infinities, mixed };

inline constexpr std::array kHardKinds{HardKind::uniform,       HardKind::zeros,     HardKind::zerosAndOnes,
                                       HardKind::smallIntegers, HardKind::denormals, HardKind::anyExponent,
                                       HardKind::infinities,    HardKind::mixed};

// A number of the kind; never NaN.
template <class Real>
Real hardReal(Random& random, HardKind kind) {
  const auto below = [&](int count) { return static_cast<int>(random.bits() % static_cast<unsigned>(count)); };
  const Real sign = below(2) == 0 ? Real(1) : Real(-1);
  switch (kind) {
  case HardKind::uniform: return random.real<Real>(Spread::uniform);
  case HardKind::zeros: return sign * Real(0);
  case HardKind::zerosAndOnes: return sign * Real(below(2));
  case HardKind::smallIntegers: return sign * Real(below(4));
  case HardKind::denormals: return sign * Real(below(1 << 20)) * std::numeric_limits<Real>::denorm_min();
  case HardKind::anyExponent: {
    using Limits = std::numeric_limits<Real>;
    const int exponent = Limits::min_exponent + below(Limits::max_exponent - Limits::min_exponent);
    return std::ldexp(sign * (Real(1) + std::abs(random.real<Real>(Spread::uniform))) / 2, exponent);
  }
  case HardKind::infinities:
    return below(16) == 0 ? sign * std::numeric_limits<Real>::infinity() : random.real<Real>(Spread::uniform);
  case HardKind::mixed: break;
  }
  return hardReal<Real>(random, kHardKinds[static_cast<std::size_t>(below(static_cast<int>(kHardKinds.size()) - 1))]);
}

// Runs of them without end: arrays are taken from a store of numbers at random places.
template <class Real>
class HardArrays {
public:
  explicit HardArrays(std::size_t longest, std::uint64_t seed) : random_(seed) {
    constexpr std::size_t kRoom = 4096;
    for (std::size_t i = 0; i < kHardKinds.size(); ++i) {
      stores_[i].resize(longest + kRoom);
      for (Real& value : stores_[i]) {
        value = hardReal<Real>(random_, kHardKinds[i]);
      }
    }
  }

  // The next `count` numbers, of the kinds in turn.
  const Real* next(std::size_t count) {
    const std::vector<Real>& store = stores_[turn_++ % stores_.size()];
    return store.data() + random_.bits() % (store.size() - count);
  }

private:
  Random random_;
  std::array<std::vector<Real>, kHardKinds.size()> stores_;
  std::size_t turn_ = 0;
};

} // namespace tfmgen::test
