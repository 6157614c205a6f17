#include "transpose.hpp"

#include <cstdlib>

namespace tfmgen::graph {

std::vector<Ref> transpose(Graph& g, const Graph& forward, int inputs, std::span<const Ref> outputs,
                           std::span<const Ref> adjoints) {
  // What flows back into each node of the forward graph: values, and products that are still part of a longer
  // expression.
  std::vector<std::vector<Term>> into(forward.nodes().size());
  const auto contribute = [&into](Ref target, Quad factor, Ref value) {
    if (!target.isZero() && !value.isZero()) {
      into[static_cast<std::size_t>(target.node())].push_back({factor, target.isNegative() ? -value : value});
    }
  };
  for (std::size_t i = 0; i < outputs.size(); ++i) {
    contribute(outputs[i], 1, adjoints[i]);
  }

  std::vector<Ref> result(static_cast<std::size_t>(inputs));
  for (std::size_t i = into.size(); i-- > 0;) {
    const Ref total = g.sumOfProducts(into[i]);
    const Node& node = forward.nodes()[i];
    switch (node.op) {
    case Op::load: result[static_cast<std::size_t>(node.tag)] = total; break;
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
  return result;
}

} // namespace tfmgen::graph
