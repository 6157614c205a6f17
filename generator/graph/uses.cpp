#include "uses.hpp"

namespace tfmgen::graph {

std::vector<int> countUses(const Graph& g, std::span<const Ref> outputs) {
  const std::vector<bool> needed = g.reachable(outputs);
  std::vector<int> count(needed.size());
  const auto use = [&count](Ref r) {
    if (!r.isZero()) {
      ++count[static_cast<std::size_t>(r.node())];
    }
  };
  for (const Ref output : outputs) {
    use(output);
  }
  for (std::size_t i = 0; i < needed.size(); ++i) {
    if (needed[i]) {
      use(g.nodes()[i].left);
      use(g.nodes()[i].right);
    }
  }
  return count;
}

} // namespace tfmgen::graph
