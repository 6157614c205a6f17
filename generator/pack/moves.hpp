// What it costs to have values in wanted lanes.
#pragma once

#include "packing.hpp"

#include <array>
#include <cstdint>

namespace tfmgen::pack {

// What one lane of a register is to hold.
struct Source {
  std::int16_t value; // kEmpty for anything
  bool isRotated;
};

// A register with these values in these lanes.
struct Pattern {
  std::array<Source, kMaximumLanes> lanes;
  bool isDouble; // of 32-bit samples: widened behind the moves

  static constexpr Pattern empty() {
    Pattern pattern{};
    pattern.lanes.fill({kEmpty, false});
    return pattern;
  }

  [[nodiscard]] const Source& at(int lane) const { return lanes[static_cast<std::size_t>(lane)]; }
  Source& at(int lane) { return lanes[static_cast<std::size_t>(lane)]; }
};

// Equal for equal patterns, which are moved once.
using PatternKey = std::uint64_t;
PatternKey keyOf(const Pattern& pattern, int lanes);

struct MoveCost {
  int cost = 0;
  int latency = 0;       // behind the last register
  int windowCount = 0;   // vectors of adjacent elements that are loaded
  int registerCount = 0; // results of vectors that are needed
  std::array<std::int16_t, kMaximumLanes> registers;
};

// A register as it stands, or one load, is free. Otherwise the registers are merged one after the other.
MoveCost moveCost(const Pattern& pattern, const Program& program, const Packing& packing, const Machine& machine);

} // namespace tfmgen::pack
