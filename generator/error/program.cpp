#include "program.hpp"

#include "lower/lane_moves.hpp"

#include <array>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace tfmgen::error {

namespace {

using graph::Graph;
using graph::Node;
using graph::Op;
using graph::Ref;
using lower::Access;

bool isPowerOfTwo(double factor) {
  int exponent = 0;
  return std::abs(std::frexp(factor, &exponent)) == 0.5;
}

// ---- Vectors

class Vectors {
public:
  Vectors(const lower::Kernel& kernel, std::size_t elements, int sampleBits)
      : kernel_(kernel), count_(sampleBits == 32 ? 4 : 2), program_(2 * elements, sampleBits), outputs_(2 * elements) {}

  Program run() {
    const Graph& g = kernel_.graph;
    const graph::NodeMap<bool> needed = g.reachable(kernel_.outputs());
    for (graph::NodeId i; i != g.end(); ++i) {
      values_.append(needed[i] ? value(g.node(i)) : Lanes{});
    }
    for (const lower::Store& store : kernel_.stores) {
      const Node& scaled = g.node(store.value);
      const Lanes lanes = operand(store.value.isNegative() ? -scaled.left : scaled.left);
      put(lanes, 0, store.to.first);
      if (count_ == 4 && store.to.width != Access::Width::low) {
        put(lanes, 2, store.to.second);
      }
    }
    for (const Term& value : outputs_) {
      program_.addOutput({value});
    }
    return std::move(program_);
  }

private:
  using Lanes = std::array<Term, 4>;

  void put(const Lanes& lanes, std::size_t first, int element) {
    const std::size_t at = 2 * static_cast<std::size_t>(element);
    outputs_[at] = lanes[first];
    outputs_[at + 1] = lanes[first + 1];
  }

  [[nodiscard]] Lanes operand(Ref r) const {
    Lanes lanes{};
    if (!r.isZero()) {
      lanes = values_[r.node()];
      for (Term& lane : lanes) {
        lane = lane.times(r.isNegative() ? -1 : 1);
      }
    }
    return lanes;
  }

  [[nodiscard]] Lanes loaded(const Access& from) const {
    const auto element = [](int index, std::size_t part) {
      return Term{2 * static_cast<std::size_t>(index) + part, 1};
    };
    Lanes lanes{element(from.first, 0), element(from.first, 1)};
    if (count_ == 4 && from.width != Access::Width::low) {
      lanes[2] = element(from.second, 0);
      lanes[3] = element(from.second, 1);
    }
    return lanes;
  }

  static Lanes shuffled(const Lanes& a, const Lanes& b, int selector) {
    switch (selector) {
    case lower::kUnpackLow: return {a[0], b[0], a[1], b[1]};
    case lower::kUnpackHigh: return {a[2], b[2], a[3], b[3]};
    default: break;
    }
    const auto lane = [&](const Lanes& from, int i) { return number::at(from, lower::selected(selector, i)); };
    return {lane(a, 0), lane(a, 1), lane(b, 2), lane(b, 3)};
  }

  [[nodiscard]] double rounded(graph::Quad factor) const {
    return count_ == 4 ? static_cast<double>(static_cast<float>(factor)) : static_cast<double>(factor);
  }

  Lanes value(const Node& n) {
    const Lanes left = operand(n.left);
    const Lanes right = operand(n.right);
    Lanes lanes{};
    switch (n.op) {
    case Op::load: return loaded(number::at(kernel_.loads, n.tag));
    case Op::shuffle: return shuffled(left, right, n.tag);
    case Op::rotate: return {left[1].times(-1), left[0]};
    case Op::scale: return left; // of a store
    default: break;
    }
    for (std::size_t i = 0; i < count_; ++i) {
      switch (n.op) {
      case Op::add: lanes[i] = program_.add(left[i], right[i]); break;
      case Op::subtract: lanes[i] = program_.add(left[i], right[i].times(-1)); break;
      case Op::multiply: lanes[i] = program_.multiply(rounded(kernel_.graph.constant(n)[i]), left[i]); break;
      default: std::abort(); // not lane by lane
      }
    }
    return lanes;
  }

