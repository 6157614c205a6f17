// Complex samples to complex spectrum: X[k] = sum over n of x[n] * exp(sign*2*pi*i*n*k/N), k = 0 .. N-1.
//
// Every value is a pair of references, one to the real and one to the imaginary part. Whether a reference is a scalar
// or a register of lanes that hold the same element of several transforms makes no difference here.
#pragma once

#include "graph/graph.hpp"
#include "number/index.hpp"
#include "number/roots.hpp"
#include "plan/plan.hpp"
#include "root_sign.hpp"

#include <vector>

namespace tfmgen::transform {

using graph::Graph;
using graph::Quad;
using graph::Ref;
using number::at;

// re + i * im.
struct Complex {
  Ref re;
  Ref im;
  constexpr Complex operator-() const { return {-re, -im}; }
};

using Values = std::vector<Complex>;

inline Complex add(Graph& g, const Complex& a, const Complex& b) {
  return {g.add(a.re, b.re), g.add(a.im, b.im)};
}

inline Complex subtract(Graph& g, const Complex& a, const Complex& b) {
  return {g.subtract(a.re, b.re), g.subtract(a.im, b.im)};
}

// i^turns * z: an exchange of the parts and a sign.
constexpr Complex quarterTurns(const Complex& z, int turns) {
  switch (turns & 3) {
  case 1: return {-z.im, z.re};
  case 2: return -z;
  case 3: return {z.im, -z.re};
  default: return z;
  }
}

// A factor for each lane.
struct LaneFactors {
  graph::Lanes re;
  graph::Lanes im;
};

// z * factors, lane by lane: re*c - im*s and re*s + im*c. Where c or s is zero in all lanes its products fall away; a
// lane of 1, 0 or -1 among others is multiplied like them.
Complex multiply(Graph& g, const LaneFactors& factors, const Complex& z);
// The same with one factor for all lanes.
Complex multiply(Graph& g, number::Complex factor, const Complex& z);

// z * exp(2*pi*i*k/n): free at quarter turns; at odd eighths the sums come first and one product for each part behind
// them; a general product else.
Complex multiplyByRoot(Graph& g, const Complex& z, long k, long n);

// All bins of z. Plans of Direct, PowerOfTwo, GoodThomas, CooleyTukey and Rader; Rader takes `synthesis` as the plan of
// the way back.
Values transformComplex(Graph& g, const plan::Plan& plan, const Values& z, RootSign sign);

// The factors C[m], m = 0 .. p-2, of the spectrum of the permuted samples in Rader's algorithm, with the 1/(p-1) of the
// way back in them; with w(n) = exp(sign*2*pi*i/n) it is
//   C[m] = 1/(p-1) * sum over j of w(p)^(g^-j) * w(p-1)^(j*m).
std::vector<number::Complex> raderMultipliers(int p, int primitiveRoot, RootSign sign);

// ---- Index maps of the two-factor plans; `first` inner transforms lie within, `second` across

// The sample that inner transform r takes as its m-th.
inline int sampleIndex(const plan::GoodThomas& /*form*/, int first, int second, int r, int m) {
  return (second * m + first * r) % (first * second);
}
inline int sampleIndex(const plan::CooleyTukey& /*form*/, int /*first*/, int second, int r, int m) {
  return second * m + r;
}

// The bin that is output k2 of the outer transform over the inner bins k1.
int binIndex(const plan::GoodThomas& form, int first, int second, int k1, int k2);
int binIndex(const plan::CooleyTukey& form, int first, int second, int k1, int k2);

} // namespace tfmgen::transform
