#include "fold.hpp"

namespace tfmgen::graph {

namespace {

// For each node, how many operands of needed nodes and outputs refer to it.
NodeMap<int> uses(const Graph& g, std::span<const Ref> outputs) {
  const NodeMap<bool> needed = g.reachable(outputs);
  NodeMap<int> count(g.end());
  const auto use = [&count](Ref r) {
    if (!r.isZero()) {
      ++count[r.node()];
    }
  };
  for (const Ref output : outputs) {
    use(output);
  }
  for (NodeId i; i != g.end(); ++i) {
    if (needed[i]) {
      use(g.node(i).left);
      use(g.node(i).right);
    }
  }
  return count;
}

bool isDoubling(const Graph& g, const Node& n) {
  return n.op == Op::multiply && g.constant(n)[0] == 2;
}

} // namespace

Folded foldDoublings(const Graph& g, std::span<const Ref> outputs) {
  const NodeMap<int> used = uses(g, outputs);
  Folded out;
  NodeMap<Ref> images(g.end());
  const auto image = [&images](Ref r) {
    if (r.isZero()) {
      return r;
    }
    const Ref found = images[r.node()];
    return r.isNegative() ? -found : found;
  };
  for (NodeId i; i != g.end(); ++i) {
    if (used[i] == 0) {
      continue;
    }
    const Node& n = g.node(i);
    switch (n.op) {
    case Op::load: images[i] = out.graph.load(n.tag); break;
    case Op::add: images[i] = out.graph.add(image(n.left), image(n.right), n.rounding); break;
    case Op::subtract: images[i] = out.graph.subtract(image(n.left), image(n.right), n.rounding); break;
    case Op::multiply: {
      const Node& inner = g.node(n.left);
      const bool folds = isDoubling(g, inner) && used[n.left.node()] == 1;
      images[i] = folds ? out.graph.multiply(2 * g.constant(n)[0], image(inner.left), n.rounding)
                        : out.graph.multiply(g.constant(n)[0], image(n.left), n.rounding);
      break;
    }
    case Op::scale: images[i] = out.graph.scale(image(n.left)); break;
    case Op::shuffle: images[i] = out.graph.shuffle(image(n.left), image(n.right), n.tag); break;
    case Op::rotate: images[i] = out.graph.rotate(image(n.left)); break;
    }
  }
  for (const Ref output : outputs) {
    out.outputs.push_back(image(output));
  }
  return out;
}

} // namespace tfmgen::graph