  const lower::Kernel& kernel_;
  std::size_t count_;
  Program program_;
  graph::NodeMap<Lanes> values_;
  std::vector<Term> outputs_;
};

// ---- Scalars

class Scalars {
public:
  Scalars(const lower::RealKernel& kernel, std::size_t inputs, int sampleBits)
      : kernel_(kernel), program_(inputs, sampleBits), fineUnit_(sampleBits == 32 ? kDoubleUnit : 1) {}

  Program run() {
    const Graph& g = kernel_.body.graph;
    const graph::NodeMap<bool> needed = g.reachable(kernel_.body.results);
    for (graph::NodeId i; i != g.end(); ++i) {
      Value v = needed[i] ? value(g.node(i)) : Value{};
      if (needed[i] && !kernel_.isPart[i]) {
        v = {program_.assign(v.term), false};
      }
      values_.append(v);
    }
    for (const Ref result : kernel_.body.results) {
      const Value before = operand(g.node(result).left);
      const bool endsInDouble = before.isDouble && !program_.isSample(before.term.step);
      program_.addOutput({before.term.times(result.isNegative() ? -1 : 1), endsInDouble});
    }
    return std::move(program_);
  }

private:
  struct Value {
    Term term;
    bool isDouble = false; // the type of the expression; a number of the sample type all the same where it is exact
  };

  [[nodiscard]] Value operand(Ref r) const {
    if (r.isZero()) {
      return {};
    }
    const Value& v = values_[r.node()];
    return {v.term.times(r.isNegative() ? -1 : 1), v.isDouble};
  }

  Value value(const Node& n) {
    const Value left = operand(n.left);
    const Value right = operand(n.right);
    const bool isDouble = left.isDouble || right.isDouble;
    const double unit = isDouble ? fineUnit_ : 1;
    switch (n.op) {
    case Op::load: return {{static_cast<std::size_t>(n.tag), 1}, false};
    case Op::add: return {program_.add(left.term, right.term, unit), isDouble};
    case Op::subtract: return {program_.add(left.term, right.term.times(-1), unit), isDouble};
    case Op::multiply: {
      const auto factor = static_cast<double>(kernel_.body.graph.constant(n)[0]);
      return {program_.multiply(factor, left.term, fineUnit_), isDouble || factor != 2};
    }
    case Op::scale: return left; // of a result
    default: std::abort();       // there are no lanes
    }
  }

  const lower::RealKernel& kernel_;
  Program program_;
  double fineUnit_;
  graph::NodeMap<Value> values_;
};

} // namespace

double unitRoundoff(int sampleBits) {
  return sampleBits == 32 ? 0x1p-24 : 0x1p-53;
}

Program::Program(std::size_t inputs, int sampleBits)
    : inputs_(inputs), sampleBits_(sampleBits), steps_(inputs, Step{{}, {}, 0}) {}

Term Program::add(Term a, Term b, double unit) {
  if (a.isZero() || b.isZero()) {
    return a.isZero() ? b : a;
  }
  if (a.step == b.step) {
    return multiply(a.factor + b.factor, {a.step, 1}, unit);
  }
  return intern(a, b, unit);
}

Term Program::multiply(double factor, Term a, double unit) {
  if (factor == 0 || a.isZero() || isPowerOfTwo(factor)) {
    return factor == 0 ? Term{} : a.times(factor);
  }
  return intern(a.times(factor), {}, unit);
}

Term Program::assign(Term a) {
  return a.isZero() || isSample(a.step) ? a : intern(a, {}, 1);
}

// One step for a - b and b - a, and for a product by either sign of a constant.
Term Program::intern(Term left, Term right, double unit) {
  if (!right.isZero() && right.step < left.step) {
    std::swap(left, right);
  }
  const double sign = left.factor < 0 ? -1 : 1;
  left = left.times(sign);
  right = right.times(sign);
  const auto [entry, isNew] =
      known_.try_emplace({left.step, left.factor, right.step, right.factor, unit}, steps_.size());
  if (isNew) {
    steps_.push_back({left, right, unit});
  }
  return {entry->second, sign};
}

Program program(const lower::Kernel& kernel, std::size_t elements, int sampleBits) {
  return Vectors(kernel, elements, sampleBits).run();
}

Program program(const lower::RealKernel& kernel, std::size_t inputs, int sampleBits) {
  return Scalars(kernel, inputs, sampleBits).run();
}

} // namespace tfmgen::error
