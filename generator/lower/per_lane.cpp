#include "per_lane.hpp"

#include "lane_moves.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <utility>

namespace tfmgen::lower {

namespace {

using graph::Graph;
using graph::Node;
using graph::NodeId;
using graph::NodeMap;
using graph::Op;
using graph::Quad;
using graph::Ref;
using number::at;

// Builds a graph by exact rules only. A negation is a product by a negative constant: of a product, it is the product
// by the constant of opposite sign, unless that is zero. The zero reference is +0, its negation -0; no reference is
// negative.
class ExactGraph {
public:
  Ref load(int tag) { return graph_.load(tag); }
  Ref scale(Ref a) { return graph_.append(Op::scale, a); }

  Ref add(Ref a, Ref b) {
    if (isMinusZero(a) || isMinusZero(b)) {
      return isMinusZero(a) ? b : a;
    }
    if (a.isZero() && b.isZero()) {
      return a;
    }
    if (isNegation(b)) {
      return subtract(a, negate(b));
    }
    if (isNegation(a)) {
      return subtract(b, negate(a));
    }
    return b < a ? graph_.append(Op::add, b, a) : graph_.append(Op::add, a, b); // one node for both orders
  }

  Ref subtract(Ref a, Ref b) {
    if (b.isZero()) {
      return a;
    }
    if (isMinusZero(a)) {
      return negate(b);
    }
    return isNegation(b) ? add(a, negate(b)) : graph_.append(Op::subtract, a, b);
  }

  Ref multiply(Quad factor, Ref a) {
    if (factor == 1 || (a.isZero() && factor >= 0)) {
      return a;
    }
    if (factor == -1 || a.isZero()) {
      return negate(a);
    }
    return isNegation(a) ? graph_.appendProduct(-factor, negate(a)) : graph_.appendProduct(factor, a);
  }

  Ref negate(Ref a) {
    const Quad factor = factorOf(a);
    if (factor == 0) {
      return graph_.appendProduct(-1, a);
    }
    const Ref multiplied = graph_.node(a).left;
    return factor == -1 ? multiplied : graph_.appendProduct(-factor, multiplied);
  }

  Graph take() { return std::move(graph_); }

private:
  // The constant of a product; 0 for other values.
  [[nodiscard]] Quad factorOf(Ref a) const {
    return !a.isZero() && graph_.node(a).op == Op::multiply ? graph_.constant(graph_.node(a))[0] : 0;
  }
  [[nodiscard]] bool isNegation(Ref a) const { return factorOf(a) < 0; }
  [[nodiscard]] bool isMinusZero(Ref a) const { return isNegation(a) && graph_.node(a).left.isZero(); }

  Graph graph_;
};

class TakingApart {
public:
  TakingApart(const Kernel& from, RegisterType type) : from_(from), type_(type), lanes_(from.graph.end()) {}

  RealKernel run() {
    const NodeMap<bool> needed = from_.graph.reachable(from_.outputs());
    for (NodeId i; i != from_.graph.end(); ++i) {
      for (int lane = 0; needed[i] && lane < type_.lanes; ++lane) {
        at(lanes_[i], lane) = build(from_.graph.node(i), lane);
      }
    }
    transform::RealKernel body;
    body.results = results();
    body.graph = to_.take();
    return assignments(std::move(body), Transform::inverse); // the scale is a step of its own
  }

private:
  [[nodiscard]] Ref value(Ref r, int lane) const {
    if (r.isNegative()) {
      std::abort(); // vector kernels state their operands without a minus
    }
    return r.isZero() ? r : at(lanes_[r.node()], lane);
  }

  // Registers of two lanes hold one element, those of four two.
  [[nodiscard]] bool holds(const Access& access, int lane) const {
    return lane < 2 || (type_.lanes == 4 && access.width != Access::Width::low);
  }
  static int sample(const Access& access, int lane) { return 2 * (lane < 2 ? access.first : access.second) + lane % 2; }

  [[nodiscard]] Quad factor(const Node& node, int lane) const {
    const Quad exact = at(from_.graph.constant(node), lane);
    return type_.sampleBits == 32 ? static_cast<float>(exact) : static_cast<double>(exact);
  }

  Ref build(const Node& node, int lane) {
    switch (node.op) {
    case Op::load: {
      const Access& from = at(from_.loads, node.tag);
      return holds(from, lane) ? to_.load(sample(from, lane)) : Ref{};
    }
    case Op::add: return to_.add(value(node.left, lane), value(node.right, lane));
    case Op::subtract: return to_.subtract(value(node.left, lane), value(node.right, lane));
    case Op::multiply: return to_.multiply(factor(node, lane), value(node.left, lane));
    case Op::scale: return to_.scale(value(node.left, lane));
    case Op::rotate: return lane == 0 ? to_.negate(value(node.left, 1)) : value(node.left, 0);
    case Op::shuffle: return moved(node, lane);
    }
    std::abort();
  }

  [[nodiscard]] Ref moved(const Node& node, int lane) const {
    if (node.tag == kUnpackLow || node.tag == kUnpackHigh) {
      return value(lane % 2 == 0 ? node.left : node.right, (node.tag == kUnpackLow ? 0 : 2) + lane / 2);
    }
    return value(lane < 2 ? node.left : node.right, selected(node.tag, lane));
  }

  [[nodiscard]] std::vector<Ref> results() const {
    std::vector<Ref> refs;
    for (const Store& store : from_.stores) {
      for (int lane = 0; lane < type_.lanes; ++lane) {
        if (holds(store.to, lane)) {
          const int number = sample(store.to, lane);
          refs.resize(std::max(refs.size(), static_cast<std::size_t>(number) + 1));
          at(refs, number) = value(store.value, lane);
        }
      }
    }
    return refs;
  }

  const Kernel& from_;
  RegisterType type_;
  ExactGraph to_;
  NodeMap<std::array<Ref, 4>> lanes_;
};

} // namespace

RealKernel perLane(const Kernel& kernel, RegisterType type) {
  return TakingApart(kernel, type).run();
}

} // namespace tfmgen::lower
