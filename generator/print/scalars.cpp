#include "scalars.hpp"

#include "work.hpp"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

namespace tfmgen::print {

namespace {

using graph::Graph;
using graph::Node;
using graph::NodeId;
using graph::NodeMap;
using graph::Op;
using graph::Ref;
using number::at;

// Half spectra are numbered R(0), R(1), I(1), R(2) and so on.
std::string spectrumElement(int number) {
  const int k = (number + 1) / 2;
  const bool isReal = number == 0 || number % 2 == 1;
  return (isReal ? "Spectrum::re(" : "Spectrum::im(") + std::to_string(k) + ")";
}

class Writer {
public:
  Writer(const lower::RealKernel& kernel, const ScalarForm& form)
      : kernel_(kernel), graph_(kernel.body.graph), form_(form) {}

  void define(NodeId index) {
    const Node& n = graph_.node(index);
    const bool isLoad = n.op == Op::load;
    names_[index] = isLoad ? "x" + std::to_string(n.tag) : "t" + std::to_string(++values_);
    if (isLoad) {
      line("const T " + names_[index] + " = loadElement(x + " + element(form_.readsSpectrum, n.tag) + ")");
    } else {
      line("const T " + names_[index] + " = T(" + expression(n) + ")");
    }
  }

  void store(int result) {
    line("storeElement(y + " + element(form_.writesSpectrum, result) + ", " + assigned(result) + ")");
  }

  // A complex element, whose real part is this result and whose imaginary part the next.
  void storeParts(int result) {
    line("storeParts(y + " + std::to_string(result) + ", " + assigned(result) + ", " + assigned(result + 1) + ")");
  }

  std::string text() {
    if (form_.writesSpectrum) {
      line("Spectrum::storeZeros(y)");
    }
    return text_;
  }

private:
  void line(const std::string& statement) { text_ += "    " + statement + ";\n"; }

  static std::string element(bool inSpectrum, int number) {
    return inSpectrum ? spectrumElement(number) : std::to_string(number);
  }

  [[nodiscard]] std::string assigned(int result) const {
    const Ref value = kernel_.body.results[static_cast<std::size_t>(result)];
    const std::string scaled = expression(graph_.node(value));
    return "T(" + (value.isNegative() ? "0 - " + scaled : scaled) + ")";
  }

  // A name, or the expression of a part. Only a sum needs brackets, and not where evaluation begins with it anyway.
  [[nodiscard]] std::string operand(Ref r, bool isFirst) const {
    if (r.isZero()) {
      return "0";
    }
    const auto found = names_.find(r.node());
    if (found != names_.end()) {
      return found->second;
    }
    const Node& n = graph_.node(r);
    const bool isSum = n.op == Op::add || n.op == Op::subtract;
    return isSum && !isFirst ? "(" + expression(n) + ")" : expression(n);
  }

  [[nodiscard]] std::string expression(const Node& n) const {
    switch (n.op) {
    case Op::add: return operand(n.left, true) + " + " + operand(n.right, false);
    case Op::subtract: return operand(n.left, true) + " - " + operand(n.right, false);
    case Op::multiply: return factor(n) + operand(n.left, false);
    case Op::scale: return operand(n.left, false) + " * s";
    default: std::abort(); // a load has a name, and there are no lanes
    }
  }

  // A doubling and a negation are exact in the sample type.
  [[nodiscard]] std::string factor(const Node& n) const {
    const number::Quad value = graph_.constant(n)[0];
    return value == -1 ? "-" : (value == 2 ? "2" : literal(value, form_.constants)) + " * ";
  }

  const lower::RealKernel& kernel_;
  const Graph& graph_;
  ScalarForm form_;
  std::map<NodeId, std::string> names_;
  std::string text_;
  int values_ = 0;
};

// The assignments that the results need, and the results.
Work work(const lower::RealKernel& kernel, const ScalarForm& form) {
  const Graph& g = kernel.body.graph;
  const NodeMap<bool> needed = g.reachable(kernel.body.results);
  std::map<NodeId, int> taskOf;
  const auto collect = [&](auto& self, Ref r, std::set<int>& operands) -> void {
    if (r.isZero()) {
      return;
    }
    if (const auto task = taskOf.find(r.node()); task != taskOf.end()) {
      operands.insert(task->second);
      return;
    }
    self(self, g.node(r).left, operands);
    self(self, g.node(r).right, operands);
  };
  Work out;
  const auto add = [&](Ref left, Ref right, bool hasResult) {
    std::set<int> operands;
    collect(collect, left, operands);
    collect(collect, right, operands);
    out.tasks.push_back({{operands.begin(), operands.end()}, hasResult, !hasResult});
  };
  for (NodeId i; i != g.end(); ++i) {
    if (needed[i] && !kernel.isPart[i]) {
      add(g.node(i).left, g.node(i).right, true);
      taskOf[i] = static_cast<int>(out.values.size());
      out.values.push_back(i);
    }
  }
  const std::vector<Ref>& results = kernel.body.results;
  const std::size_t stored = form.storesParts ? 2 : 1;
  for (std::size_t i = 0; i < results.size(); i += stored) {
    add(g.node(results[i]).left, stored == 2 ? g.node(results[i + 1]).left : Ref{}, false);
  }
  return out;
}

// Stores wait for the last load: an element may overwrite one of the source.
std::vector<int> loadsFirst(std::vector<int> order, const std::vector<schedule::Task>& tasks) {
  const auto isLoad = [&](int task) { return at(tasks, task).operands.empty(); };
  const auto lastLoad = std::find_if(order.rbegin(), order.rend(), isLoad).base();
  std::stable_partition(order.begin(), lastLoad, [&](int task) { return at(tasks, task).hasResult; });
  return order;
}

} // namespace

std::string scalarStatements(const lower::RealKernel& kernel, const ScalarForm& form) {
  const Work w = work(kernel, form);
  Writer writer(kernel, form);
  w.inOrder(
      loadsFirst(schedule::bestOrder(w.tasks, form.registers), w.tasks), [&](NodeId node) { writer.define(node); },
      [&](int store) { form.storesParts ? writer.storeParts(2 * store) : writer.store(store); });
  return writer.text();
}

} // namespace tfmgen::print
