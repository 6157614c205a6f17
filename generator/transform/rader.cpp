// Rader: a prime length p as a cyclic convolution of length q = p-1 over the powers of a primitive root. See Rader,
// "Discrete Fourier transforms when the number of data samples is prime", 1968.
#include "analysis.hpp"
#include "graph/transpose.hpp"
#include "number/modular.hpp"
#include "number/roots.hpp"

#include <cmath>

namespace tfmgen::transform {

namespace {

// The multiplier of bin k of the permuted samples. A convolution of real data works on a half spectrum, where every bin
// but the first and the last stands for two: its multiplier is stored doubled. Even bins carry the cosines of the
// transform, odd bins the sines, since the root to the power q/2 is -1.
number::Complex multiplier(const plan::Rader& form, long u, int k) {
  const int p = form.length;
  const int q = p - 1;
  number::Complex sum{0, 0};
  for (int m = 0; m < q; ++m) {
    const auto [c, s] = number::root(u * number::powerModulo(form.primitiveRoot, m, p), p);
    sum = sum + (k % 2 == 0 ? c : -s) * number::root(static_cast<long>(m) * k, q);
  }
  const Quad bins = 2 * k == q ? 1 : 2;
  return bins / q * sum;
}

// The multiplier of the last bin is real, sqrt(p)/q in magnitude. Real kernels of 11 and 13 hold it as the product of
// the rounded square root and the rounded 1/q, one unit in the last place from the nearest double.
Quad lastMultiplier(const Analysis& a, int p, Quad exact) {
  if (a.style == DirectStyle::complexSamples || (p != 11 && p != 13)) {
    return exact;
  }
  const double magnitude = std::sqrt(static_cast<double>(p)) * (1.0 / (p - 1));
  return exact < 0 ? -magnitude : magnitude;
}

// The analysis of length q as a graph of its own, to be run backward.
struct Synthesis {
  Graph forward;
  std::vector<Ref> outputs;  // re, im of each bin
  std::vector<Quad> factors; // of the pending product in each im

  Synthesis(const plan::Plan& plan, const Analysis& outer) {
    Samples samples;
    for (int i = 0; i < plan::length(plan); ++i) {
      samples.push_back(forward.load(i));
    }
    const bool sumsFirst = outer.eighth == EighthTurn::productsFirst; // they change places when run backward
    Analysis analysis{forward, outer.style, sumsFirst ? EighthTurn::sumsFirst : EighthTurn::productsFirst};
    for (const Bin& bin : analyse(analysis, plan, samples)) {
      outputs.push_back(bin.re);
      outputs.push_back(bin.im.value);
      factors.push_back(bin.im.factor);
    }
  }

  Samples run(Graph& g, std::span<const Ref> spectrum) const {
    return graph::transpose(g, forward, outputs, spectrum, graph::Minuend::positive);
  }
};

// A bin of the permuted samples times its multiplier, as the transposed transform takes it.
Bin product(Graph& g, const Bin& bin, number::Complex m, Quad synthesisFactor, const plan::Rader& form) {
  const bool mergeBefore = form.mergeAnalysis == plan::Merge::yes;
  const bool mergeBehind = form.mergeSynthesis == plan::Merge::yes;
  const Product im = mergeBefore ? bin.im : Product(place(g, bin.im));
  const Quad behind = mergeBehind ? synthesisFactor : Quad{1};
  const Ref re = g.sumOfProducts({{{m.re, bin.re}, {-m.im * im.factor, im.value}}});
  const Ref image = g.sumOfProducts({{{m.re * im.factor * behind, im.value}, {m.im * behind, bin.re}}});
  return {re, mergeBehind ? image : g.multiply(synthesisFactor, image)};
}

} // namespace

Bins analyseForm(Analysis& a, const plan::Rader& form, const Samples& x, long u) {
  Graph& g = a.g;
  const int p = form.length;
  const int q = p - 1;
  const std::size_t half = x.size() / 2;

  Samples permuted;
  for (int i = 0; i < q; ++i) {
    permuted.push_back(at(x, number::powerModulo(form.primitiveRoot, i, p)));
  }
  const Bins spectrum = analyse(a, *form.analysis, permuted);
  const Synthesis synthesis(*form.synthesis, a);

  std::vector<Ref> even(2 * (half + 1)); // spectrum of the real parts of the result, re and im of each bin
  std::vector<Ref> odd(2 * (half + 1));  // and of the imaginary parts
  const Ref total = spectrum[0].re;
  even[0] = g.sumOfProducts({{{1, x[0]}, {-Quad{1} / q, total}}});
  for (std::size_t k = 1; k <= half; ++k) {
    std::vector<Ref>& target = k % 2 == 0 ? even : odd;
    const number::Complex m = multiplier(form, u, static_cast<int>(k));
    if (k == half) {
      target[2 * k] = g.multiply(lastMultiplier(a, p, m.re), spectrum[k].re);
    } else {
      const Bin v = product(g, spectrum[k], m, synthesis.factors[k], form);
      target[2 * k] = v.re;
      target[2 * k + 1] = v.im.value;
    }
  }
  const Samples re = synthesis.run(g, even);
  const Samples im = synthesis.run(g, odd);

  HalfSpectrum out(p);
  out.put(0, {g.add(x[0], total), {}});
  const int inverseRoot = number::inverseModulo(form.primitiveRoot, p);
  for (std::size_t j = 0; j < half; ++j) {
    out.put(number::powerModulo(inverseRoot, static_cast<int>(j), p), {re[j], im[j]});
  }
  return out.bins();
}

} // namespace tfmgen::transform
