// Which operation sits in which lane of which vector.
//
// Statements that do the same to different data share a vector (Larsen and Amarasinghe, "Exploiting superword level
// parallelism with multimedia instruction sets", 2000). Operations of one depth never wait for each other, so a vector
// belongs to a level and holds operations of that level only: whatever is exchanged within a level, no cycle arises.
#pragma once

#include "machine.hpp"
#include "program.hpp"

#include <array>

namespace tfmgen::pack {

constexpr int kEmpty = -1;

struct Place {
  int vector = kEmpty;
  int lane = 0;
};

struct Vector {
  int level = 0;
  std::array<int, kMaximumLanes> values{}; // by lane; kEmpty where there is none

  [[nodiscard]] int at(int lane) const { return values[static_cast<std::size_t>(lane)]; }
  int& at(int lane) { return values[static_cast<std::size_t>(lane)]; }
};

// Who needs whom, by value.
struct Dependences {
  explicit Dependences(const Program& program);

  Indexed<Indexed<int>> users;   // operations, each once
  Indexed<Indexed<int>> outputs; // elements of the destination
  Indexed<int> depth;            // the earliest level; loads have -1
  Indexed<int> twin;             // another operation on the same operands, kEmpty where there is none
  int levels = 0;
};

struct Packing {
  Packing(const Program& program, int laneCount);

  int addVector(int level);
  void put(int value, Place place);
  [[nodiscard]] int level(int value) const {
    const int vector = places[value].vector;
    return vector == kEmpty ? -1 : vectors[vector].level;
  }

  int lanes;
  Indexed<Vector> vectors;
  Indexed<Place> places;     // by value; loads have none
  Indexed<char> isExchanged; // by value: the two terms of its sum stand in the other order
};

// Whether the two terms of an operation may change places.
bool isCommutative(const Program& program, int value);

// The term that an operation brings to position k of its vector's sum.
inline const Term& termAt(const Program& program, const Packing& packing, int value, int k) {
  return program.operation(value).terms[static_cast<std::size_t>(packing.isExchanged[value] != 0 ? 1 - k : k)];
}

} // namespace tfmgen::pack
