#include "moves.hpp"

#include <algorithm>
#include <span>

namespace tfmgen::pack {

namespace {

// A number that looks random for each of its arguments (the finalizer of Steele, Lea and Flood, "Fast splittable
// pseudorandom number generators", 2014).
PatternKey mixed(PatternKey z) {
  z = (z ^ z >> 30U) * 0xbf58476d1ce4e5b9U;
  z = (z ^ z >> 27U) * 0x94d049bb133111ebU;
  return z ^ z >> 31U;
}

// Windows of adjacent elements, as long as a vector, that cover the elements. The first begins no later than a vector
// before the end of the array.
int windows(std::span<const int> elements, int lanes, int length) {
  int end = 0;
  for (int count = 0;; ++count) {
    int first = length; // of those that no window covers
    for (const int element : elements) {
      first = element >= end ? std::min(first, element) : first;
    }
    if (first == length) {
      return count;
    }
    end = count == 0 && first + lanes > length ? length : first + lanes;
  }
}

// Where the lanes of a pattern are now.
struct Origins {
  bool isInPlace = true; // every value is in its lane, or at one distance from it in memory
  bool keepsPairs = true;
  bool isRotated = false;
};

} // namespace

PatternKey keyOf(const Pattern& pattern, int lanes) {
  PatternKey key = 0;
  for (int lane = 0; lane < lanes; ++lane) {
    const Source& source = pattern.at(lane);
    if (source.value != kEmpty) {
      const int code = (source.value * 2 + (source.isRotated ? 1 : 0)) * kMaximumLanes + lane + 1;
      key += mixed(static_cast<PatternKey>(code));
    }
  }
  return key == 0 || !pattern.isDouble ? key : ~key;
}

MoveCost moveCost(const Pattern& pattern, const Program& program, const Packing& packing, const Machine& machine) {
  MoveCost out;
  Origins origins;
  std::array<int, 2> pairRegisters{kEmpty, kEmpty}; // of the even and of the odd lanes
  std::array<int, kMaximumLanes> elements{};
  int elementCount = 0;
  int distance = 0;
  for (int lane = 0; lane < packing.lanes; ++lane) {
    const auto [value, isRotated] = pattern.at(lane);
    if (value == kEmpty) {
      continue;
    }
    origins.isRotated = origins.isRotated || isRotated;
    if (program.isLoad(value)) {
      const int element = program.loads[value];
      origins.isInPlace = origins.isInPlace && (elementCount == 0 || element - lane == distance);
      distance = element - lane;
      elements[static_cast<std::size_t>(elementCount++)] = element;
      continue;
    }
    const Place place = packing.places[value];
    origins.isInPlace = origins.isInPlace && place.lane == lane;
    int& ofParity = pairRegisters[static_cast<std::size_t>(lane % 2)];
    origins.keepsPairs =
        origins.keepsPairs && place.lane / 2 == lane / 2 && (ofParity == kEmpty || ofParity == place.vector);
    ofParity = place.vector;
    const auto known = std::span(out.registers).first(static_cast<std::size_t>(out.registerCount));
    if (std::ranges::find(known, place.vector) == known.end()) {
      out.registers[static_cast<std::size_t>(out.registerCount++)] = static_cast<std::int16_t>(place.vector);
    }
  }
  if (elementCount > 0) {
    out.windowCount =
        windows(std::span(elements).first(static_cast<std::size_t>(elementCount)), packing.lanes, program.sourceLength);
  }
  const int sources = out.registerCount + out.windowCount;
  if (sources == 0) {
    return out;
  }
  const Costs& costs = machine.costs;
  const Latencies& latencies = machine.latencies;
  const bool isUnit = program.numbersInUnit == 2; // whose pairs are the units themselves
  if (sources <= 2 && !origins.isInPlace && elementCount == 0 && origins.keepsPairs && !isUnit) {
    out.cost = costs.pairMove;
    out.latency = latencies.pairMove;
  } else if (sources == 1) {
    out.cost = origins.isInPlace ? (origins.isRotated ? costs.pairMove : 0) : costs.permutation;
    out.latency = origins.isInPlace ? (origins.isRotated ? latencies.pairMove : 0) : latencies.move;
  } else if (sources == 2 && origins.isInPlace && !origins.isRotated) {
    out.cost = costs.blend;
    out.latency = latencies.pairMove;
  } else {
    out.cost = (sources - 1) * costs.merge;
    out.latency = latencies.move;
  }
  if (pattern.isDouble) {
    out.cost += costs.conversion;
    out.latency += latencies.conversion;
  }
  return out;
}

} // namespace tfmgen::pack
