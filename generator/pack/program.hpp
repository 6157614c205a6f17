// What is packed: the operations of a kernel, each a short sum of products, without any place.
//
// A unit is what one lane of the search holds: a real number, or the two parts of a complex number where both take part
// in the same operation with the same real constants.
#pragma once

#include "indexed.hpp"
#include "lower/kernel.hpp"
#include "lower/real.hpp"
#include "lower/spectrum.hpp"

#include <vector>

namespace tfmgen::pack {

// factor * value, or factor * i * value.
struct Term {
  double factor = 1;
  int value = 0;
  bool isRotated = false;  // times i, in a complex unit
  bool negatesSum = false; // the sum of the terms before is taken negative
};

constexpr int kMaximumTerms = 6; // as in a direct form of length 11

// The sum of its terms from left to right. A factor of +-1 stands for a sum or a difference without a product.
struct Operation {
  std::vector<Term> terms;
  // 32-bit samples: the terms are doubles and the result is rounded to float once, at the end. Where it is not set, a
  // factor other than +-1 belongs to the last term and its product is exact within a fused sum of floats.
  bool isDouble = false;
  bool isScaled = false;  // times the scale of the call, before that rounding
  bool isNegated = false; // and taken from zero, before that rounding
};

// An element of the destination: a value times the scale unless its operation has done that, or taken from zero behind
// the scale.
struct Output {
  int element;
  int value;
  bool isScaled = true;
  bool isNegated = false;
};

// Values are numbered: first what is loaded, then the results of the operations, operands before their users.
struct Program {
  int sampleBits = 64;
  int numbersInUnit = 1;
  int sourceLength = 0; // elements of the arrays, in units
  int destinationLength = 0;
  Indexed<int> loads; // element of the source by value
  Indexed<Operation> operations;
  std::vector<Output> outputs;
  std::vector<int> zeros; // elements of the destination that are stored as zeros

  [[nodiscard]] int valueCount() const { return loads.size() + operations.size(); }
  [[nodiscard]] bool isLoad(int value) const { return value < loads.size(); }
  [[nodiscard]] const Operation& operation(int value) const { return operations[value - loads.size()]; }
};

// Of real samples, with the half spectrum in the given format where there is one.
Program program(const lower::RealKernel& kernel, lower::Transform transform, lower::Format format, int length,
                int sampleBits);

// Of complex numbers of 64 bits each part, a unit an element.
Program program(const lower::Kernel& kernel, int length);

// The same with one number a unit: value v becomes the values 2v and 2v + 1.
Program inNumbers(const Program& pairs);

// The operations of the scalar kernel: sums, products, the scale, negations.
int scalarOperations(const Program& program);

// Whether the operation is as exact in float: its one factor is a power of two no smaller than 2^-29.
//
// The rule has a double product and a double sum, rounded to float. Let p = 24 and P = 53 be the precisions. The
// product by 2^-k only moves the exponent of a float, so in double it is exact. The double sum of two numbers of
// precision p is rounded to P >= 2p + 2 bits and then to p, which gives what one rounding to p gives (Figueroa, "When
// is double rounding innocuous?", 1995) as long as the result is a normal float. Below 2^-126 a float has fewer bits,
// but there the sum is a multiple of 2^(-149-k) less than 2^-126, which has at most 23 + k <= 52 bits: the double sum
// is exact. So the one rounding of a fused float operation gives the same float. The signs of zeros follow from the
// exact sum in both cases, and the product must not be rounded to float before, where it could lose bits of a denormal.
// A factor of 2 or more is no such case with a sum: its float product may overflow where the fused one does not.
bool isExactInFloat(const Operation& operation);

} // namespace tfmgen::pack
