// Graphs of arithmetic: what becomes one node, and what they compute forward, folded and backward.
#include "graph/fold.hpp"
#include "graph/transpose.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace tfmgen::graph {
namespace {

constexpr int kInputs = 3;

using Matrix = std::vector<std::vector<double>>; // by output, then by input

double valueOf(const Graph& g, Ref r, const std::vector<double>& inputs) {
  if (r.isZero()) {
    return 0;
  }
  const Node& node = g.node(r);
  const auto left = [&] { return valueOf(g, node.left, inputs); };
  const auto right = [&] { return valueOf(g, node.right, inputs); };
  const auto magnitude = [&] {
    switch (node.op) {
    case Op::load: return number::at(inputs, node.tag);
    case Op::add: return left() + right();
    case Op::subtract: return left() - right();
    case Op::multiply: return static_cast<double>(g.constant(node)[0]) * left();
    default: ADD_FAILURE() << "no real arithmetic"; return 0.0;
    }
  };
  return r.isNegative() ? -magnitude() : magnitude();
}

Matrix matrixOf(const Graph& g, const std::vector<Ref>& outputs, std::size_t inputs) {
  Matrix m(outputs.size(), std::vector<double>(inputs));
  for (std::size_t j = 0; j < inputs; ++j) {
    std::vector<double> unit(inputs);
    unit[j] = 1;
    for (std::size_t i = 0; i < outputs.size(); ++i) {
      m[i][j] = valueOf(g, outputs[i], unit);
    }
  }
  return m;
}

std::vector<Ref> loads(Graph& g, std::size_t count) {
  std::vector<Ref> refs(count);
  std::ranges::generate(refs, [&g, tag = 0]() mutable { return g.load(tag++); });
  return refs;
}

void expectCounts(const Graph& g, const std::vector<Ref>& outputs, int multiplications, int additions) {
  const Counts counts = count(g, outputs);
  EXPECT_EQ(counts.multiplications, multiplications);
  EXPECT_EQ(counts.additions, additions);
}

TEST(GeneratorGraph, EqualOperationsAreOneNode) {
  Graph g;
  const auto x = loads(g, kInputs);
  EXPECT_EQ(g.load(0), x[0]);
  EXPECT_EQ(g.add(x[1], x[0]), g.add(x[0], x[1]));
  EXPECT_EQ(g.add(-x[0], -x[1]), -g.add(x[0], x[1]));
  EXPECT_EQ(g.subtract(x[1], x[0]), -g.subtract(x[0], x[1]));
  EXPECT_EQ(g.multiply(-3, x[0]), g.multiply(3, -x[0]));
  EXPECT_EQ(g.multiply(-3, x[0]), -g.multiply(3, x[0]));
  EXPECT_EQ(g.multiply(Quad{1} / 3, x[0]), g.multiply(Quad{1.0 / 3}, x[0])) << "equal when rounded";
  EXPECT_NE(g.multiply(3, x[0], Rounding::carried), g.multiply(3, x[0], Rounding::assigned));

  EXPECT_TRUE(g.subtract(x[0], x[0]).isZero());
  EXPECT_TRUE(g.multiply(0, x[0]).isZero());
  EXPECT_EQ(g.multiply(1, x[0]), x[0]);
  EXPECT_EQ(g.add(x[0], {}), x[0]);
  EXPECT_EQ(g.subtract({}, x[0]), -x[0]);
}

TEST(GeneratorGraph, DifferencesKeepTheOrientationInWhichTheyAreStated) {
  Graph g;
  const auto x = loads(g, kInputs);
  const Ref difference = g.subtract(x[1], x[0]);
  const Ref reversed = g.subtract(x[0], x[1]);
  EXPECT_FALSE(difference.isNegative());
  EXPECT_EQ(reversed, -difference);
  const std::vector<double> equal = {1, 1, 1};
  EXPECT_FALSE(std::signbit(valueOf(g, difference, equal)));
  EXPECT_TRUE(std::signbit(valueOf(g, reversed, equal))) << "minus zero, where a difference of its own would give zero";
}

TEST(GeneratorGraph, ProductsAsStatedKeepSignsAndZerosOfTheirLanes) {
  Graph g;
  const auto x = loads(g, kInputs);
  const Lanes factors = {1, 0, -1, 0};
  const Ref product = g.multiplyAsStated(factors, x[0]);
  EXPECT_FALSE(product.isNegative());
  EXPECT_EQ(g.constant(g.node(product)), factors);
  EXPECT_NE(product, g.multiplyAsStated({-1, 0, 1, 0}, x[0]));
  EXPECT_EQ(g.multiplyAsStated(factors, -x[0]), -product);
  EXPECT_TRUE(g.multiplyAsStated({0, 0, 0, 0}, x[0]).isZero());
}

TEST(GeneratorGraph, CountsOnlyWhatOutputsNeed) {
  Graph g;
  const auto x = loads(g, kInputs);
  const Ref shared = g.add(x[0], x[1]);
  g.multiply(7, x[2]); // nobody's
  const std::vector<Ref> outputs = {g.multiply(3, shared), -g.subtract(shared, x[2])};
  expectCounts(g, outputs, 1, 2);
}

// A graph with values of several users, signs, products that end an expression and products within one.
std::vector<Ref> example(Graph& g) {
  const auto x = loads(g, kInputs);
  const Ref sum = g.add(x[0], x[1]);
  const Ref difference = g.subtract(sum, x[2]);
  const Ref product = g.multiply(-5, difference);
  const Ref expression = g.sumOfProducts(std::array{Term{2, x[0]}, Term{-7, product}, Term{1, sum}});
  return {sum, -product, expression, g.add(product, expression)};
}

TEST(GeneratorGraph, TransposeComputesTheTransposedMatrix) {
  Graph forward;
  const std::vector<Ref> outputs = example(forward);
  const Matrix m = matrixOf(forward, outputs, kInputs);
  ASSERT_EQ(m, (Matrix{{1, 1, 0}, {5, 5, -5}, {38, 36, -35}, {33, 31, -30}}));

  Graph backward;
  const auto adjoints = loads(backward, outputs.size());
  const Matrix transposed =
      matrixOf(backward, transpose(backward, forward, outputs, adjoints, Minuend::positive), outputs.size());
  ASSERT_EQ(transposed.size(), std::size_t{kInputs});
  for (std::size_t i = 0; i < m.size(); ++i) {
    for (std::size_t j = 0; j < kInputs; ++j) {
      EXPECT_EQ(transposed[j][i], m[i][j]) << i << ", " << j;
    }
  }
}

// y0 = s + d, y1 = s - d with d = x0 - x1: backward, d collects y0 - y1 or minus (y1 - y0), by the first user y1 here.
TEST(GeneratorGraph, TransposedDifferencesGoByTheFirstUser) {
  Graph forward;
  const auto x = loads(forward, kInputs);
  const Ref d = forward.subtract(x[0], x[1]);
  const Ref y1 = forward.subtract(x[2], d);
  const Ref y0 = forward.add(x[2], d);
  const std::vector<double> equal = {1, 1};
  for (const Minuend minuend : {Minuend::positive, Minuend::firstUser}) {
    Graph backward;
    const auto adjoints = loads(backward, 2);
    const auto result = transpose(backward, forward, std::array{y0, y1}, adjoints, minuend);
    EXPECT_EQ(result[0].isNegative(), minuend == Minuend::firstUser);
    EXPECT_EQ(std::signbit(valueOf(backward, result[0], equal)), minuend == Minuend::firstUser);
  }
}

TEST(GeneratorGraph, FoldingSavesADoublingOfOneUser) {
  Graph g;
  const auto x = loads(g, kInputs);
  const Ref once = g.multiply(2, x[0]);
  const Ref twice = g.multiply(2, x[1]);
  const std::vector<Ref> outputs = {g.multiply(3, once), g.multiply(3, twice), g.add(twice, x[2])};
  const Folded folded = foldDoublings(g, outputs);
  EXPECT_EQ(matrixOf(folded.graph, folded.outputs, kInputs), matrixOf(g, outputs, kInputs));
  expectCounts(g, outputs, 4, 1);
  expectCounts(folded.graph, folded.outputs, 3, 1);
}

} // namespace
} // namespace tfmgen::graph
