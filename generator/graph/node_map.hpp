// Names of the nodes of a graph, and values by node.
#pragma once

#include "number/index.hpp"

#include <vector>

namespace tfmgen::graph {

// The position of a node in its graph, where operands come before their users; at first the first one.
class NodeId {
public:
  constexpr NodeId() = default;
  explicit constexpr NodeId(int position) : position_(position) {}

  [[nodiscard]] constexpr int position() const { return position_; }
  constexpr NodeId& operator++() {
    ++position_;
    return *this;
  }
  constexpr NodeId& operator--() {
    --position_;
    return *this;
  }
  constexpr bool operator==(const NodeId&) const = default;
  constexpr bool operator<(const NodeId& other) const { return position_ < other.position_; }

private:
  int position_ = 0;
};

// A value for each node of a graph.
template <class T>
class NodeMap {
public:
  NodeMap() = default;
  // `value` for the nodes before `end`.
  explicit NodeMap(NodeId end, const T& value = T{}) {
    for (NodeId i; i != end; ++i) {
      values_.push_back(value);
    }
  }

  // The node behind the last one.
  [[nodiscard]] NodeId end() const { return NodeId(static_cast<int>(values_.size())); }
  void append(const T& value) { values_.push_back(value); }

  decltype(auto) operator[](NodeId i) { return number::at(values_, i.position()); }
  decltype(auto) operator[](NodeId i) const { return number::at(values_, i.position()); }

private:
  std::vector<T> values_;
};

} // namespace tfmgen::graph
