// The single lanes of a kernel on four-lane registers, with the moves between registers seen through.
#pragma once

#include "lower/kernel.hpp"

#include <array>
#include <vector>

namespace tfmgen::wide {

// What a lane holds.
struct Lane {
  enum class Kind { zero, memory, value };
  Kind kind = Kind::zero;
  int index = 0; // memory: which real number of the source; value: the node that computes it
  int lane = 0;  // value: which lane of that node
  bool isNegative = false;

  [[nodiscard]] bool isSameUpToSign(const Lane& other) const {
    return kind == other.kind && index == other.index && lane == other.lane;
  }
};

// What one lane of an operation takes; `right` is zero where there is one operand.
struct Operands {
  Lane left;
  Lane right;
};

class Lanes {
public:
  static constexpr int kCount = 4;

  // `kernel` outlives this.
  explicit Lanes(const lower::Kernel& kernel);

  [[nodiscard]] const lower::Kernel& kernel() const { return kernel_; }
  [[nodiscard]] const graph::Node& node(int i) const { return kernel_.graph.node(graph::NodeId(i)); }
  [[nodiscard]] int size() const { return kernel_.graph.end().position(); }
  // The lane of a register as far back as the arithmetic or the load that made it.
  [[nodiscard]] Lane origin(graph::Ref value, int lane) const;
  [[nodiscard]] Operands operands(int i, int lane) const; // of node i
  // The lanes that an output depends on.
  [[nodiscard]] bool isLive(int node, int lane) const { return number::at(number::at(isLive_, node), lane); }
  // Nodes with a live lane; operands precede their users.
  [[nodiscard]] const std::vector<int>& nodes() const { return nodes_; }
  // The number of operations on the longest way from a load to a node.
  [[nodiscard]] int depth(int node) const { return number::at(depths_, node); }

private:
  void markLive(const Lane& lane);

  const lower::Kernel& kernel_;
  std::vector<std::array<bool, kCount>> isLive_;
  std::vector<int> nodes_;
  std::vector<int> depths_;
};

} // namespace tfmgen::wide
