// Registers of four lanes, and moves between their lanes.
#pragma once

#include "lane_moves.hpp"
#include "transform/complex.hpp"

#include <map>
#include <span>
#include <vector>

namespace tfmgen::lower {

using graph::Graph;
using graph::Lanes;
using graph::Ref;
using number::at;
using transform::Complex;

constexpr std::size_t kLanes = 4;

struct Lane {
  Ref value;
  int lane;
};

// A register that begins with the wanted lanes, one to four. The moves are chosen so that neighbouring wishes share
// them: a block of four by four takes two for each register.
Ref gather(Graph& g, std::span<const Lane> wanted);

// A complex register: lane l holds the element of index elements[l]. Lanes beyond hold anything.
struct Packed {
  Complex value;
  std::vector<int> elements;
};

// Where elements are.
class Elements {
public:
  Elements() = default;
  explicit Elements(const std::vector<Packed>& registers);

  void put(const Packed& packed);
  // These elements in the lanes of one register; an element that is nowhere is zero.
  Complex gather(Graph& g, std::span<const int> elements) const;

private:
  struct Place {
    Complex value;
    int lane;
  };
  std::map<int, Place> places_;
};

// z * factors, lane by lane; lanes beyond the factors are multiplied by zero.
Complex multiply(Graph& g, std::span<const number::Complex> factors, const Complex& z);

// 0 .. count-1 in groups of four and a rest.
std::vector<std::vector<int>> laneGroups(int count);

} // namespace tfmgen::lower
