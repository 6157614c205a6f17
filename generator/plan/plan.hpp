// How a length is taken apart, as a tree.
//
// Stages are written in the order in which data passes them, from the samples to the spectrum.
#pragma once

#include <memory>
#include <string>
#include <variant>

namespace tfmgen::plan {

struct Plan;
using PlanPtr = std::shared_ptr<const Plan>;

// The transform of d of length L at the odd frequencies f of order 2L: sum of d[n] exp(-2 pi i n f / 2L). It is the odd
// half of a real transform of length 2L whose first stage is the pairs x[n] +- x[n+L].
struct OddPlan;
using OddPlanPtr = std::shared_ptr<const OddPlan>;

enum class Merge : bool { no, yes };

// ---- Plans

struct Direct { // 2 or an odd prime by its definition
  int length;
};

// How the odd half of a power of two is computed.
enum class OddHalf {
  radix4,   // four subsequences, rotated, radix-4 butterflies
  pairs,    // pairs (d[n], -d[n + L/2]) rotated, then a complex transform of length L/2
  pairsOf2, // the same with a radix-2 complex transform
  radix2,   // at L = 32 two subsequences, below it as pairs
};

struct PowerOfTwo {
  int length;
  OddHalf oddHalf;
};

struct GoodThomas { // coprime factors, no twiddles
  PlanPtr first;
  PlanPtr second;
};

struct CooleyTukey { // twiddles of order first * second between the stages
  PlanPtr first;
  PlanPtr second;
  Merge mergeSine; // the sine product of a first-stage length 3 goes into the twiddles
};

struct Pairs { // x[n] +- x[n + length/2]; the sums and the differences have plans of their own
  PlanPtr sums;
  OddPlanPtr differences;
};

struct Rader { // a prime length as a cyclic convolution of length - 1
  int length;
  int primitiveRoot;
  PlanPtr analysis;     // of the permuted samples
  PlanPtr synthesis;    // its transpose takes the products back to the spectrum
  Merge mergeAnalysis;  // sine products of length 3 go into the multipliers before ..
  Merge mergeSynthesis; // .. and behind them
};

struct Chirp { // a convolution of a length at or above 2 * length - 1
  int length;
  PlanPtr convolution;
};

struct ByData { // one plan on real data, another on complex data
  PlanPtr onReal;
  PlanPtr onComplex;
};

struct Plan {
  std::variant<Direct, PowerOfTwo, GoodThomas, CooleyTukey, Pairs, Rader, Chirp, ByData> form;
};

// ---- Odd-frequency plans

struct OddGoodThomas { // an odd factor first, then a power of two, no twiddles
  PlanPtr first;
};

struct OddCooleyTukey { // the same with twiddles of order 2L
  PlanPtr first;
  Merge mergeSine;
};

struct OddByThree { // three-point transforms, then the odd-frequency and the complex transform of length L/3
  PlanPtr onComplex;
  OddPlanPtr onReal;
};

struct OddPlan {
  std::variant<OddGoodThomas, OddCooleyTukey, OddByThree> form;
};

// ---- Notation for tables

PlanPtr direct(int length);
PlanPtr powerOfTwo(int length, OddHalf oddHalf = OddHalf::radix4);
PlanPtr goodThomas(PlanPtr first, PlanPtr second);
PlanPtr goodThomas(PlanPtr first, PlanPtr second, PlanPtr third); // (first . second) . third
PlanPtr cooleyTukey(PlanPtr first, PlanPtr second, Merge mergeSine = Merge::no);
PlanPtr pairs(PlanPtr sums, OddPlanPtr differences);
PlanPtr rader(int length, int primitiveRoot, PlanPtr analysis, PlanPtr synthesis, Merge mergeAnalysis = Merge::no,
              Merge mergeSynthesis = Merge::no);
PlanPtr chirp(int length, PlanPtr convolution);
PlanPtr byData(PlanPtr onReal, PlanPtr onComplex);

OddPlanPtr oddGoodThomas(PlanPtr first);
OddPlanPtr oddCooleyTukey(PlanPtr first, Merge mergeSine = Merge::no);
OddPlanPtr oddByThree(PlanPtr onComplex, OddPlanPtr onReal);

// ---- Reading

// For std::visit: one function a form.
template <class... Cases>
struct Overload : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Overload(Cases...) -> Overload<Cases...>;

int length(const Plan& plan);
// In the notation of the field: GT 5.3, CT 4x4, Rader 13 (GT 3.4).
std::string describe(const Plan& plan);

} // namespace tfmgen::plan
