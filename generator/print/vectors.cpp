#include "vectors.hpp"

#include "lower/lane_moves.hpp"
#include "work.hpp"

#include <cstdlib>
#include <map>

namespace tfmgen::print {

namespace {

using graph::Node;
using graph::NodeId;
using graph::NodeMap;
using graph::Op;
using graph::Ref;
using lower::Access;
using number::at;

class Writer {
public:
  Writer(const lower::Kernel& kernel, const VectorType& type) : kernel_(kernel), type_(type) {}

  void define(NodeId index) {
    const Node& node = kernel_.graph.node(index);
    names_[index] = node.op == Op::load ? loadName(node) : "t" + std::to_string(++values_);
    line("const V " + names_[index] + " = " + expression(node));
  }

  void store(const lower::Store& to) {
    const std::string value = name(to.value);
    switch (to.to.width) {
    case Access::Width::whole: line("Access::store(" + offset("y", to.to.first) + ", " + value + ")"); break;
    case Access::Width::halves:
      line("storeHalves(" + offset("y", to.to.first) + ", " + offset("y", to.to.second) + ", " + value + ")");
      break;
    case Access::Width::low: line("storeLow(" + offset("y", to.to.first) + ", " + value + ")"); break;
    }
  }

  [[nodiscard]] std::string text() const { return constants_ + body_; }

private:
  void line(const std::string& statement) { body_ += "    " + statement + ";\n"; }

  [[nodiscard]] std::string name(Ref value) const {
    if (value.isNegative()) {
      std::abort(); // vector kernels state their outputs and lane moves without a minus
    }
    return value.isZero() ? "V{}" : names_.at(value.node());
  }

  [[nodiscard]] std::string loadName(const Node& node) const {
    const Access& from = at(kernel_.loads, node.tag);
    std::string text = "x" + std::to_string(from.first);
    if (type_.lanes == 4 && from.width != Access::Width::low) {
      text += "_" + std::to_string(from.second);
    }
    return text;
  }

  std::string expression(const Node& node) {
    switch (node.op) {
    case Op::load: return load(at(kernel_.loads, node.tag));
    case Op::add: return name(node.left) + " + " + name(node.right);
    case Op::subtract: return name(node.left) + " - " + name(node.right);
    case Op::multiply: return constant(kernel_.graph.constant(node)) + " * " + name(node.left);
    case Op::scale: return "s * " + name(node.left);
    case Op::rotate: return "timesI(" + name(node.left) + ")";
    case Op::shuffle: return shuffle(node);
    }
    std::abort();
  }

  [[nodiscard]] std::string shuffle(const Node& node) const {
    const std::string operands = name(node.left) + ", " + name(node.right) + ")";
    if (node.tag == lower::kUnpackLow || node.tag == lower::kUnpackHigh) {
      return (node.tag == lower::kUnpackLow ? "unpackLow(" : "unpackHigh(") + operands;
    }
    const bool isPermutation = node.left == node.right;
    std::string lanes;
    for (int i = 0; i < 4; ++i) {
      const int right = isPermutation || i < 2 ? 0 : 4; // lanes of the right one are numbered behind those of the left
      lanes += (i == 0 ? "" : ", ") + std::to_string(right + lower::selected(node.tag, i));
    }
    return isPermutation ? "permute<" + lanes + ">(" + name(node.left) + ")" : "shuffle<" + lanes + ">(" + operands;
  }

  std::string constant(const graph::Lanes& lanes) {
    std::string value;
    for (int i = 0; i < type_.lanes; ++i) {
      value += (i == 0 ? "" : ", ") + literal(at(lanes, i), type_.precision);
    }
    const auto [entry, isNew] = constantNames_.try_emplace(value, "c" + std::to_string(constantNames_.size() + 1));
    if (isNew) {
      constants_ += type_.isRepeated ? "    const V " + entry->second + " = repeated<V>(" + value + ");\n"
                                     : "    constexpr V " + entry->second + "{" + value + "};\n";
    }
    return entry->second;
  }

  // Elements are counted in pairs of real numbers.
  static std::string offset(const char* array, int element) { return array + (" + " + std::to_string(2 * element)); }

  static std::string load(const Access& from) {
    switch (from.width) {
    case Access::Width::whole: return "Access::load(" + offset("x", from.first) + ")";
    case Access::Width::halves: return "loadHalves(" + offset("x", from.first) + ", " + offset("x", from.second) + ")";
    case Access::Width::low: return "loadLow(" + offset("x", from.first) + ")";
    }
    std::abort();
  }

  const lower::Kernel& kernel_;
  VectorType type_;
  std::map<NodeId, std::string> names_;
  std::map<std::string, std::string> constantNames_;
  std::string constants_;
  std::string body_;
  int values_ = 0;
};

// All nodes that the stores need, and the stores.
Work work(const lower::Kernel& kernel) {
  const graph::Graph& g = kernel.graph;
  const NodeMap<bool> needed = g.reachable(kernel.outputs());
  NodeMap<int> taskOf(g.end(), -1);
  Work out;
  for (NodeId i; i != g.end(); ++i) {
    if (!needed[i]) {
      continue;
    }
    schedule::Task task{{}, true, !(i < kernel.lastStep)};
    for (const Ref operand : {g.node(i).left, g.node(i).right}) {
      if (!operand.isZero()) {
        task.operands.push_back(taskOf[operand.node()]);
      }
    }
    taskOf[i] = static_cast<int>(out.tasks.size());
    out.tasks.push_back(task);
    out.values.push_back(i);
  }
  for (const lower::Store& store : kernel.stores) {
    const bool follows = kernel.storesInOrder && !out.tasks.back().hasResult;
    const int predecessor = follows ? static_cast<int>(out.tasks.size()) - 1 : -1;
    out.tasks.push_back({{taskOf[store.value.node()]}, false, true, predecessor});
  }
  return out;
}

} // namespace

std::string vectorStatements(const lower::Kernel& kernel, const VectorType& type) {
  const Work w = work(kernel);
  Writer writer(kernel, type);
  w.inOrder(
      schedule::bestOrder(w.tasks, type.registers), [&](NodeId node) { writer.define(node); },
      [&](int store) { writer.store(at(kernel.stores, store)); });
  return writer.text();
}

} // namespace tfmgen::print
