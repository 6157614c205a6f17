#include "transpose.hpp"

#include <cstdlib>
#include <map>

namespace tfmgen::graph {

std::vector<Ref> transpose(Graph& g, const Graph& forward, std::span<const Ref> outputs,
                           std::span<const Ref> adjoints) {
  // What flows back into each node of the forward graph: values, and products that are still part of a longer
  // expression.
  NodeMap<std::vector<Term>> into(forward.end());
  const auto contribute = [&into](Ref target, Quad factor, Ref value) {
    if (!target.isZero() && !value.isZero()) {
      into[target.node()].push_back({factor, target.isNegative() ? -value : value});
    }
  };
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    contribute(outputs[i], 1, adjoints[i]);
  }

  std::map<int, Ref> byTag;
  for (NodeId i = forward.end(); i != NodeId{};) {
    const Ref total = g.sumOfProducts(into[--i]);
    const Node& node = forward.node(i);
    switch (node.op) {
    case Op::load: byTag[node.tag] = total; break;
    case Op::add:
      contribute(node.left, 1, total);
      contribute(node.right, 1, total);
      break;
    case Op::subtract:
      contribute(node.left, 1, total);
      contribute(node.right, 1, -total);
      break;
    case Op::multiply: {
      const Quad factor = forward.constant(node)[0];
      if (node.rounding == Rounding::carried) {
        contribute(node.left, factor, total);
      } else {
        contribute(node.left, 1, g.multiply(factor, total));
      }
      break;
    }
    case Op::scale:
    case Op::shuffle:
    case Op::rotate:
    case Op::negate: std::abort(); // only plain real arithmetic is transposed
    }
  }
  std::vector<Ref> result;
  result.reserve(byTag.size());
  for (const auto& [tag, total] : byTag) {
    result.push_back(total);
  }
  return result;
}

} // namespace tfmgen::graph
