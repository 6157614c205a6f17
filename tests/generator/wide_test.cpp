// Programs for wide registers compute, lane by lane and bit for bit, what the kernels that they are made from compute.
#include "bits.hpp"
#include "hard_values.hpp"
#include "lower/complex32.hpp"
#include "lower/lane_moves.hpp"
#include "plan/complex32.hpp"
#include "wide/graph.hpp"
#include "wide/pairs.hpp"
#include "wide/program.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using namespace tfmgen;
using graph::NodeId;
using graph::NodeMap;
using graph::Op;
using number::at;

constexpr int kFirstLength = 6;
constexpr int kLastLength = 64;
constexpr float kScale = 0.75F;

using Reals = std::vector<float>;

// A kernel on registers of four lanes, executed.
Reals execute(const lower::Kernel& kernel, const Reals& input) {
  using Register = std::array<float, 4>;
  const graph::Graph& g = kernel.graph;
  NodeMap<Register> values(g.end());
  const auto valueOf = [&](graph::Ref r) {
    Register v = r.isZero() ? Register{} : values[r.node()];
    for (float& x : v) {
      x = r.isNegative() ? -x : x;
    }
    return v;
  };
  for (NodeId i; i != g.end(); ++i) {
    const graph::Node& node = g.node(i);
    const Register a = valueOf(node.left);
    const Register b = valueOf(node.right);
    for (int lane = 0; lane < 4; ++lane) {
      float& out = at(values[i], lane);
      switch (node.op) {
      case Op::load: {
        const lower::Access& from = at(kernel.loads, node.tag);
        const bool isZero = lane >= 2 && from.width == lower::Access::Width::low;
        out = isZero ? 0 : at(input, 2 * (lane < 2 ? from.first : from.second) + lane % 2);
        break;
      }
      case Op::add: out = at(a, lane) + at(b, lane); break;
      case Op::subtract: out = at(a, lane) - at(b, lane); break;
      case Op::multiply: out = static_cast<float>(at(g.constant(node), lane)) * at(a, lane); break;
      case Op::scale: out = kScale * at(a, lane); break;
      case Op::shuffle:
        if (node.tag == lower::kUnpackLow || node.tag == lower::kUnpackHigh) {
          out = at(lane % 2 == 0 ? a : b, (node.tag == lower::kUnpackLow ? 0 : 2) + lane / 2);
        } else {
          out = at(lane < 2 ? a : b, lower::selected(node.tag, lane));
        }
        break;
      case Op::rotate: ADD_FAILURE() << "parts are in registers of their own"; break;
      }
    }
  }
  Reals output(input.size());
  for (const lower::Store& store : kernel.stores) {
    const Register v = valueOf(store.value);
    for (int lane = 0; lane < (store.to.width == lower::Access::Width::low ? 2 : 4); ++lane) {
      at(output, 2 * (lane < 2 ? store.to.first : store.to.second) + lane % 2) = at(v, lane);
    }
  }
  return output;
}

// A program, executed. Elements that may hold anything hold NaN, which must not reach the output.
class Machine {
public:
  Machine(const wide::Program& program, const Reals& input)
      : program_(program), input_(input), output_(input.size(), NAN), accesses_(input.size()) {}

  Reals run() {
    for (const wide::Instruction& i : program_) {
      values_.emplace_back(2 * static_cast<std::size_t>(i.width), NAN);
      for (int lane = 0; lane < 2 * i.width; ++lane) {
        const float result = laneOf(i, lane);
        at(values_.back(), lane) = result;
      }
    }
    return output_;
  }

  // How often each real number of the destination was written.
  [[nodiscard]] const std::vector<int>& writes() const { return accesses_; }

private:
  using Code = wide::Instruction::Op;

  [[nodiscard]] float operand(const wide::Instruction& i, int number, int lane) const {
    return at(at(values_, at(i.operands, number)), lane);
  }

