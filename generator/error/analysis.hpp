// How far a kernel can be from the transform, and how far it is for white noise.
//
// What a kernel computes differs from what its graph computes without rounding by exactly
//
//   sum over all steps i of  s_i e_i,     e_i the rounding error of step i, |e_i| <= u_i |its computed value|,
//
// where s_i holds the sensitivities of the outputs to the value of the step: the graph is linear, its constants are the
// rounded ones. (Higham, Accuracy and Stability of Numerical Algorithms, 2nd ed., bounds such sums norm by norm;
// section 24.1 does so for the FFT, stage by stage.) Let a_i be the linear form of step i in the source x and h_i
// norm2(x) a bound of what earlier roundings did to its value. With any positive weights d_i, the matrix S of columns
// s_i u_i / d_i and the matrix A of rows d_i a_i,
//
//   norm2(sum) <= norm2(S) (norm2(A) + norm2 of all d_i h_i) norm2(x),
//
// because what stands between S and A is a diagonal of numbers in [-1, 1]. The weights make column i of S as long as
// row i of A. All steps in one such group give less than a sum over the levels of the graph: what one level amplifies
// most the others do not. The h_i are of second order; absolute values, step by step, do for them. What remains is the
// scale and the distance of the graph with its rounded constants to the transform.
//
// norm2 of a matrix comes from the eigenvalues of the smaller of its Gram matrices in double. Its entries are exact but
// for their rounding to double. With m rows and k columns, k at most 128 and m below 10^4, the Gram matrix is wrong by
// less than m k 2^-53 = 2e-10 of its norm (Higham, section 3.5), its eigenvalues by a small multiple of k 2^-53 more
// (Golub and Van Loan, Matrix Computations, section 8.1): the margin is several times what both do to a norm.
#pragma once

#include "linear.hpp"
#include "scale.hpp"

namespace tfmgen::error {

// In units of u norm2(T) norm2(x): u is 2^-24 or 2^-53, T the exact scaled transform, x the elements that are read.
struct Figures {
  double bound;     // never exceeded by norm2(computed - T x), where nothing overflows or underflows
  double predicted; // root mean square where all elements are independent and normally distributed with variance 1
};

class Analysis {
public:
  Analysis(const Program& program, const Exact& exact);

  [[nodiscard]] Figures figures(const Scale& scale) const;

private:
  [[nodiscard]] Matrix outputs(const Scale& scale) const;
  [[nodiscard]] Matrix errorsOfConstants(const Scale& scale) const;
  [[nodiscard]] double lastRoundings(const Scale& scale, double normOfAll) const;
  [[nodiscard]] double varianceOfLastRoundings(const Scale& scale) const;

  const Program& program_;
  const Exact& exact_;
  double unit_; // u
  Linear linear_;
  double bound_;    // of the errors of the outputs before the scale, in units of u norm2(x)
  double variance_; // of these errors for white noise, summed over the outputs, in units of u^2
};

} // namespace tfmgen::error
