#include "signs.hpp"

namespace tfmgen::lower {

namespace {

using graph::Graph;
using graph::Node;
using graph::Op;
using graph::Ref;

class Settling {
public:
  explicit Settling(const Kernel& from) : from_(from), wishes_(from.graph.nodes().size()), built_(wishes_.size()) {
    to_.loads = from.loads;
  }

  Kernel run() {
    const std::vector<bool> needed = from_.graph.reachable(from_.outputs());
    collectWishes(needed);
    for (std::size_t i = 0; i < needed.size(); ++i) {
      if (static_cast<int>(i) == from_.lastStep) {
        to_.lastStep = static_cast<int>(to_.graph.nodes().size());
      }
      if (needed[i]) {
        built_[i] = build(from_.graph.nodes()[i], wishes_[i]);
      }
    }
    for (const Store& store : from_.stores) {
      to_.stores.push_back({positive(operand(store.value)), store.to});
    }
    return std::move(to_);
  }

private:
  // How many users that cannot take a minus want a value with its own sign, less those that want it negated.
  void collectWishes(const std::vector<bool>& needed) {
    const auto wish = [this](Ref value, int sign) {
      if (!value.isZero()) {
        wishes_[static_cast<std::size_t>(value.node())] += value.isNegative() ? -sign : sign;
      }
    };
    for (const Store& store : from_.stores) {
      wish(store.value, 1);
    }
    for (std::size_t i = needed.size(); i-- > 0;) {
      const Node& node = from_.graph.nodes()[i];
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
    const Ref built = built_[static_cast<std::size_t>(value.node())];
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
  std::vector<int> wishes_;
  std::vector<Ref> built_;
};

} // namespace

Kernel withSettledSigns(const Kernel& kernel) {
  return Settling(kernel).run();
}

} // namespace tfmgen::lower
