// Straight-line arithmetic as a graph of operations in which equal operations are one node.
//
// A node stands for a value of the kernel's register kind: a real number, or a vector of lanes that all take part in
// the same operation. The graph does not know which; only lane moves tell them apart.
#pragma once

#include "node_map.hpp"
#include "number/index.hpp"
#include "number/quad.hpp"

#include <array>
#include <map>
#include <span>
#include <tuple>
#include <vector>

namespace tfmgen::graph {

using number::Quad;

// A signed reference to a node, or zero. A minus costs nothing: whoever uses the value turns an addition into a
// subtraction or hands the minus on behind a product. Both keep every bit, signs of zeros included. A minus never
// changes a difference into its reverse: a - b and -(b - a) are not the same zero.
class Ref {
public:
  constexpr Ref() = default;
  static constexpr Ref to(NodeId node) { return Ref(node.position() + 1); }

  [[nodiscard]] constexpr bool isZero() const { return code_ == 0; }
  [[nodiscard]] constexpr bool isNegative() const { return code_ < 0; }
  [[nodiscard]] constexpr NodeId node() const { return NodeId((code_ < 0 ? -code_ : code_) - 1); }
  constexpr Ref operator-() const { return Ref(-code_); }
  constexpr bool operator==(const Ref&) const = default;
  constexpr bool operator<(const Ref& other) const { return code_ < other.code_; }

private:
  explicit constexpr Ref(int code) : code_(code) {}
  int code_ = 0;
};

enum class Op {
  load,     // tag: which element or elements, in the terms of the layout that made it
  add,      // left + right
  subtract, // left - right
  multiply, // left * constant
  scale,    // left * the scale of the call
  shuffle,  // lanes of left and right, chosen by tag
  rotate,   // i * left, where the two lanes are the parts of a complex number
};

// Where a value is rounded to the sample type when constants are held in double precision: a carried value is part of a
// longer expression and stays in double; an assigned one ends its expression.
enum class Rounding { assigned, carried };

struct Node {
  Op op;
  Rounding rounding;
  Ref left;
  Ref right;
  int tag; // load: element; shuffle: selector; multiply: index of the constant
};

using Lanes = std::array<Quad, 4>;

// A term of a sum of products.
struct Term {
  Quad factor;
  Ref value;
};

class Graph {
public:
  // ---- Building
  Ref load(int tag);
  Ref add(Ref a, Ref b, Rounding rounding = Rounding::assigned);
  Ref subtract(Ref a, Ref b, Rounding rounding = Rounding::assigned) { return add(a, -b, rounding); }
  Ref multiply(Quad factor, Ref a, Rounding rounding = Rounding::assigned);
  // The product by a constant that keeps its sign and, lane by lane, its zeros and ones.
  Ref multiplyAsStated(const Lanes& factors, Ref a);
  Ref scale(Ref a);
  Ref shuffle(Ref a, Ref b, int selector);
  Ref rotate(Ref a);

  // A node as it stands, or the one that is equal to it: without any of the rules above.
  Ref append(Op op, Ref left, Ref right = {}) { return intern(op, Rounding::assigned, left, right, 0); }
  Ref appendProduct(Quad factor, Ref a) {
    return intern(Op::multiply, Rounding::assigned, a, {}, internConstant({factor, factor, factor, factor}));
  }

  // a + b + c + ... from left to right.
  Ref sum(std::span<const Ref> values);
  // The sum of factor * value from left to right as one expression with a single rounding at its end. A term of factor
  // 1 is added as it stands.
  Ref sumOfProducts(std::span<const Term> terms);

  // ---- Reading
  [[nodiscard]] const Node& node(NodeId i) const { return nodes_[i]; }
  [[nodiscard]] const Node& node(Ref r) const { return nodes_[r.node()]; }
  [[nodiscard]] NodeId end() const { return nodes_.end(); } // behind the last node
  [[nodiscard]] const Lanes& constant(const Node& n) const { return number::at(constants_, n.tag); }
  // For each node, whether a value in `outputs` depends on it.
  [[nodiscard]] NodeMap<bool> reachable(std::span<const Ref> outputs) const;

private:
  using Key = std::tuple<Op, Rounding, Ref, Ref, int>;

  Ref intern(Op op, Rounding rounding, Ref left, Ref right, int tag);
  int internConstant(const Lanes& factors);

  NodeMap<Node> nodes_;
  std::map<Key, NodeId> known_;
  std::vector<Lanes> constants_;
  std::map<std::array<double, 4>, int> knownConstants_; // equal after rounding is equal
};

struct Counts {
  int multiplications = 0; // scale included
  int additions = 0;       // subtractions included
  int shuffles = 0;
  int rotations = 0;
};

// The operations that the outputs need.
Counts count(const Graph& g, std::span<const Ref> outputs);

} // namespace tfmgen::graph
