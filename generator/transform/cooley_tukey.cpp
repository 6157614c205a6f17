// Cooley-Tukey with odd factors: transforms of subsequences, a rotation by twiddles, transforms across them.
#include "analysis.hpp"

namespace tfmgen::transform {

namespace {

SineProduct sineProduct(plan::Merge merge) {
  return merge == plan::Merge::yes ? SineProduct::merged : SineProduct::placed;
}

// The r-th bin rotated by exp(-2*pi*i*r*step/order).
Bins rotated(Analysis& a, Bins bins, long step, long order, SineProduct sine) {
  for (std::size_t r = 0; r < bins.size(); ++r) {
    bins[r] = rotate(a.g, bins[r], static_cast<long>(r) * step, order, sine, a.eighth);
  }
  return bins;
}

} // namespace

Bins analyseForm(Analysis& a, const plan::CooleyTukey& form, const Samples& x, long u) {
  const int first = plan::length(*form.first);
  const int second = plan::length(*form.second);
  const int n = first * second;
  const auto sample = [&](int r, int m) {
    const int element = second * m + r;
    return at(x, element);
  };
  const std::vector<Bins> inner = analyseEach(a, *form.first, second, sample, u);
  HalfSpectrum out(n);
  for (int k1 = 0; k1 <= first / 2; ++k1) {
    const Bins across = rotated(a, column(inner, k1), u * k1, n, sineProduct(form.mergeSine));
    const Bins bins = k1 == 0 ? completed(analyse(a, *form.second, realParts(across), u), second)
                              : analyseComplex(a, *form.second, across, u);
    for (int k2 = 0; k2 < second; ++k2) {
      out.put(k1 + first * k2, at(bins, k2));
    }
  }
  return out.bins();
}

// The odd factor first. A bin k1 of it holds the frequencies congruent to k1 modulo the factor, the odd ones of which
// begin at k1 or at k1 + factor.
OddBins analyseOddForm(Analysis& a, const plan::OddCooleyTukey& form, const Samples& d, long u) {
  const int first = plan::length(*form.first);
  const int second = static_cast<int>(d.size()) / first;
  const auto order = static_cast<long>(2 * d.size());
  const auto sample = [&](int r, int m) { return continued(d, 2L * second * m + r); };
  const std::vector<Bins> inner = analyseEach(a, *form.first, second, sample, u);
  OddHalfSpectrum out(static_cast<int>(d.size()));
  for (const auto& [f, z] : analyseOddForm(a, plan::OddHalf::pairs, realParts(column(inner, 0)), u)) {
    out.put(static_cast<long>(first) * f, z);
  }
  for (int k1 = 1; k1 <= first / 2; ++k1) {
    const int odd = k1 % 2 == 1 ? k1 : k1 + first;
    const Bins across = rotated(a, column(inner, k1), u * odd, order, sineProduct(form.mergeSine));
    const Bins bins = analyseComplex(a, {plan::PowerOfTwo{second, plan::OddHalf::pairs}}, across, u);
    for (int j = 0; j < second; ++j) {
      out.put(odd + 2L * first * j, at(bins, j));
    }
  }
  return out.bins();
}

OddBins analyseOddForm(Analysis& a, const plan::OddByThree& form, const Samples& d, long u) {
  const int count = static_cast<int>(d.size()) / 3;
  const auto sample = [&](int r, int m) { return continued(d, 2L * count * m + r); };
  const std::vector<Bins> inner = analyseEach(a, {plan::Direct{3}}, count, sample, u);
  OddHalfSpectrum out(static_cast<int>(d.size()));
  for (const auto& [f, z] : analyseOdd(a, *form.onReal, realParts(column(inner, 0)), u)) {
    out.put(3L * f, z);
  }
  const Bins across = rotated(a, column(inner, 1), u, static_cast<long>(2 * d.size()), SineProduct::placed);
  const Bins bins = analyseComplex(a, *form.onComplex, across, u);
  for (int j = 0; j < count; ++j) {
    out.put(1 + 6L * j, at(bins, j));
  }
  return out.bins();
}

} // namespace tfmgen::transform
