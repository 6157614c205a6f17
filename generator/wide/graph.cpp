#include "graph.hpp"

#include "orientation.hpp"
#include "partners.hpp"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace tfmgen::wide {

namespace {

using graph::Op;
using number::at;

// The lanes of an element: what its real and its imaginary part come from.
struct LanePair {
  Lane re;
  Lane im;
};

class Interleaving {
public:
  explicit Interleaving(const lower::Kernel& kernel)
      : lanes_(kernel), partners_(lanes_), isFirst_(static_cast<std::size_t>(lanes_.size())), wideOf_(isFirst_.size()) {
  }

  // A pair of values is built where the later one stands: the operands of both precede it.
  Graph run() {
    chooseFirsts();
    for (const int node : lanes_.nodes()) {
      if (node >= partner(node) && op(node) != Op::scale) {
        build(isFirst(node) ? node : partner(node));
      }
    }
    addStores();
    return std::move(graph_);
  }

private:
  [[nodiscard]] Op op(int node) const { return lanes_.node(node).op; }

  [[nodiscard]] int partner(int node) const {
    const auto found = partners_.node(node);
    if (!found) {
      throw std::runtime_error("a value without the other part of its complex number");
    }
    return *found;
  }

  [[nodiscard]] bool isFirst(int node) const { return at(isFirst_, node); }

  // A pair has the number of its smaller node.
  void chooseFirsts() {
    std::vector<bool> isFixed(isFirst_.size(), false);
    std::vector<Use> uses;
    const auto addTo = [&](Use& use, const LanePair& pair) {
      const bool isTurned = pair.re.kind == Lane::Kind::memory ? pair.re.index % 2 != 0
                            : pair.re.index == pair.im.index   ? pair.re.lane % 2 != 0
                                                               : pair.re.index > pair.im.index;
      if (pair.re.kind != Lane::Kind::zero) {
        const bool isValue = pair.re.kind == Lane::Kind::value;
        use.turns.push_back({isValue ? std::min(pair.re.index, pair.im.index) : -1, isTurned});
        use.places.push_back(isValue ? std::min(pair.re.index, pair.im.index) : -1 - pair.re.index / 2);
        use.places.push_back(pair.re.lane);
      }
    };
    for (const int node : lanes_.nodes()) {
      if (node > partner(node)) {
        continue;
      }
      const bool isStored = op(node) == Op::scale;
      at(isFixed, node) = node == partner(node);
      Use left{isStored ? -1 : node, {}, {}};
      Use right = left;
      for (int position = 0; position < Lanes::kCount; ++position) {
        if (const auto pair = lanesOf(node, position)) {
          const auto [first, second] = operands(*pair);
          addTo(left, first);
          addTo(right, second);
        }
      }
      uses.push_back(left);
      uses.push_back(right);
    }
    const std::vector<bool> isTurned = cheapestTurns(static_cast<int>(isFirst_.size()), isFixed, uses);
    for (const int node : lanes_.nodes()) {
      const int other = partner(node);
      at(isFirst_, node) = node == other || at(isTurned, std::min(node, other)) == (node > other);
    }
  }

  // The two lanes of an element of the register that begins with `node`; none where nothing needs them.
  [[nodiscard]] std::optional<LanePair> lanesOf(int node, int position) const {
    const int other = partner(node);
    const bool isInterleaved = node == other;
    const int lane = isInterleaved ? 2 * position : position;
    if (lane >= Lanes::kCount || !lanes_.isLive(node, lane)) {
      return {};
    }
    return LanePair{{Lane::Kind::value, node, lane}, {Lane::Kind::value, other, isInterleaved ? lane + 1 : lane}};
  }

  // Both operands of an element, each with its own parts together.
  [[nodiscard]] std::pair<LanePair, LanePair> operands(const LanePair& element) const {
    const auto [a, b] = lanes_.operands(element.re.index, element.re.lane);
    const auto [c, d] = lanes_.operands(element.im.index, element.im.lane);
    const auto areParts = [&](const Lane& x, const Lane& y) {
      const auto other = partners_.lane(x);
      return other && other->isSameUpToSign(y);
    };
    if (areParts(a, c) && areParts(b, d)) {
      return {{a, c}, {b, d}};
    }
    if (areParts(a, d) && areParts(b, c)) {
      return {{a, d}, {b, c}};
    }
    throw std::runtime_error("operands without the other part of their complex number");
  }

  // Where the parts stand, as one element of a register or of memory.
  [[nodiscard]] Element element(const LanePair& pair) const {
    Element out{.isNegative = {pair.re.isNegative, pair.im.isNegative}};
    switch (pair.re.kind) {
    case Lane::Kind::zero: out.kind = Element::Kind::zero; break;
    case Lane::Kind::memory:
      out.kind = Element::Kind::memory;
      out.index = pair.re.index / 2;
      out.isSwapped = pair.re.index % 2 != 0;
      break;
    case Lane::Kind::value: {
      const bool isInterleaved = pair.re.index == pair.im.index;
      out.kind = Element::Kind::value;
      out.isSwapped = isInterleaved ? pair.re.lane % 2 != 0 : !isFirst(pair.re.index);
      const int first = out.isSwapped ? pair.im.index : pair.re.index;
      out.index = at(wideOf_, first);
      out.position = isInterleaved ? pair.re.lane / 2 : pair.re.lane;
      break;
    }
    }
    return out;
  }

