#include "graph.hpp"

#include <algorithm>
#include <utility>

namespace tfmgen::graph {

namespace {

bool all(const Lanes& factors, double value) {
  return std::ranges::all_of(factors, [value](Quad f) { return static_cast<double>(f) == value; });
}

} // namespace

Ref Graph::intern(Op op, Rounding rounding, Ref left, Ref right, int tag) {
  const auto [entry, isNew] = known_.try_emplace({op, rounding, left, right, tag}, nodes_.end());
  if (isNew) {
    nodes_.append({op, rounding, left, right, tag});
  }
  return Ref::to(entry->second);
}

int Graph::internConstant(const Lanes& factors) {
  std::array<double, 4> rounded{};
  std::ranges::transform(factors, rounded.begin(), [](Quad f) { return static_cast<double>(f); });
  const auto [entry, isNew] = knownConstants_.try_emplace(rounded, static_cast<int>(constants_.size()));
  if (isNew) {
    constants_.push_back(factors);
  }
  return entry->second;
}

Ref Graph::load(int tag) {
  return intern(Op::load, Rounding::assigned, {}, {}, tag);
}

// Two minus signs stay a sign of the sum. With one of each the positive operand comes first. A difference keeps the
// orientation in which it is stated first; stated once more the other way round it is that node with a minus.
Ref Graph::add(Ref a, Ref b, Rounding rounding) {
  if (a.isZero() || b.isZero()) {
    return a.isZero() ? b : a;
  }
  if (a.isNegative() == b.isNegative()) {
    if (a.isNegative()) {
      return -add(-a, -b, rounding);
    }
    const auto known = known_.find({Op::add, rounding, b, a, 0});
    return known != known_.end() ? Ref::to(known->second) : intern(Op::add, rounding, a, b, 0);
  }
  if (a.isNegative()) {
    std::swap(a, b);
  }
  b = -b;
  if (a == b) {
    return {};
  }
  const auto known = known_.find({Op::subtract, rounding, b, a, 0});
  return known != known_.end() ? -Ref::to(known->second) : intern(Op::subtract, rounding, a, b, 0);
}

// One constant serves both signs of a product.
Ref Graph::multiply(Quad factor, Ref a, Rounding rounding) {
  if (a.isZero() || static_cast<double>(factor) == 0) {
    return {};
  }
  if (static_cast<double>(factor) == 1) {
    return a;
  }
  if (factor < 0) {
    return -multiply(-factor, a, rounding);
  }
  if (a.isNegative()) {
    return -multiply(factor, -a, rounding);
  }
  return intern(Op::multiply, rounding, a, {}, internConstant({factor, factor, factor, factor}));
}

Ref Graph::multiplyAsStated(const Lanes& factors, Ref a) {
  if (a.isZero() || all(factors, 0)) {
    return {};
  }
  return a.isNegative() ? -multiplyAsStated(factors, -a)
                        : intern(Op::multiply, Rounding::assigned, a, {}, internConstant(factors));
}

Ref Graph::scale(Ref a) {
  return a.isNegative() ? -scale(-a) : intern(Op::scale, Rounding::assigned, a, {}, 0);
}

Ref Graph::shuffle(Ref a, Ref b, int selector) {
  if (a.isZero() && b.isZero()) {
    return {};
  }
  if ((a.isZero() || a.isNegative()) && (b.isZero() || b.isNegative())) {
    return -shuffle(-a, -b, selector);
  }
  return intern(Op::shuffle, Rounding::assigned, a, b, selector);
}

Ref Graph::rotate(Ref a) {
  if (a.isZero()) {
    return a;
  }
  return a.isNegative() ? -rotate(-a) : intern(Op::rotate, Rounding::assigned, a, {}, 0);
}

Ref Graph::sum(std::span<const Ref> values) {
  Ref total;
  for (const Ref value : values) {
    total = add(total, value);
  }
  return total;
}

Ref Graph::sumOfProducts(std::span<const Term> terms) {
  std::vector<Ref> values;
  for (const Term& term : terms) {
    const Ref product = multiply(term.factor, term.value, Rounding::carried);
    if (!product.isZero()) {
      values.push_back(product);
    }
  }
  if (values.size() == 1) { // a product alone is an assignment
    const auto lone = std::ranges::find_if(terms, [](const Term& t) { return t.factor != 0 && !t.value.isZero(); });
    return multiply(lone->factor, lone->value);
  }
  Ref total;
  bool hasProduct = false; // what lies before the first product is rounded by itself
  for (std::size_t i = 0; i < values.size(); ++i) {
    hasProduct = hasProduct || node(values[i]).rounding == Rounding::carried;
    const bool isPart = hasProduct && i + 1 < values.size();
    total = add(total, values[i], isPart ? Rounding::carried : Rounding::assigned);
  }
  return total;
}

NodeMap<bool> Graph::reachable(std::span<const Ref> outputs) const {
  NodeMap<bool> needed(end());
  const auto mark = [&needed](Ref r) {
    if (!r.isZero()) {
      needed[r.node()] = true;
    }
  };
  std::ranges::for_each(outputs, mark);
  for (NodeId i = end(); i != NodeId{};) { // operands precede their users
    if (needed[--i]) {
      mark(nodes_[i].left);
      mark(nodes_[i].right);
    }
  }
  return needed;
}

Counts count(const Graph& g, std::span<const Ref> outputs) {
  Counts counts;
  const NodeMap<bool> needed = g.reachable(outputs);
  for (NodeId i; i != g.end(); ++i) {
    if (!needed[i]) {
      continue;
    }
    switch (g.node(i).op) {
    case Op::multiply:
    case Op::scale: ++counts.multiplications; break;
    case Op::add:
    case Op::subtract: ++counts.additions; break;
    case Op::shuffle: ++counts.shuffles; break;
    case Op::rotate: ++counts.rotations; break;
    case Op::load: break;
    }
  }
  return counts;
}

} // namespace tfmgen::graph
