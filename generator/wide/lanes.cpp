#include "lanes.hpp"

#include "lower/lane_moves.hpp"

#include <algorithm>

namespace tfmgen::wide {

namespace {

using graph::Node;
using graph::Op;
using graph::Ref;
using number::at;

// The operand of a shuffle that lane i of its result comes from, and its lane.
struct Move {
  bool isFromRight;
  int lane;
};

Move moveOf(int tag, int i) {
  if (tag == lower::kUnpackLow || tag == lower::kUnpackHigh) {
    return {i % 2 == 1, (tag == lower::kUnpackLow ? 0 : 2) + i / 2};
  }
  return {i >= 2, lower::selected(tag, i)};
}

Lane loaded(const lower::Access& from, int lane) {
  const bool isUpper = lane >= 2;
  if (isUpper && from.width == lower::Access::Width::low) {
    return {};
  }
  return {Lane::Kind::memory, 2 * (isUpper ? from.second : from.first) + lane % 2};
}

} // namespace

Lanes::Lanes(const lower::Kernel& kernel)
    : kernel_(kernel), isLive_(static_cast<std::size_t>(size())), depths_(isLive_.size()) {
  for (const lower::Store& store : kernel.stores) {
    const int count = store.to.width == lower::Access::Width::low ? 2 : kCount;
    for (int lane = 0; lane < count; ++lane) {
      markLive(origin(store.value, lane));
    }
  }
  for (int node = size() - 1; node >= 0; --node) {
    for (int lane = 0; lane < kCount; ++lane) {
      if (isLive(node, lane)) {
        const auto& [left, right] = operands(node, lane);
        markLive(left);
        markLive(right);
      }
    }
  }
  for (int node = 0; node < size(); ++node) {
    for (int lane = 0; lane < kCount; ++lane) {
      if (!isLive(node, lane)) {
        continue;
      }
      if (nodes_.empty() || nodes_.back() != node) {
        nodes_.push_back(node);
      }
      const auto& [left, right] = operands(node, lane);
      for (const Lane& operand : {left, right}) {
        if (operand.kind == Lane::Kind::value) {
          int& depth = at(depths_, node);
          depth = std::max(depth, this->depth(operand.index) + 1);
        }
      }
    }
  }
}

Lane Lanes::origin(Ref value, int lane) const {
  if (value.isZero()) {
    return {};
  }
  if (value.isNegative()) {
    Lane negated = origin(-value, lane);
    negated.isNegative = !negated.isNegative;
    return negated;
  }
  const Node& node = kernel_.graph.node(value);
  switch (node.op) {
  case Op::load: return loaded(at(kernel_.loads, node.tag), lane);
  case Op::shuffle: {
    const Move move = moveOf(node.tag, lane);
    return origin(move.isFromRight ? node.right : node.left, move.lane);
  }
  default: return {Lane::Kind::value, value.node().position(), lane};
  }
}

Operands Lanes::operands(int i, int lane) const {
  const Node& n = node(i);
  Operands out{origin(n.left, lane), origin(n.right, lane)};
  if (n.op == Op::subtract) {
    out.right.isNegative = !out.right.isNegative;
  }
  return out;
}

void Lanes::markLive(const Lane& lane) {
  if (lane.kind == Lane::Kind::value) {
    at(at(isLive_, lane.index), lane.lane) = true;
  }
}

} // namespace tfmgen::wide