  void build(int first) {
    at(wideOf_, first) = static_cast<int>(graph_.nodes.size());
    Node node{op(first) == Op::multiply ? Node::Op::product : Node::Op::sum, {}, {}, {}};
    for (int position = 0; position < Lanes::kCount; ++position) {
      const auto pair = lanesOf(first, position);
      const auto [left, right] = pair ? operands(*pair) : std::pair<LanePair, LanePair>{};
      node.left.push_back(pair ? element(left) : Element{});
      if (node.op == Node::Op::product) {
        node.factors.push_back(pair ? Parts{factor(pair->re), factor(pair->im)} : Parts{});
      } else {
        node.right.push_back(pair ? element(right) : Element{});
      }
    }
    graph_.nodes.push_back(std::move(node));
  }

  [[nodiscard]] Quad factor(const Lane& lane) const {
    return at(lanes_.kernel().graph.constant(lanes_.node(lane.index)), lane.lane);
  }

  // Scales whole registers where the kernel scales what it has put together for its stores.
  void addStores() {
    std::map<std::pair<int, bool>, std::pair<Node, Store>> byRegister;
    for (const lower::Store& store : lanes_.kernel().stores) {
      const int count = store.to.width == lower::Access::Width::low ? 1 : 2;
      for (int i = 0; i < count; ++i) {
        const auto pair = lanesOf(store.value.node().position(), i);
        const Element scaled = element(operands(*pair).first);
        auto& [node, to] = byRegister[{scaled.index, scaled.isSwapped}];
        const auto position = static_cast<std::size_t>(scaled.position);
        node.op = Node::Op::scale;
        node.left.resize(Lanes::kCount);
        node.left[position] = scaled;
        to.elements.resize(Lanes::kCount);
        to.elements[position] = i == 0 ? store.to.first : store.to.second;
      }
    }
    for (auto& [place, output] : byRegister) {
      output.second.node = static_cast<int>(graph_.nodes.size());
      graph_.nodes.push_back(output.first);
      graph_.stores.push_back(output.second);
    }
  }

  Lanes lanes_;
  Partners partners_;
  std::vector<bool> isFirst_; // of a pair: takes the even lanes
  std::vector<int> wideOf_;
  Graph graph_;
};

// The lanes of a product and the signs that their users give them.
class ProductSigns {
public:
  explicit ProductSigns(Graph& graph) : graph_(graph), seen_(graph.nodes.size()) {}

  // A lane that all users take with a minus has it in its factor, where it costs nothing. The product is exact but for
  // the rounding of its magnitude, so no bit changes.
  void moveToFactors() {
    forEachUse([this](const Element& e, std::size_t lane) {
      (e.isNegative[lane] ? seen(e, lane).minus : seen(e, lane).plus) = true;
    });
    forEachUse([this](Element& e, std::size_t lane) {
      if (seen(e, lane).minus && !seen(e, lane).plus) {
        e.isNegative[lane] = false;
      }
    });
    for (std::size_t node = 0; node < graph_.nodes.size(); ++node) {
      for (std::size_t lane = 0; lane < 2 * graph_.nodes[node].factors.size() && !seen_[node].empty(); ++lane) {
        Quad& factor = graph_.nodes[node].factors[lane / 2][lane % 2];
        factor = seen_[node][lane].minus && !seen_[node][lane].plus ? -factor : factor;
      }
    }
  }

private:
  struct Seen {
    bool plus = false;
    bool minus = false;
  };

  Seen& seen(const Element& e, std::size_t lane) {
    std::vector<Seen>& lanes = at(seen_, e.index);
    lanes.resize(2 * at(graph_.nodes, e.index).factors.size());
    return lanes[2 * static_cast<std::size_t>(e.position) + (e.isSwapped ? 1 - lane : lane)];
  }

  template <class Action>
  void forEachUse(const Action& action) {
    for (Node& user : graph_.nodes) {
      for (Elements* const operand : {&user.left, &user.right}) {
        for (Element& e : *operand) {
          const bool isProduct = e.kind == Element::Kind::value && at(graph_.nodes, e.index).op == Node::Op::product;
          for (std::size_t lane = 0; isProduct && lane < 2; ++lane) {
            action(e, lane);
          }
        }
      }
    }
  }

  Graph& graph_;
  std::vector<std::vector<Seen>> seen_; // by node and lane
};

} // namespace

Graph interleaved(const lower::Kernel& kernel) {
  Graph graph = Interleaving(kernel).run();
  ProductSigns(graph).moveToFactors();
  return graph;
}

} // namespace tfmgen::wide
