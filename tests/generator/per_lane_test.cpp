// Kernels on vectors taken apart into scalars: the same bits in every lane, whatever zeros and infinities meet.
#include "lower/complex32.hpp"
#include "lower/lane_moves.hpp"
#include "lower/per_lane.hpp"
#include "plan/complex32.hpp"
#include "random.hpp"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <limits>

namespace tfmgen::lower {
namespace {

using graph::Node;
using graph::NodeId;
using graph::NodeMap;
using graph::Op;
using graph::Ref;
using number::at;
using Register = std::array<float, 4>;

constexpr float kScale = 0.37F;

// What a kernel stores, by executing its registers.
std::vector<float> execute(const Kernel& kernel, const std::vector<float>& samples) {
  NodeMap<Register> values(kernel.graph.end());
  const auto value = [&](Ref r) { return r.isZero() ? Register{} : values[r.node()]; };
  for (NodeId i; i != kernel.graph.end(); ++i) {
    const Node& node = kernel.graph.node(i);
    const Register left = value(node.left);
    const Register right = value(node.right);
    for (int lane = 0; lane < 4; ++lane) {
      const float a = at(left, lane);
      float& result = at(values[i], lane);
      switch (node.op) {
      case Op::load: {
        const Access& from = at(kernel.loads, node.tag);
        const bool isHeld = lane < 2 || from.width != Access::Width::low;
        result = isHeld ? at(samples, 2 * (lane < 2 ? from.first : from.second) + lane % 2) : 0;
        break;
      }
      case Op::add: result = a + at(right, lane); break;
      case Op::subtract: result = a - at(right, lane); break;
      case Op::multiply: result = static_cast<float>(at(kernel.graph.constant(node), lane)) * a; break;
      case Op::scale: result = kScale * a; break;
      case Op::rotate: ADD_FAILURE() << "registers of four lanes are not rotated"; break;
      case Op::shuffle:
        if (node.tag == kUnpackLow || node.tag == kUnpackHigh) {
          result = at(lane % 2 == 0 ? left : right, (node.tag == kUnpackLow ? 0 : 2) + lane / 2);
        } else {
          result = at(lane < 2 ? left : right, selected(node.tag, lane));
        }
        break;
      }
    }
  }
  std::vector<float> stored(samples.size());
  for (const Store& store : kernel.stores) {
    for (int lane = 0; lane < (store.to.width == Access::Width::low ? 2 : 4); ++lane) {
      at(stored, 2 * (lane < 2 ? store.to.first : store.to.second) + lane % 2) = at(value(store.value), lane);
    }
  }
  return stored;
}

std::vector<float> execute(const RealKernel& kernel, const std::vector<float>& samples) {
  const graph::Graph& g = kernel.body.graph;
  NodeMap<float> values(g.end());
  const auto value = [&](Ref r) { return r.isZero() ? 0.0F : values[r.node()]; };
  for (NodeId i; i != g.end(); ++i) {
    const Node& node = g.node(i);
    switch (node.op) {
    case Op::load: values[i] = at(samples, node.tag); break;
    case Op::add: values[i] = value(node.left) + value(node.right); break;
    case Op::subtract: values[i] = value(node.left) - value(node.right); break;
    case Op::multiply: values[i] = static_cast<float>(g.constant(node)[0]) * value(node.left); break;
    case Op::scale: values[i] = kScale * value(node.left); break;
    default: ADD_FAILURE() << "no lanes are left";
    }
  }
  std::vector<float> results;
  for (const Ref r : kernel.body.results) {
    results.push_back(value(r));
  }
  return results;
}

// Many zeros of both signs, so that sums of zeros are frequent; sometimes an infinity.
std::vector<float> specialSamples(std::size_t count, test::Random& random) {
  std::vector<float> samples;
  for (std::size_t i = 0; i < count; ++i) {
    const auto plain = random.real<float>(test::Spread::wide);
    const std::uint64_t kind = random.bits() % 16;
    const float magnitude = kind == 0 ? std::numeric_limits<float>::infinity() : 0;
    samples.push_back(kind < 14 ? std::copysign(magnitude, plain) : plain);
  }
  return samples;
}

TEST(PerLane, BitsOfTheRegistersOnSpecialValues) {
  test::Random random(5);
  for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
    for (int n = 6; n <= 64; ++n) {
      const Kernel kernel = complex32(*plan::complex32(n), sign);
      const RealKernel apart = perLane(kernel, {4, 32});
      for (int repetition = 0; repetition < 40; ++repetition) {
        const std::vector<float> samples = specialSamples(2 * static_cast<std::size_t>(n), random);
        const std::vector<float> expected = execute(kernel, samples);
        const std::vector<float> actual = execute(apart, samples);
        ASSERT_EQ(expected.size(), actual.size());
        for (std::size_t i = 0; i < expected.size(); ++i) {
          ASSERT_TRUE((std::isnan(expected[i]) && std::isnan(actual[i])) ||
                      std::bit_cast<std::uint32_t>(expected[i]) == std::bit_cast<std::uint32_t>(actual[i]))
              << "length " << n << ", result " << i << ": " << expected[i] << " became " << actual[i];
        }
      }
    }
  }
}

// Lanes that hold nothing vanish: no more operations than lanes that count.
TEST(PerLane, NothingIsComputedTwice) {
  for (int n = 6; n <= 64; ++n) {
    const Kernel kernel = complex32(*plan::complex32(n), transform::RootSign::forward);
    const graph::Counts vectors = graph::count(kernel.graph, kernel.outputs());
    const graph::Counts scalars = transform::count(perLane(kernel, {4, 32}).body);
    EXPECT_LE(scalars.multiplications + scalars.additions, 4 * (vectors.multiplications + vectors.additions));
    EXPECT_EQ(scalars.shuffles, 0);
  }
}

} // namespace
} // namespace tfmgen::lower
