#include "noise.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numbers>

namespace tfmgen::error {

namespace {

struct Pair {
  double first;
  double second;
};

// Pairs of independent normal numbers, spread evenly: points of an additive recurrence in the unit square (by the
// inverse powers of the plastic number), mapped by Box and Muller.
const std::array<Pair, 1024>& normalPairs() {
  static const auto pairs = [] {
    constexpr double kPlastic = 1.32471795724474602596;
    std::array<Pair, 1024> points{};
    for (std::size_t i = 0; i < points.size(); ++i) {
      const auto fraction = [i](double step) {
        const double x = 0.5 + static_cast<double>(i) * step;
        return x - std::floor(x);
      };
      const double radius = std::sqrt(-2 * std::log1p(-fraction(1 / kPlastic)));
      const double angle = 2 * std::numbers::pi * fraction(1 / (kPlastic * kPlastic));
      points[i] = {radius * std::cos(angle), radius * std::sin(angle)};
    }
    return points;
  }();
  return pairs;
}

// The exponent of a normal number, by its bits: the function of the standard library takes most of the time otherwise.
int exponent(double x) {
  return static_cast<int>(std::bit_cast<std::uint64_t>(x) >> 52 & 0x7FFU) - 1023;
}

// 4^e, zero where no double holds it.
double powerOfFour(int e) {
  return 2 * e < -1022 ? 0 : std::bit_cast<double>(static_cast<std::uint64_t>(1023 + 2 * e) << 52);
}

// With unit 2 u 2^e of a number of exponent e, the variance u^2 4^e / 3 of an error that is uniform over it.
double uniformVariance(int exponent) {
  return powerOfFour(exponent) / 3;
}

double varianceOfRounding(double deviation) {
  double sum = 0;
  for (const Pair& z : normalPairs()) {
    sum += uniformVariance(exponent(deviation * z.first)) + uniformVariance(exponent(deviation * z.second));
  }
  return sum / (2 * static_cast<double>(normalPairs().size()));
}

// Of the rounded sum of two numbers of the sample type. k bits lost evenly leave 2^k errors at even distances, ties at
// both ends: (1 + 2 / 4^k) times the variance of the uniform distribution.
double varianceOfSum(const Matrix& forms, const Term& left, const Term& right) {
  const auto a = left.factor * forms.row(static_cast<Eigen::Index>(left.step));
  const auto b = right.factor * forms.row(static_cast<Eigen::Index>(right.step));
  const double deviation = a.norm();
  const double along = deviation == 0 ? 0 : b.dot(a) / deviation;
  const double across = std::sqrt(std::max(0.0, b.squaredNorm() - along * along));
  double sum = 0;
  for (const Pair& z : normalPairs()) {
    const double x = deviation * z.first;
    const double y = along * z.first + across * z.second;
    const int result = exponent(x + y);
    const int lost = result - std::min(exponent(x), exponent(y));
    sum += lost <= 0 ? 0 : uniformVariance(result) * (1 + 2 * powerOfFour(-lost));
  }
  return sum / static_cast<double>(normalPairs().size());
}

// Of the rounding to the sample type of what a step forms.
double variance(const Program& program, const Matrix& forms, const Step& step, double deviation) {
  const auto isSample = [&](const Term& term) { return program.isSample(term.step); };
  if (!step.right.isZero()) {
    return isSample(step.left) && isSample(step.right) ? varianceOfSum(forms, step.left, step.right)
                                                       : varianceOfRounding(deviation);
  }
  const Step& inner = program.steps()[step.left.step];
  const bool endsSum = !isSample(step.left) && !inner.right.isZero(); // of an expression in double
  return endsSum ? variance(program, forms, inner, deviation) : varianceOfRounding(deviation);
}

} // namespace

double varianceOfSteps(const Program& program, const Linear& linear) {
  double sum = 0;
  for (std::size_t i = program.inputs(); i < program.steps().size(); ++i) {
    const Step& step = program.steps()[i];
    const auto at = static_cast<Eigen::Index>(i);
    const double sensitivity = linear.sensitivities.row(at).squaredNorm();
    if (sensitivity != 0) {
      const double deviation = linear.forms.row(at).norm();
      sum += sensitivity * step.unit * step.unit *
             (step.unit == 1 ? variance(program, linear.forms, step, deviation) : varianceOfRounding(deviation));
    }
  }
  return sum;
}

double varianceOfOutput(const Program& program, const Linear& linear, const Output& output, double scale,
                        double deviation) {
  const Step& step = program.steps()[output.value.step];
  return scale == 1 && !step.right.isZero() ? variance(program, linear.forms, step, deviation)
                                            : varianceOfRounding(deviation);
}

} // namespace tfmgen::error
