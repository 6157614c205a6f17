#include "pairs.hpp"

#include "number/index.hpp"

#include <algorithm>
#include <map>
#include <set>

namespace tfmgen::wide {

namespace {

using number::at;

constexpr int kNone = -1;

bool isMemory(const Elements& elements) {
  return std::ranges::any_of(elements, [](const Element& e) { return e.kind == Element::Kind::memory; });
}

// The node whose register an operand takes as it stands.
int wholeNode(const Elements& elements) {
  int node = kNone;
  for (std::size_t i = 0; i < elements.size(); ++i) {
    const Element& e = elements[i];
    if (e.kind == Element::Kind::any) {
      continue;
    }
    if (e.kind != Element::Kind::value || e.position != static_cast<int>(i) || (node != kNone && node != e.index)) {
      return kNone;
    }
    node = e.index;
  }
  return node;
}

class Pairing {
public:
  explicit Pairing(const Graph& graph)
      : graph_(graph), mates_(graph.nodes.size(), kNone), depths_(graph.nodes.size(), 0), users_(graph.nodes.size()) {
    for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
      for (const Elements* const operand : {&graph.nodes[i].left, &graph.nodes[i].right}) {
        for (const Element& e : *operand) {
          if (e.kind == Element::Kind::value) {
            depths_[i] = std::max(depths_[i], at(depths_, e.index) + 1);
            at(users_, e.index).insert(static_cast<int>(i));
          }
        }
      }
    }
  }

  Graph run() {
    pairStores();
    pairLoads();
    return build();
  }

private:
  [[nodiscard]] const Node& node(int i) const { return at(graph_.nodes, i); }

  void mate(int a, int b) {
    const bool isPossible = a != b && at(mates_, a) == kNone && at(mates_, b) == kNone && node(a).op == node(b).op &&
                            at(depths_, a) == at(depths_, b) && node(a).left.size() == node(b).left.size();
    if (!isPossible) {
      return;
    }
    at(mates_, a) = b;
    at(mates_, b) = a;
    isSecond_.insert(b);
    for (const auto& [x, y] : {std::pair{&node(a).left, &node(b).left}, std::pair{&node(a).right, &node(b).right}}) {
      const int left = wholeNode(*x);
      const int right = wholeNode(*y);
      if (left != kNone && right != kNone) {
        mate(left, right);
      }
    }
    for (const int user : at(users_, a)) {
      for (const int other : at(users_, b)) {
        if (areAlike(user, other, a, b)) {
          mate(user, other);
        }
      }
    }
  }

  // Whether x does with a what y does with b.
  [[nodiscard]] bool areAlike(int x, int y, int a, int b) const {
    if (node(x).op != node(y).op) {
      return false;
    }
    bool isAlike = true;
    bool takesBoth = false;
    for (const auto& [left, right] :
         {std::pair{&node(x).left, &node(y).left}, std::pair{&node(x).right, &node(y).right}}) {
      const int l = wholeNode(*left);
      const int r = wholeNode(*right);
      takesBoth = takesBoth || (l == a && r == b);
      isAlike = isAlike && hasSameSigns(*left, *right) && (l == kNone) == (r == kNone) &&
                (l == kNone || at(mates_, l) == r || (at(mates_, l) == kNone && at(mates_, r) == kNone));
    }
    return isAlike && takesBoth;
  }

  static bool hasSameSigns(const Elements& a, const Elements& b) {
    return std::ranges::equal(a, b, [](const Element& x, const Element& y) {
      return x.kind == Element::Kind::any || y.kind == Element::Kind::any ||
             (x.isNegative == y.isNegative && x.isSwapped == y.isSwapped);
    });
  }

  // Registers whose elements lie right behind each other, or else at the distance that most have.
  void pairStores() {
    std::vector<std::pair<int, std::vector<int>>> lists;
    for (const Store& store : graph_.stores) {
      std::vector<int> elements;
      std::ranges::transform(store.elements, std::back_inserter(elements),
                             [](const std::optional<int>& e) { return e.value_or(kNone); });
      lists.emplace_back(store.node, elements);
    }
    pairAtBestDistance(lists);
  }

  void pairLoads() {
    std::vector<std::pair<int, std::vector<int>>> lists;
    for (std::size_t i = 0; i < graph_.nodes.size(); ++i) {
      const Elements& left = graph_.nodes[i].left;
      if (isMemory(left)) {
        std::vector<int> elements;
        std::ranges::transform(left, std::back_inserter(elements),
                               [](const Element& e) { return e.kind == Element::Kind::memory ? e.index : kNone; });
        lists.emplace_back(static_cast<int>(i), elements);
      }
    }
    pairAtBestDistance(lists);
  }

