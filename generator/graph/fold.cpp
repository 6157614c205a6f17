#include "fold.hpp"

#include "uses.hpp"

namespace tfmgen::graph {

namespace {

bool isDoubling(const Graph& g, const Node& n) {
  return n.op == Op::multiply && g.constant(n)[0] == 2;
}

} // namespace

Folded foldDoublings(const Graph& g, std::span<const Ref> outputs) {
  const std::vector<int> used = countUses(g, outputs);
  Folded out;
  std::vector<Ref> images(g.nodes().size());
  const auto image = [&images](Ref r) {
    if (r.isZero()) {
      return r;
    }
    const Ref found = images[static_cast<std::size_t>(r.node())];
    return r.isNegative() ? -found : found;
  };
  for (std::size_t i = 0; i < images.size(); ++i) {
    if (used[i] == 0) {
      continue;
    }
    const Node& n = g.nodes()[i];
    switch (n.op) {
    case Op::load: images[i] = out.graph.load(n.tag); break;
    case Op::add: images[i] = out.graph.add(image(n.left), image(n.right), n.rounding); break;
    case Op::subtract: images[i] = out.graph.subtract(image(n.left), image(n.right), n.rounding); break;
    case Op::multiply: {
      const Node& inner = g.node(n.left);
      const bool folds = isDoubling(g, inner) && used[static_cast<std::size_t>(n.left.node())] == 1;
      images[i] = folds ? out.graph.multiply(2 * g.constant(n)[0], image(inner.left), n.rounding)
                        : out.graph.multiply(g.constant(n)[0], image(n.left), n.rounding);
      break;
    }
    case Op::scale: images[i] = out.graph.scale(image(n.left)); break;
    case Op::shuffle: images[i] = out.graph.shuffle(image(n.left), image(n.right), n.tag); break;
    case Op::rotate: images[i] = out.graph.rotate(image(n.left)); break;
    case Op::negate: images[i] = -image(n.left); break;
    }
  }
  for (const Ref output : outputs) {
    out.outputs.push_back(image(output));
  }
  return out;
}

} // namespace tfmgen::graph
