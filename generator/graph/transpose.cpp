#include "transpose.hpp"

#include <cstdlib>
#include <map>

namespace tfmgen::graph {

namespace {

bool isDifference(std::span<const Term> terms) {
  return terms.size() == 2 && terms[0].factor == 1 && terms[1].factor == 1 &&
         terms[0].value.isNegative() != terms[1].value.isNegative();
}

// What flows back into a node, the last user's contribution first.
Ref total(Graph& g, std::span<const Term> terms, Minuend minuend) {
  if (minuend == Minuend::firstUser && isDifference(terms) && terms.back().value.isNegative()) {
    return -g.subtract(-terms.back().value, terms.front().value);
  }
  return g.sumOfProducts(terms);
}

} // namespace

std::vector<Ref> transpose(Graph& g, const Graph& forward, std::span<const Ref> outputs, std::span<const Ref> adjoints,
                           Minuend minuend) {
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
    const Node& node = forward.node(--i);
    const Ref sum = total(g, into[i], node.op == Op::subtract ? minuend : Minuend::positive);
    switch (node.op) {
    case Op::load: byTag[node.tag] = sum; break;
    case Op::add:
      contribute(node.left, 1, sum);
      contribute(node.right, 1, sum);
      break;
    case Op::subtract:
      contribute(node.left, 1, sum);
      contribute(node.right, 1, -sum);
      break;
    case Op::multiply: {
      const Quad factor = forward.constant(node)[0];
      if (node.rounding == Rounding::carried) {
        contribute(node.left, factor, sum);
      } else {
        contribute(node.left, 1, g.multiply(factor, sum));
      }
      break;
    }
    case Op::scale:
    case Op::shuffle:
    case Op::rotate: std::abort(); // only plain real arithmetic is transposed
    }
  }
  std::vector<Ref> result;
  result.reserve(byTag.size());
  for (const auto& [tag, sum] : byTag) {
    result.push_back(sum);
  }
  return result;
}

} // namespace tfmgen::graph
