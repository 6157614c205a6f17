// Arithmetic on registers of complex elements as they lie in memory: the real part of an element in an even lane, the
// imaginary part in the next.
#pragma once

#include "graph/graph.hpp"
#include "lower/kernel.hpp"

#include <array>
#include <optional>
#include <vector>

namespace tfmgen::wide {

using graph::Quad;

// One number for each of the two lanes of an element.
using Parts = std::array<Quad, 2>;

// What an operation takes for one element of its result.
struct Element {
  enum class Kind { any, zero, memory, value };
  Kind kind = Kind::any;
  int index = 0;                       // memory: the element of the source; value: the node
  int position = 0;                    // value: the element of the node's register
  bool isSwapped = false;              // the parts change places
  std::array<bool, 2> isNegative = {}; // by lane of the result

  bool operator==(const Element&) const = default;
};

using Elements = std::vector<Element>;

struct Node {
  enum class Op {
    sum,     // left + right, lane by lane with their signs and one rounding
    product, // left * factors
    scale,   // left * the scale of the call
  };
  Op op;
  Elements left;
  Elements right;
  std::vector<Parts> factors;
};

struct Store {
  int node;
  std::vector<std::optional<int>> elements; // of the destination, by position
};

struct Graph {
  std::vector<Node> nodes; // operands precede their users
  std::vector<Store> stores;
};

// The arithmetic of a kernel with settled signs, lane by lane the same, on registers of four elements. Throws
// std::runtime_error where real and imaginary parts do not come in pairs.
Graph interleaved(const lower::Kernel& kernel);

} // namespace tfmgen::wide
