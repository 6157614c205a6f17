// A kernel as roundings of real numbers: what its error is a function of.
//
// Lanes are taken apart. What rounds nothing (moves, signs, products by powers of two, sums with a zero) leaves no step
// behind; equal steps are one, since they make the same error.
#pragma once

#include "lower/kernel.hpp"
#include "lower/real.hpp"

#include <cstddef>
#include <map>
#include <optional>
#include <tuple>
#include <vector>

namespace tfmgen::error {

// factor * the value of a step, or zero.
struct Term {
  std::size_t step = 0;
  double factor = 0;

  [[nodiscard]] bool isZero() const { return factor == 0; }
  [[nodiscard]] Term times(double f) const { return {step, factor * f}; }
};

// left + right, rounded.
struct Step {
  Term left;
  Term right;  // zero where the step is a product by a constant, or only a rounding
  double unit; // of the rounding, relative to the unit of the sample type; 0 for an element of the source
};

struct Output {
  Term value; // before the scale
  // The scale multiplies within an expression in double, whose end is rounded whatever the scale is.
  bool endsInDouble = false;
};

class Program {
public:
  // The first `inputs` steps are the elements of the source that are read.
  Program(std::size_t inputs, int sampleBits);

  // The sum and the product after rounding; what needs none is given back as it is.
  Term add(Term a, Term b, double unit = 1);
  Term multiply(double factor, Term a, double unit = 1);
  // The value in the sample type, for one that was formed with a finer unit.
  Term assign(Term a);

  void addOutput(const Output& output) { outputs_.push_back(output); }

  [[nodiscard]] std::size_t inputs() const { return inputs_; }
  [[nodiscard]] int sampleBits() const { return sampleBits_; }
  [[nodiscard]] const std::vector<Step>& steps() const { return steps_; }
  [[nodiscard]] const std::vector<Output>& outputs() const { return outputs_; }
  // Whether the values of a step are numbers of the sample type.
  [[nodiscard]] bool isSample(std::size_t step) const { return step < inputs_ || steps_[step].unit == 1; }

private:
  Term intern(Term left, Term right, double unit);

  std::size_t inputs_;
  int sampleBits_;
  std::vector<Step> steps_;
  std::vector<Output> outputs_;
  std::map<std::tuple<std::size_t, double, std::size_t, double, double>, std::size_t> known_;
};

// A unit of double in a kernel of 32-bit samples.
inline constexpr double kDoubleUnit = 0x1p-29;

// Half a unit in the last place of 1: 2^-24 or 2^-53.
double unitRoundoff(int sampleBits);

// Vectors of four lanes of 32 bits or of two of 64.
Program program(const lower::Kernel& kernel, std::size_t elements, int sampleBits);
// Assignments of scalars; in 32 bits their products by constants are in double.
Program program(const lower::RealKernel& kernel, std::size_t inputs, int sampleBits);

} // namespace tfmgen::error
