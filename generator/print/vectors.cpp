#include "vectors.hpp"

#include "lower/lane_moves.hpp"
#include "schedule/schedule.hpp"

#include <cstdlib>
#include <map>

namespace tfmgen::print {

namespace {

using graph::Node;
using graph::Op;
using graph::Ref;
using lower::Access;

class Writer {
public:
  Writer(const lower::Kernel& kernel, const VectorType& type) : kernel_(kernel), type_(type) {}

  std::string write(const std::vector<int>& order) {
    const auto& nodes = kernel_.graph.nodes();
    for (const int task : order) {
      const auto index = static_cast<std::size_t>(task);
      if (index < nodes.size()) {
        names_[task] = nodes[index].op == Op::load ? loadName(nodes[index]) : "t" + std::to_string(++values_);
        line("const V " + names_[task] + " = " + expression(nodes[index]));
      } else {
        store(kernel_.stores[index - nodes.size()]);
      }
    }
    return constants_ + body_;
  }

private:
  void line(const std::string& statement) { body_ += "    " + statement + ";\n"; }

  [[nodiscard]] std::string name(Ref value) const {
    if (value.isNegative()) {
      std::abort(); // signs are settled before text is made
    }
    return value.isZero() ? "V{}" : names_.at(value.node());
  }

  [[nodiscard]] std::string loadName(const Node& node) const {
    const Access& from = kernel_.loads[static_cast<std::size_t>(node.tag)];
    std::string text = "x" + std::to_string(from.first);
    if (type_.lanes == 4 && from.width != Access::Width::low) {
      text += "_" + std::to_string(from.second);
    }
    return text;
  }

  std::string expression(const Node& node) {
    switch (node.op) {
    case Op::load: return load(kernel_.loads[static_cast<std::size_t>(node.tag)]);
    case Op::add: return name(node.left) + " + " + name(node.right);
    case Op::subtract: return name(node.left) + " - " + name(node.right);
    case Op::multiply: return constant(kernel_.graph.constant(node)) + " * " + name(node.left);
    case Op::scale: return "s * " + name(node.left);
    case Op::rotate: return "timesI(" + name(node.left) + ")";
    case Op::negate: return "-" + name(node.left);
    case Op::shuffle: return shuffle(node);
    }
    std::abort();
  }

  [[nodiscard]] std::string shuffle(const Node& node) const {
    const std::string operands = name(node.left) + ", " + name(node.right) + ")";
    if (node.tag == lower::kUnpackLow || node.tag == lower::kUnpackHigh) {
      return (node.tag == lower::kUnpackLow ? "unpackLow(" : "unpackHigh(") + operands;
    }
    std::string lanes;
    for (int i = 0; i < 4; ++i) {
      lanes += (i == 0 ? "" : ", ") + std::to_string(lower::selected(node.tag, i));
    }
    return node.left == node.right ? "permute<" + lanes + ">(" + name(node.left) + ")"
                                   : "shuffle<" + lanes + ">(" + operands;
  }

  std::string constant(const graph::Lanes& lanes) {
    std::string value;
    for (int i = 0; i < type_.lanes; ++i) {
      value += (i == 0 ? "" : ", ") + literal(lanes[static_cast<std::size_t>(i)], type_.precision);
    }
    const auto [entry, isNew] = constantNames_.try_emplace(value, "c" + std::to_string(constantNames_.size() + 1));
    if (isNew) {
      constants_ += "    constexpr V " + entry->second + "{" + value + "};\n";
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

  const lower::Kernel& kernel_;
  VectorType type_;
  std::map<int, std::string> names_;
  std::map<std::string, std::string> constantNames_;
  std::string constants_;
  std::string body_;
  int values_ = 0;
};

// An order of the nodes of a kernel and, numbered behind them, its stores.
std::vector<int> bestOrder(const lower::Kernel& kernel) {
  constexpr int kRegisters = 15; // one of the 16 holds the scale or a constant
  const auto& nodes = kernel.graph.nodes();
  const std::vector<bool> needed = kernel.graph.reachable(kernel.outputs());

  // The scheduler counts the needed nodes only.
  std::vector<int> nodeOf;
  std::vector<int> taskOf(nodes.size(), -1);
  std::vector<schedule::Task> tasks;
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    if (!needed[i]) {
      continue;
    }
    schedule::Task task{{}, true, static_cast<int>(i) >= kernel.lastStep};
    for (const Ref operand : {nodes[i].left, nodes[i].right}) {
      if (!operand.isZero()) {
        task.operands.push_back(taskOf[static_cast<std::size_t>(operand.node())]);
      }
    }
    taskOf[i] = static_cast<int>(tasks.size());
    nodeOf.push_back(static_cast<int>(i));
    tasks.push_back(task);
  }
  for (std::size_t i = 0; i < kernel.stores.size(); ++i) {
    tasks.push_back({{taskOf[static_cast<std::size_t>(kernel.stores[i].value.node())]}, false, true});
    nodeOf.push_back(static_cast<int>(nodes.size() + i));
  }
  std::vector<int> order;
  for (const int task : schedule::bestOrder(tasks, kRegisters)) {
    order.push_back(nodeOf[static_cast<std::size_t>(task)]);
  }
  return order;
}

} // namespace

std::string vectorStatements(const lower::Kernel& kernel, const VectorType& type) {
  return Writer(kernel, type).write(bestOrder(kernel));
}

} // namespace tfmgen::print
