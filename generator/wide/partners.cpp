#include "partners.hpp"

#include <algorithm>
#include <cmath>
#include <random>

namespace tfmgen::wide {

namespace {

using graph::Node;
using graph::Op;
using number::at;

// Values of all lanes of all nodes for one input. The scale is 1.
class Evaluation {
public:
  Evaluation(const Lanes& lanes, std::vector<double> input)
      : input_(std::move(input)), values_(static_cast<std::size_t>(lanes.size())) {
    const graph::Graph& g = lanes.kernel().graph;
    for (const int node : lanes.nodes()) {
      const Node& n = lanes.node(node);
      for (int lane = 0; lane < Lanes::kCount; ++lane) {
        if (lanes.isLive(node, lane)) {
          const auto& [left, right] = lanes.operands(node, lane);
          const double factor = n.op == Op::multiply ? static_cast<double>(at(g.constant(n), lane)) : 1;
          at(at(values_, node), lane) = factor * value(left) + value(right);
        }
      }
    }
  }

  [[nodiscard]] double value(int node, int lane) const { return at(at(values_, node), lane); }

private:
  [[nodiscard]] double value(const Lane& lane) const {
    const double magnitude = lane.kind == Lane::Kind::zero     ? 0
                             : lane.kind == Lane::Kind::memory ? at(input_, lane.index)
                                                               : value(lane.index, lane.lane);
    return lane.isNegative ? -magnitude : magnitude;
  }

  std::vector<double> input_;
  std::vector<std::array<double, Lanes::kCount>> values_;
};

int sourceReals(const lower::Kernel& kernel) {
  int last = 0;
  for (const lower::Access& load : kernel.loads) {
    last = std::max({last, load.first, load.second});
  }
  return 2 * (last + 1);
}

std::vector<double> someInput(int count) {
  std::minstd_rand random; // NOLINT(cert-msc32-c, cert-msc51-cpp): the same numbers wherever kernels are generated
  std::vector<double> input(static_cast<std::size_t>(count));
  std::ranges::generate(input, [&] { return static_cast<double>(random()) / double{std::minstd_rand::max()}; });
  return input;
}

std::vector<double> timesI(std::vector<double> input) {
  for (std::size_t i = 0; i < input.size(); i += 2) {
    std::swap(input[i], input[i + 1]);
    input[i] = -input[i];
  }
  return input;
}

bool isSameMagnitude(double a, double b) {
  constexpr double kTolerance = 1e-9; // far above rounding, far below what two numbers without relation come to
  return std::abs(std::abs(a) - std::abs(b)) <= kTolerance * (std::abs(a) + std::abs(b));
}

// Sums and differences are of one kind.
Op kindOf(const Lanes& lanes, int node) {
  const Op op = lanes.node(node).op;
  return op == Op::subtract ? Op::add : op;
}

} // namespace

Partners::Partners(const Lanes& lanes) : partners_(static_cast<std::size_t>(lanes.size())) {
  const std::vector<double> input = someInput(sourceReals(lanes.kernel()));
  const Evaluation plain(lanes, input);
  const Evaluation turned(lanes, timesI(input));
  const auto areParts = [&](int a, int laneOfA, int b, int laneOfB) {
    return isSameMagnitude(plain.value(a, laneOfA), turned.value(b, laneOfB)) &&
           isSameMagnitude(turned.value(a, laneOfA), plain.value(b, laneOfB));
  };
  const auto isPairOfNodes = [&](int a, int b) {
    if (kindOf(lanes, a) != kindOf(lanes, b) || lanes.depth(a) != lanes.depth(b)) {
      return false;
    }
    for (int lane = 0; lane < Lanes::kCount; ++lane) {
      if (lanes.isLive(a, lane) != lanes.isLive(b, lane) || (lanes.isLive(a, lane) && !areParts(a, lane, b, lane))) {
        return false;
      }
    }
    return true;
  };
  const auto isInterleaved = [&](int node) {
    for (int lane = 0; lane < Lanes::kCount; lane += 2) {
      if (lanes.isLive(node, lane) != lanes.isLive(node, lane + 1) ||
          (lanes.isLive(node, lane) && !areParts(node, lane, node, lane + 1))) {
        return false;
      }
    }
    return true;
  };
  for (const int node : lanes.nodes()) {
    std::optional<int>& partner = at(partners_, node);
    if (partner) {
      continue;
    }
    if (isInterleaved(node)) {
      partner = node;
      continue;
    }
    const auto found = std::ranges::find_if(
        lanes.nodes(), [&](int other) { return other > node && !at(partners_, other) && isPairOfNodes(node, other); });
    if (found != lanes.nodes().end()) {
      partner = *found;
      at(partners_, *found) = node;
    }
  }
}

std::optional<Lane> Partners::lane(const Lane& lane) const {
  switch (lane.kind) {
  case Lane::Kind::zero: return lane;
  case Lane::Kind::memory: return Lane{Lane::Kind::memory, lane.index ^ 1};
  case Lane::Kind::value: break;
  }
  const std::optional<int> partner = node(lane.index);
  if (!partner) {
    return {};
  }
  return Lane{Lane::Kind::value, *partner, *partner == lane.index ? lane.lane ^ 1 : lane.lane};
}

} // namespace tfmgen::wide