  float laneOf(const wide::Instruction& i, int lane) {
    const int part = lane % 2;
    const int element =
        i.elements.empty() ? -1 : at(i.elements, std::min(lane / 2, static_cast<int>(i.elements.size()) - 1));
    const float factor = i.factors.empty() ? 0 : static_cast<float>(at(at(i.factors, lane / 2), part));
    switch (i.op) {
    case Code::load: return element < 0 ? 0 : at(input_, 2 * element + part);
    case Code::shuffle: return element < 0 ? NAN : operand(i, element / i.width, 2 * (element % i.width) + part);
    case Code::join: return operand(i, lane / i.width, lane % i.width);
    case Code::half: return operand(i, 0, 2 * i.elements[0] + lane);
    case Code::swap: return operand(i, 0, lane ^ 1);
    case Code::flip: return factor < 0 ? -operand(i, 0, lane) : operand(i, 0, lane);
    case Code::add: return operand(i, 0, lane) + operand(i, 1, lane);
    case Code::subtract: return operand(i, 0, lane) - operand(i, 1, lane);
    case Code::mixedSum:
      return factor < 0 ? operand(i, 0, lane) - operand(i, 1, lane) : operand(i, 0, lane) + operand(i, 1, lane);
    case Code::multiply: return factor * operand(i, 0, lane);
    case Code::scale: return factor * kScale * operand(i, 0, lane);
    case Code::zero: return 0;
    case Code::store:
      if (element >= 0) {
        at(output_, 2 * element + part) = operand(i, 0, lane);
        ++at(accesses_, 2 * element + part);
      }
      return 0;
    }
    return NAN;
  }

  const wide::Program& program_;
  const Reals& input_;
  Reals output_;
  std::vector<int> accesses_;
  std::vector<Reals> values_;
};

// The program gives the bits of the kernel and writes every number once.
void expectSameBits(const lower::Kernel& kernel, const wide::Program& program, const Reals& input) {
  const Reals expected = execute(kernel, input);
  Machine machine(program, input);
  const Reals actual = machine.run();
  for (std::size_t i = 0; i < input.size(); ++i) {
    ASSERT_TRUE(test::isSameReal(expected[i], actual[i]))
        << "number " << i << " is " << actual[i] << " and should be " << expected[i];
  }
  ASSERT_TRUE(std::ranges::all_of(machine.writes(), [](int writes) { return writes == 1; }));
}

TEST(Wide, ProgramsHaveTheBitsOfTheirKernels) {
  test::HardArrays<float> inputs(2 * kLastLength, 11);
  constexpr int kTrials = 8; // one of each kind of numbers
  for (const auto sign : {transform::RootSign::forward, transform::RootSign::inverse}) {
    for (int n = kFirstLength; n <= kLastLength; ++n) {
      SCOPED_TRACE(n);
      const lower::Kernel kernel = lower::complex32(*plan::complex32(n), sign);
      const wide::Graph graph = wide::interleaved(kernel);
      const wide::Program single = wide::program(graph);
      const wide::Program paired = wide::program(wide::inPairs(graph));
      for (int trial = 0; trial < kTrials; ++trial) {
        const std::size_t count = 2 * static_cast<std::size_t>(n);
        const float* const numbers = inputs.next(count);
        expectSameBits(kernel, single, {numbers, numbers + count});
        expectSameBits(kernel, paired, {numbers, numbers + count});
      }
    }
  }
}

// Twice the lanes, half the arithmetic; a rotation costs a swap where the baseline has it for nothing.
TEST(Wide, FullRegistersHalveTheArithmetic) {
  for (const int n : {16, 32, 64}) {
    const lower::Kernel kernel = lower::complex32(*plan::complex32(n), transform::RootSign::forward);
    const graph::Counts baseline = graph::count(kernel.graph, kernel.outputs());
    const wide::Program program = wide::program(wide::interleaved(kernel));
    const graph::Counts counts = wide::count(program);
    EXPECT_EQ(2 * counts.additions, baseline.additions) << n;
    EXPECT_LE(2 * counts.multiplications, baseline.multiplications + 2) << n;
    const auto isAdjacent = [](const wide::Instruction& i) {
      return i.op != wide::Instruction::Op::load || i.elements.back() == i.elements.front() + i.width - 1;
    };
    EXPECT_TRUE(std::ranges::all_of(program, isAdjacent)) << n << ": loads of elements apart";
  }
}

} // namespace
