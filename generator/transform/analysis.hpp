// Real samples to half spectrum: X[k] = sum over m of x[m] * exp(-2*pi*i*u*m*k/n), k = 0 .. n/2.
//
// The root exponent u is 1 at the top; Good-Thomas stages change it, which changes constants and signs but no
// operation. Imaginary parts carry their true sign. Where a stage yields a bin above n/2 it is mirrored, n-k with the
// conjugate.
#pragma once

#include "bin.hpp"
#include "plan/plan.hpp"

#include <functional>
#include <map>

namespace tfmgen::transform {

// Two ways of writing a direct form that differ in rounding only.
enum class DirectStyle {
  complexSamples, // differences x[m] - x[p-m]; x[0] is added behind a positive first product
  realSamples,    // some differences the other way round; x[0] is added last behind a positive first product
};

// What all stages of one kernel share.
struct Analysis {
  Graph& g;
  DirectStyle style;
  EighthTurn eighth = EighthTurn::productsFirst;
};

using OddBins = std::map<int, Bin>; // by odd frequency f <= L

// Bins 0 .. n/2 of real samples.
Bins analyse(Analysis& a, const plan::Plan& plan, const Samples& x, long u = 1);

// All n bins of complex samples.
Bins analyseComplex(Analysis& a, const plan::Plan& plan, const Bins& z, long u = 1);

// sum over n of d[n] * exp(-2*pi*i*u*n*f / 2L) for odd f <= L.
OddBins analyseOdd(Analysis& a, const plan::OddPlan& plan, const Samples& d, long u = 1);

// ---- One function a form of plan, each in a file of its own

Bins analyseForm(Analysis& a, const plan::Direct& form, const Samples& x, long u);
Bins analyseForm(Analysis& a, const plan::PowerOfTwo& form, const Samples& x, long u);
Bins analyseForm(Analysis& a, const plan::Pairs& form, const Samples& x, long u);
Bins analyseForm(Analysis& a, const plan::GoodThomas& form, const Samples& x, long u);
Bins analyseForm(Analysis& a, const plan::CooleyTukey& form, const Samples& x, long u);
Bins analyseForm(Analysis& a, const plan::Rader& form, const Samples& x, long u);

OddBins analyseOddForm(Analysis& a, plan::OddHalf form, const Samples& d, long u);
OddBins analyseOddForm(Analysis& a, const plan::OddGoodThomas& form, const Samples& d, long u);
OddBins analyseOddForm(Analysis& a, const plan::OddCooleyTukey& form, const Samples& d, long u);
OddBins analyseOddForm(Analysis& a, const plan::OddByThree& form, const Samples& d, long u);

// ---- Shared steps

// Sample m of sub-transform r.
using SubSample = std::function<Ref(int r, int m)>;

// The bins of `count` transforms by one plan.
std::vector<Bins> analyseEach(Analysis& a, const plan::Plan& plan, int count, const SubSample& sample, long u);

// Bin k of each sub-transform.
Bins column(const std::vector<Bins>& inner, int k);

// The spectrum of p + i*q for real p and q, all n bins.
Bins combine(Graph& g, const Bins& p, const Bins& q, std::size_t n);

// Bins 0 .. n/2 of a stage to all n.
Bins completed(const Bins& half, int n);

Samples realParts(const Bins& z);
Samples imaginaryParts(Graph& g, const Bins& z);

// Collects bins of any index as 0 .. n/2, the first to come of each.
class HalfSpectrum {
public:
  explicit HalfSpectrum(int n) : n_(n) {}
  void put(long k, const Bin& z);
  [[nodiscard]] Bins bins() const;

private:
  int n_;
  std::map<int, Bin> bins_;
};

// The same for the odd frequencies of order 2L.
class OddHalfSpectrum {
public:
  explicit OddHalfSpectrum(int length) : length_(length) {}
  void put(long f, const Bin& z);
  [[nodiscard]] OddBins bins() const { return bins_; }

private:
  int length_;
  OddBins bins_;
};

// d continued with d[n + L] = -d[n].
Ref continued(const Samples& d, long n);

} // namespace tfmgen::transform
