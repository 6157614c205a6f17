#include "analysis.hpp"

#include "noise.hpp"

#include <Eigen/Eigenvalues>

#include <algorithm>
#include <cmath>

namespace tfmgen::error {

namespace {

constexpr double kMargin = 1e-9;

// An upper bound of the largest singular value, and a tight one.
double norm2(const Matrix& m) {
  const Matrix gram = m.rows() < m.cols() ? Matrix(m * m.transpose()) : Matrix(m.transpose() * m);
  const Eigen::SelfAdjointEigenSolver<Matrix> solver(gram, Eigen::EigenvaluesOnly);
  return (1 + kMargin) * std::sqrt(std::max(0.0, solver.eigenvalues().maxCoeff()));
}

// What the roundings before a step and its own can do to its value, in units of u norm2(x).
Eigen::VectorXd errorsOfSteps(const Program& program, const Linear& linear, double u) {
  const std::vector<Step>& steps = program.steps();
  Eigen::VectorXd h = Eigen::VectorXd::Zero(linear.forms.rows());
  for (std::size_t i = program.inputs(); i < steps.size(); ++i) {
    const auto at = [](std::size_t step) { return static_cast<Eigen::Index>(step); };
    const Step& s = steps[i];
    const double earlier =
        std::abs(s.left.factor) * h[at(s.left.step)] + std::abs(s.right.factor) * h[at(s.right.step)];
    h[at(i)] = earlier + s.unit * (linear.forms.row(at(i)).norm() + u * earlier);
  }
  return h;
}

double boundOfSteps(const Program& program, const Linear& linear, double u) {
  const Eigen::VectorXd h = errorsOfSteps(program, linear, u);
  Matrix forms = linear.forms;
  Matrix sensitivities = linear.sensitivities;
  double secondOrder = 0;
  for (Eigen::Index i = 0; i < forms.rows(); ++i) {
    const double unit = program.steps()[static_cast<std::size_t>(i)].unit;
    const double left = unit * sensitivities.row(i).norm();
    const double right = forms.row(i).norm();
    const double weight = right == 0 ? 0 : std::sqrt(left / right);
    forms.row(i) *= weight;
    sensitivities.row(i) *= weight == 0 ? 0 : unit / weight;
    secondOrder += weight * weight * h[i] * h[i];
  }
  return norm2(sensitivities) * (norm2(forms) + u * (1 + kMargin) * std::sqrt(secondOrder));
}

bool isPowerOfTwo(double factor) {
  int exponent = 0;
  return std::frexp(factor, &exponent) == 0.5;
}

// The unit of what rounds an output behind its value, relative to u.
double lastUnit(const Output& output, const Scale& scale) {
  const bool rounds = output.endsInDouble || !isPowerOfTwo(scale.stored);
  return rounds ? 1 + (output.endsInDouble ? 2 * kDoubleUnit : 0) : 0;
}

} // namespace

Analysis::Analysis(const Program& program, const Exact& exact)
    : program_(program), exact_(exact), unit_(unitRoundoff(program.sampleBits())), linear_(linear(program)),
      bound_(boundOfSteps(program, linear_, unit_)), variance_(varianceOfSteps(program, linear_)) {}

// What is stored, as linear forms of the source, without any rounding but that of constants.
Matrix Analysis::outputs(const Scale& scale) const {
  const QuadMatrix& rows = linear_.outputs;
  Matrix m(static_cast<Eigen::Index>(rows.size()), static_cast<Eigen::Index>(program_.inputs()));
  for (Eigen::Index i = 0; i < m.rows(); ++i) {
    for (Eigen::Index j = 0; j < m.cols(); ++j) {
      m(i, j) = scale.stored * static_cast<double>(rows[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)]);
    }
  }
  return m;
}

// In units of u.
Matrix Analysis::errorsOfConstants(const Scale& scale) const {
  Matrix m(static_cast<Eigen::Index>(linear_.outputs.size()), static_cast<Eigen::Index>(program_.inputs()));
  for (std::size_t i = 0; i < linear_.outputs.size(); ++i) {
    for (std::size_t j = 0; j < program_.inputs(); ++j) {
      const Quad error = Quad{scale.stored} * linear_.outputs[i][j] - scale.exact * exact_.matrix[i][j];
      m(static_cast<Eigen::Index>(i), static_cast<Eigen::Index>(j)) = static_cast<double>(error / unit_);
    }
  }
  return m;
}

// What is stored is rounded behind the scale. Where that holds for some outputs only, theirs is the norm that counts.
double Analysis::lastRoundings(const Scale& scale, double normOfAll) const {
  Matrix rounded = outputs(scale);
  double largest = 0;
  double smallest = 2;
  for (Eigen::Index k = 0; k < rounded.rows(); ++k) {
    const double unit = lastUnit(program_.outputs()[static_cast<std::size_t>(k)], scale);
    rounded.row(k) *= unit;
    largest = std::max(largest, unit);
    smallest = std::min(smallest, unit);
  }
  const double norm = largest == smallest ? largest * normOfAll : norm2(rounded);
  return norm + largest * scale.stored * unit_ * bound_;
}

double Analysis::varianceOfLastRoundings(const Scale& scale) const {
  const Matrix all = outputs(scale);
  double variance = 0;
  for (Eigen::Index k = 0; k < all.rows(); ++k) {
    const Output& output = program_.outputs()[static_cast<std::size_t>(k)];
    if (lastUnit(output, scale) != 0) {
      variance += varianceOfOutput(program_, linear_, output, scale.stored, all.row(k).norm());
    }
  }
  return variance;
}

Figures Analysis::figures(const Scale& scale) const {
  const double norm = static_cast<double>(scale.exact) * exact_.norm;
  const Matrix constants = errorsOfConstants(scale);
  const double ofConstants = norm2(constants);
  const double bound = scale.stored * bound_ + lastRoundings(scale, norm + unit_ * ofConstants) + ofConstants;
  const double variance =
      scale.stored * scale.stored * variance_ + varianceOfLastRoundings(scale) + constants.squaredNorm();
  const auto inputs = static_cast<double>(program_.inputs());
  return {(1 + kMargin) * bound / norm, std::sqrt(variance / inputs) / norm};
}

} // namespace tfmgen::error
