#include "slower.hpp"

#include <algorithm>
#include <array>

namespace tfmgen::family {

namespace {

struct Slower {
  Level level;
  Kind kind;
  int sampleBits;
  int length;
  bool operator==(const Slower&) const = default;
};

// On a Zen 5 core, where calls wait for each other: by 3 to 18 percent.
constexpr std::array kSlower{
    Slower{Level::v3, Kind::complex, 64, 20}, Slower{Level::v4, Kind::complex, 64, 20},
    Slower{Level::v4, Kind::complex, 64, 22}, Slower{Level::v4, Kind::complex, 64, 25},
    Slower{Level::v4, Kind::complex, 64, 30}, Slower{Level::v3, Kind::forward, 64, 27},
    Slower{Level::v3, Kind::inverse, 32, 20}, Slower{Level::v3, Kind::inverse, 32, 24},
    Slower{Level::v4, Kind::inverse, 32, 20}, Slower{Level::v4, Kind::inverse, 32, 24},
};

} // namespace

bool isMeasuredSlower(Level level, Kind kind, int sampleBits, int length) {
  return std::ranges::find(kSlower, Slower{level, kind, sampleBits, length}) != kSlower.end();
}

} // namespace tfmgen::family
