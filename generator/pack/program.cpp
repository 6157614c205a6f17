#include "program.hpp"

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace tfmgen::pack {

namespace {

using graph::Graph;
using graph::Node;
using graph::NodeId;
using graph::NodeMap;
using graph::Op;
using graph::Ref;

constexpr int kNone = -1;

double factorOf(const Graph& g, const Node& product) {
  return static_cast<double>(g.constant(product)[0]);
}

// Sums of products out of the assignments of a real kernel.
class Assignments {
public:
  Assignments(const lower::RealKernel& kernel, int sampleBits)
      : kernel_(kernel), graph_(kernel.body.graph), valueOf_(graph_.end(), kNone) {
    program_.sampleBits = sampleBits;
  }

  // All loads first, then the assignments in their order.
  Program run(const std::vector<int>& sources, const std::vector<int>& destinations, bool scalesInDouble) {
    const NodeMap<bool> needed = graph_.reachable(kernel_.body.results);
    const auto isNamed = [&](NodeId i, bool asLoad) {
      return needed[i] && !kernel_.isPart[i] && (graph_.node(i).op == Op::load) == asLoad;
    };
    for (NodeId i; i != graph_.end(); ++i) {
      if (isNamed(i, true)) {
        valueOf_[i] = program_.loads.push(number::at(sources, graph_.node(i).tag));
      }
    }
    for (NodeId i; i != graph_.end(); ++i) {
      if (isNamed(i, false)) {
        valueOf_[i] = append(operation(graph_.node(i)));
      }
    }
    for (std::size_t i = 0; i < kernel_.body.results.size(); ++i) {
      output(kernel_.body.results[i], destinations[i], scalesInDouble);
    }
    return std::move(program_);
  }

private:
  int append(Operation operation) { return program_.loads.size() + program_.operations.push(std::move(operation)); }

  void output(Ref result, int element, bool scalesInDouble) {
    const Ref value = graph_.node(result).left;
    int& known = valueOf_[value.node()];
    if (known != kNone) {
      program_.outputs.push_back({element, known, true, result.isNegative()});
      return;
    }
    Operation sum = operation(graph_.node(value)); // a part of the result's expression
    if (!scalesInDouble) {
      known = append(std::move(sum));
      program_.outputs.push_back({element, known, true, result.isNegative()});
      return;
    }
    sum.isDouble = true;
    sum.isScaled = true;
    sum.isNegated = result.isNegative();
    program_.outputs.push_back({element, append(std::move(sum)), false, false});
  }

  [[nodiscard]] Operation operation(const Node& n) const {
    Operation out{sum(n)};
    if (out.terms.size() > kMaximumTerms) {
      throw std::logic_error("a sum of more terms than a vector's shape has room for");
    }
    for (const Term& term : out.terms) {
      const bool isDoubling = std::abs(term.factor) == 2; // a product in the sample type
      if (isDoubling && out.terms.size() > 1) {
        throw std::logic_error("a doubling within a sum could overflow before the sum");
      }
      out.isDouble = out.isDouble || (program_.sampleBits == 32 && std::abs(term.factor) != 1 && !isDoubling);
    }
    if (isExactInFloat(out)) {
      out.isDouble = false;
      if (out.terms.size() == 2 && std::abs(out.terms[0].factor) != 1) { // the product stays within the sum
        std::swap(out.terms[0], out.terms[1]);
      }
    }
    return out;
  }

  // A value, or the product of one.
  [[nodiscard]] bool isTerm(Ref r) const { return valueOf_[r.node()] != kNone || graph_.node(r).op == Op::multiply; }

  [[nodiscard]] Term term(Ref r) const {
    const int value = valueOf_[r.node()];
    if (value != kNone) {
      return {1, value};
    }
    const Node& product = graph_.node(r);
    const int operand = valueOf_[product.left.node()];
    if (operand == kNone) {
      throw std::logic_error("a product of an expression has no place in a sum of products");
    }
    return {factorOf(graph_, product), operand};
  }

  // Brackets come first, whichever side they stand on: a - (b + c) is -(b + c) + a, bit for bit.
  [[nodiscard]] std::vector<Term> sum(const Node& n) const {
    if (n.op == Op::multiply) {
      const int operand = valueOf_[n.left.node()];
      if (operand == kNone) {
        throw std::logic_error("a product of an expression has no place in a sum of products");
      }
      return {{factorOf(graph_, n), operand}};
    }
    const bool isDifference = n.op == Op::subtract;
    const bool endsInRight = isTerm(n.right);
    const Ref head = endsInRight ? n.left : n.right;
    std::vector<Term> terms = isTerm(head) ? std::vector{term(head)} : sum(graph_.node(head));
    Term last = term(endsInRight ? n.right : n.left);
    if (isDifference && endsInRight) {
      last.factor = -last.factor;
    }
    last.negatesSum = isDifference && !endsInRight;
    terms.push_back(last);
    return terms;
  }

  const lower::RealKernel& kernel_;
  const Graph& graph_;
  NodeMap<int> valueOf_;
  Program program_;
};

// Sums of products out of a kernel with one complex number a register.
class Elements {
public:
  explicit Elements(const lower::Kernel& kernel)
      : graph_(kernel.graph), needed_(graph_.reachable(kernel.outputs())), valueOf_(graph_.end(), kNone),
        uses_(graph_.end()) {
    program_.numbersInUnit = 2;
    countUses();
    for (NodeId i; i != graph_.end(); ++i) {
      if (needed_[i] && graph_.node(i).op == Op::load) {
        valueOf_[i] = program_.loads.push(number::at(kernel.loads, graph_.node(i).tag).first);
      }
    }
    for (NodeId i; i != graph_.end(); ++i) {
      if (needed_[i] && !isWithinSum(i)) {
        valueOf_[i] = program_.loads.size() + program_.operations.push(operation(graph_.node(i)));
      }
    }
    for (const lower::Store& store : kernel.stores) {
      const Ref value = graph_.node(store.value).left; // below the scale
      program_.outputs.push_back({store.to.first, valueOf_[value.node()]});
    }
  }

  Program run(int length) {
    program_.sourceLength = length;
    program_.destinationLength = length;
    return std::move(program_);
  }

private:
  void countUses() {
    for (NodeId i; i != graph_.end(); ++i) {
      if (needed_[i]) {
        for (const Ref operand : {graph_.node(i).left, graph_.node(i).right}) {
          if (!operand.isZero()) {
            ++uses_[operand.node()];
          }
        }
      }
    }
  }

  // A product with a single user that is a sum, and a rotation of what is no such product: no operations of their own.
  [[nodiscard]] bool isWithinSum(NodeId i) const {
    const Node& n = graph_.node(i);
    switch (n.op) {
    case Op::load:
    case Op::scale: return true;
    case Op::multiply: return uses_[i] == 1 && !feedsOutput(i);
    case Op::rotate: return !(graph_.node(n.left).op == Op::multiply && uses_[n.left.node()] == 1);
    default: return false;
    }
  }

  [[nodiscard]] bool feedsOutput(NodeId i) const {
    for (NodeId user = i; user != graph_.end(); ++user) {
      const Node& n = graph_.node(user);
      if (needed_[user] && n.op == Op::scale && n.left == Ref::to(i)) {
        return true;
      }
    }
    return false;
  }

  [[nodiscard]] Term term(Ref r) const {
    if (valueOf_[r.node()] != kNone) {
      return {1, valueOf_[r.node()]};
    }
    const Node& n = graph_.node(r);
    Term inner = term(n.left);
    return n.op == Op::rotate ? rotated(inner) : times(inner, factorOf(graph_, n));
  }

  static Term rotated(Term term) {
    if (term.isRotated) {
      throw std::logic_error("a rotation of a rotation is a negation");
    }
    term.isRotated = true;
    return term;
  }

  static Term times(Term term, double factor) {
    if (term.factor != 1) {
      throw std::logic_error("a product of a product is rounded twice");
    }
    term.factor = factor;
    return term;
  }

  [[nodiscard]] Operation operation(const Node& n) const {
    Operation out;
    switch (n.op) {
    case Op::multiply: out.terms = {times(term(n.left), factorOf(graph_, n))}; break;
    case Op::rotate: out.terms = {rotated(term(n.left))}; break;
    default: {
      Term right = term(n.right);
      right.factor = n.op == Op::subtract ? -right.factor : right.factor;
      out.terms = {term(n.left), right};
    }
    }
    return out;
  }

  const Graph& graph_;
  NodeMap<bool> needed_;
  NodeMap<int> valueOf_;
  NodeMap<int> uses_;
  Program program_;
};

} // namespace

Program program(const lower::RealKernel& kernel, lower::Transform transform, lower::Format format, int length,
                int sampleBits) {
  const bool readsSpectrum = transform == lower::Transform::inverse;
  const lower::Format source = readsSpectrum ? format : lower::Format::plain;
  const lower::Format destination = readsSpectrum ? lower::Format::plain : format;
  std::vector<int> sources;
  std::vector<int> destinations;
  for (int i = 0; i < length; ++i) {
    sources.push_back(lower::elementOf(source, i, length));
    destinations.push_back(lower::elementOf(destination, i, length));
  }
  Program out = Assignments(kernel, sampleBits).run(sources, destinations, sampleBits == 32);
  out.sourceLength = lower::elementCount(source, length);
  out.destinationLength = lower::elementCount(destination, length);
  out.zeros = lower::zeroElements(destination, length);
  return out;
}

Program program(const lower::Kernel& kernel, int length) {
  return Elements(kernel).run(length);
}

Program inNumbers(const Program& pairs) {
  Program out;
  out.sampleBits = pairs.sampleBits;
  out.sourceLength = 2 * pairs.sourceLength;
  out.destinationLength = 2 * pairs.destinationLength;
  for (const int element : pairs.loads) {
    out.loads.push(2 * element);
    out.loads.push(2 * element + 1);
  }
  for (const Operation& operation : pairs.operations) {
    for (const int part : {0, 1}) {
      Operation half = operation;
      for (Term& term : half.terms) { // i * (re, im) = (-im, re)
        term.value = 2 * term.value + (term.isRotated ? 1 - part : part);
        term.factor = term.isRotated && part == 0 ? -term.factor : term.factor;
        term.isRotated = false;
      }
      out.operations.push(std::move(half));
    }
  }
  for (const Output& output : pairs.outputs) {
    for (const int part : {0, 1}) {
      out.outputs.push_back({2 * output.element + part, 2 * output.value + part});
    }
  }
  return out;
}

int scalarOperations(const Program& program) {
  std::size_t count = 0;
  for (const Operation& operation : program.operations) {
    const auto hasFactor = [](const Term& term) { return std::abs(term.factor) != 1; };
    count += operation.terms.size() - 1;
    count += static_cast<std::size_t>(std::ranges::count_if(operation.terms, hasFactor));
    count += (operation.isScaled ? 1U : 0U) + (operation.isNegated ? 1U : 0U);
  }
  for (const Output& output : program.outputs) {
    count += (output.isScaled ? 1U : 0U) + (output.isNegated ? 1U : 0U);
  }
  return static_cast<int>(count);
}

bool isExactInFloat(const Operation& operation) {
  constexpr int kSmallest = -29;
  int factors = 0;
  for (const Term& term : operation.terms) {
    int exponent = 0;
    const bool isPower = std::frexp(std::abs(term.factor), &exponent) == 0.5;
    if (!isPower || exponent - 1 < kSmallest || term.negatesSum || (exponent > 1 && operation.terms.size() > 1)) {
      return false;
    }
    factors += exponent != 1 ? 1 : 0;
  }
  return operation.terms.size() <= 2 && factors <= 1 && !operation.isScaled && !operation.isNegated;
}

} // namespace tfmgen::pack
