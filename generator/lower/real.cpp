#include "real.hpp"

#include <utility>

namespace tfmgen::lower {

namespace {

using graph::Graph;
using graph::Node;
using graph::Op;
using graph::Ref;
using graph::Rounding;

bool isCarried(const Graph& g, Ref r) {
  return !r.isZero() && g.node(r).rounding == Rounding::carried;
}

// Whether the expression of an assigned value is double at its end.
bool endsInProduct(const Graph& g, const Node& n) {
  return n.op == Op::multiply || isCarried(g, n.left) || isCarried(g, n.right);
}

} // namespace

RealKernel assignments(transform::RealKernel kernel, Transform transform) {
  const Graph& g = kernel.graph;
  graph::NodeMap<bool> isPart(g.end());
  for (graph::NodeId i; i != g.end(); ++i) {
    isPart[i] = g.node(i).rounding == Rounding::carried;
  }
  for (const Ref result : kernel.results) {
    isPart[result.node()] = true;
    const Ref value = g.node(result).left;
    if (transform == Transform::forward && endsInProduct(g, g.node(value))) {
      isPart[value.node()] = true;
    }
  }
  return {std::move(kernel), std::move(isPart)};
}

} // namespace tfmgen::lower