  void pairAtBestDistance(const std::vector<std::pair<int, std::vector<int>>>& lists) {
    int length = 1;
    for (const auto& [node, elements] : lists) {
      length = std::max(length, *std::ranges::max_element(elements) + 1);
    }
    std::map<int, int> counts;
    for (const auto& [a, left] : lists) {
      for (const auto& [b, right] : lists) {
        if (const int d = distance(left, right, length); a != b && d != kNone) {
          counts[d] += 1;
        }
      }
    }
    if (counts.contains(static_cast<int>(lists.front().second.size()))) {
      counts[static_cast<int>(lists.front().second.size())] *= 2; // adjacent registers are one access
    }
    if (counts.empty()) {
      return;
    }
    const int best = std::ranges::max_element(counts, {}, [](const auto& entry) { return entry.second; })->first;
    for (const auto& [a, left] : lists) {
      for (const auto& [b, right] : lists) {
        if (distance(left, right, length) == best) {
          mate(a, b);
        }
      }
    }
  }

  // By how much all elements of b lie behind those of a, around the end.
  static int distance(const std::vector<int>& a, const std::vector<int>& b, int length) {
    int d = kNone;
    for (std::size_t i = 0; i < a.size(); ++i) {
      if (a[i] == kNone && b[i] == kNone) {
        continue;
      }
      if (a[i] == kNone || b[i] == kNone) {
        return kNone;
      }
      const int here = (b[i] - a[i] + length) % length;
      if (d != kNone && here != d) {
        return kNone;
      }
      d = here;
    }
    return d;
  }

  // ---- Building

  Graph build() {
    places_.resize(graph_.nodes.size(), {kNone, 0});
    for (int i = 0; i < static_cast<int>(graph_.nodes.size()); ++i) {
      place(i);
    }
    addStores();
    return std::move(out_);
  }

  // Puts a node with its mate behind all that they need. Mates have the same depth, so neither needs the other.
  void place(int i) {
    if (at(places_, i).first != kNone) {
      return;
    }
    const int mate = at(mates_, i);
    const int first = isSecond_.contains(i) ? mate : i;
    placeOperands(first);
    Node made = moved(first);
    if (mate != kNone) {
      const int second = first == i ? mate : i;
      placeOperands(second);
      const Node other = moved(second);
      at(places_, second) = {static_cast<int>(out_.nodes.size()), static_cast<int>(made.left.size())};
      std::ranges::copy(other.left, std::back_inserter(made.left));
      std::ranges::copy(other.right, std::back_inserter(made.right));
      std::ranges::copy(other.factors, std::back_inserter(made.factors));
    }
    at(places_, first) = {static_cast<int>(out_.nodes.size()), 0};
    out_.nodes.push_back(std::move(made));
  }

  void placeOperands(int i) {
    for (const Elements* const operand : {&node(i).left, &node(i).right}) {
      for (const Element& e : *operand) {
        if (e.kind == Element::Kind::value) {
          place(e.index);
        }
      }
    }
  }

  void addStores() {
    std::map<int, Store> stores;
    for (const Store& store : graph_.stores) {
      const auto& [number, offset] = at(places_, store.node);
      Store& to = stores[number];
      to.node = number;
      to.elements.resize(at(out_.nodes, number).left.size());
      for (std::size_t i = 0; i < store.elements.size(); ++i) {
        to.elements[static_cast<std::size_t>(offset) + i] = store.elements[i];
      }
    }
    for (const auto& [number, store] : stores) {
      out_.stores.push_back(store);
    }
  }

  [[nodiscard]] Node moved(int i) const {
    Node out = node(i);
    for (Elements* const operand : {&out.left, &out.right}) {
      for (Element& e : *operand) {
        if (e.kind == Element::Kind::value) {
          const auto& [number, offset] = at(places_, e.index);
          e.index = number;
          e.position += offset;
        }
      }
    }
    return out;
  }

  const Graph& graph_;
  std::vector<int> mates_;
  std::vector<int> depths_;
  std::vector<std::set<int>> users_;
  std::set<int> isSecond_;
  Graph out_;
  std::vector<std::pair<int, int>> places_; // of the old nodes: the new node and the first element there
};

} // namespace

Graph inPairs(const Graph& graph) {
  return Pairing(graph).run();
}

} // namespace tfmgen::wide
