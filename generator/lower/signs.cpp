#include "signs.hpp"

namespace tfmgen::lower {

namespace {

using graph::Graph;
using graph::Node;
using graph::NodeId;
using graph::NodeMap;
using graph::Op;
using graph::Ref;

class Settling {
public:
  explicit Settling(const Kernel& from) : from_(from), wishes_(from.graph.end()), built_(from.graph.end()) {
    to_.loads = from.loads;
  }

  Kernel run() {
    const NodeMap<bool> needed = from_.graph.reachable(from_.outputs());
    collectWishes(needed);
    for (NodeId i; i != from_.graph.end(); ++i) {
      if (i == from_.lastStep) {
        to_.lastStep = to_.graph.end();
      }
      if (needed[i]) {
        built_[i] = build(from_.graph.node(i), wishes_[i]);
      }
    }
    for (const Store& store : from_.stores) {
      to_.stores.push_back({positive(operand(store.value)), store.to});
    }
    return std::move(to_);
  }

private:
  // How many users that cannot take a minus want a value with its own sign, less those that want it negated.
  void collectWishes(const NodeMap<bool>& needed) {
    const auto wish = [this](Ref value, int sign) {
      if (!value.isZero()) {
        wishes_[value.node()] += value.isNegative() ? -sign : sign;
      }
    };
    for (const Store& store : from_.stores) {
      wish(store.value, 1);
    }
    for (NodeId i = from_.graph.end(); i != NodeId{};) {
      const Node& node = from_.graph.node(--i);
      const int sign = wishes_[i] < 0 ? -1 : 1;
      const bool isMoved = node.op == Op::shuffle || node.op == Op::scale || node.op == Op::rotate;
      if (needed[i] && (isMoved || (node.op == Op::add && sign < 0))) {
        wish(node.left, sign);
        wish(node.right, sign);
      }
    }
  }

  [[nodiscard]] Ref operand(Ref value) const {
    if (value.isZero()) {
      return value;
    }
    const Ref built = built_[value.node()];
    return value.isNegative() ? -built : built;
  }

  Ref positive(Ref value) { return value.isNegative() ? to_.graph.append({Op::negate, {}, -value, {}, 0}) : value; }

  // The new value of a node, with a sign.
  Ref build(const Node& node, int wish) {
    Graph& g = to_.graph;
    const Ref left = operand(node.left);
    const Ref right = operand(node.right);
    switch (node.op) {
    case Op::add: return sum(node, left, right, wish);
    case Op::subtract: return sum(node, left, -right, wish);
    case Op::multiply: {
      const bool isNegative = wish == 0 ? left.isNegative() : wish < 0;
      const Ref magnitude = left.isNegative() ? -left : left;
      const Ref product =
          g.appendProduct(from_.graph.constant(node), left.isNegative() != isNegative, magnitude, node.rounding);
      return isNegative ? -product : product;
    }
    case Op::shuffle:
      if (left.isNegative() != right.isNegative() && !left.isZero() && !right.isZero()) {
        return g.append({node.op, node.rounding, positive(left), positive(right), node.tag});
      }
      [[fallthrough]];
    default:
      return left.isNegative() || right.isNegative() ? -g.append({node.op, node.rounding, -left, -right, node.tag})
                                                     : g.append({node.op, node.rounding, left, right, node.tag});
    }
  }

  Ref sum(const Node& node, Ref a, Ref b, int wish) {
    Graph& g = to_.graph;
    if (a.isNegative() == b.isNegative()) {
      return a.isNegative() ? -g.append({Op::add, node.rounding, -a, -b, 0})
                            : g.append({Op::add, node.rounding, a, b, 0});
    }
    const Ref minuend = a.isNegative() ? b : a;
    const Ref subtrahend = a.isNegative() ? -a : -b;
    return wish < 0 ? -g.append({Op::subtract, node.rounding, subtrahend, minuend, 0})
                    : g.append({Op::subtract, node.rounding, minuend, subtrahend, 0});
  }

  const Kernel& from_;
  Kernel to_;
  NodeMap<int> wishes_;
  NodeMap<Ref> built_;
};

} // namespace

Kernel withSettledSigns(const Kernel& kernel) {
  return Settling(kernel).run();
}

} // namespace tfmgen::lower
