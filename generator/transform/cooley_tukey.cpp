// Cooley-Tukey with odd factors: transforms of subsequences, a rotation by twiddles, transforms across them.
#include "analysis.hpp"

namespace tfmgen::transform {

namespace {

SineProduct sineProduct(plan::Merge merge) {
  return merge == plan::Merge::yes ? SineProduct::merged : SineProduct::placed;
}

// Bin k of each stage, the r-th rotated by exp(-2*pi*i*r*step/order).
Bins rotatedColumn(Analysis& a, const std::vector<Bins>& stages, int k, long step, long order, SineProduct sine) {
  Bins column;
  for (std::size_t r = 0; r < stages.size(); ++r) {
    const Bin& bin = stages[r][static_cast<std::size_t>(k)];
    column.push_back(rotate(a.g, bin, static_cast<long>(r) * step, order, sine, a.eighth));
  }
  return column;
}

Samples realColumn(const std::vector<Bins>& stages) {
  Samples column;
  for (const Bins& bins : stages) {
    column.push_back(bins[0].re);
  }
  return column;
}

plan::Plan powerOfTwoOnComplex(int length) {
  return length > 2 ? plan::Plan{plan::PowerOfTwo{length, plan::OddHalf::pairs}} : plan::Plan{plan::Direct{2}};
}

} // namespace

Bins analyseForm(Analysis& a, const plan::CooleyTukey& form, const Samples& x, long u) {
  const int first = plan::length(*form.first);
  const int second = plan::length(*form.second);
  const int n = first * second;
  std::vector<Bins> inner;
  for (int r = 0; r < second; ++r) {
    Samples subsequence;
    for (int m = 0; m < first; ++m) {
      const int element = second * m + r;
      subsequence.push_back(x[static_cast<std::size_t>(element)]);
    }
    inner.push_back(analyse(a, *form.first, subsequence, u));
  }
  HalfSpectrum out(n);
  for (int k1 = 0; k1 <= first / 2; ++k1) {
    const Bins bins = k1 == 0 ? completed(analyse(a, *form.second, realColumn(inner), u), second)
                              : analyseComplex(a, *form.second,
                                               rotatedColumn(a, inner, k1, u * k1, n, sineProduct(form.mergeSine)), u);
    for (int k2 = 0; k2 < second; ++k2) {
      out.put(k1 + first * k2, bins[static_cast<std::size_t>(k2)]);
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
  std::vector<Bins> inner;
  for (int r = 0; r < second; ++r) {
    Samples subsequence;
    for (int m = 0; m < first; ++m) {
      subsequence.push_back(continued(d, 2L * second * m + r));
    }
    inner.push_back(analyse(a, *form.first, subsequence, u));
  }
  OddHalfSpectrum out(static_cast<int>(d.size()));
  for (const auto& [f, z] : analyseOddForm(a, plan::OddHalf::pairs, realColumn(inner), u)) {
    out.put(static_cast<long>(first) * f, z);
  }
  for (int k1 = 1; k1 <= first / 2; ++k1) {
    const int odd = k1 % 2 == 1 ? k1 : k1 + first;
    const Bins column = rotatedColumn(a, inner, k1, u * odd, order, sineProduct(form.mergeSine));
    const Bins bins = analyseComplex(a, powerOfTwoOnComplex(second), column, u);
    for (int j = 0; j < second; ++j) {
      out.put(odd + 2L * first * j, bins[static_cast<std::size_t>(j)]);
    }
  }
  return out.bins();
}

OddBins analyseOddForm(Analysis& a, const plan::OddByThree& form, const Samples& d, long u) {
  const int count = static_cast<int>(d.size()) / 3;
  std::vector<Bins> inner;
  for (int r = 0; r < count; ++r) {
    const Samples triple{continued(d, r), continued(d, 2L * count + r), continued(d, 4L * count + r)};
    inner.push_back(analyseForm(a, plan::Direct{3}, triple, u));
  }
  OddHalfSpectrum out(static_cast<int>(d.size()));
  for (const auto& [f, z] : analyseOdd(a, *form.onReal, realColumn(inner), u)) {
    out.put(3L * f, z);
  }
  const Bins column = rotatedColumn(a, inner, 1, u, static_cast<long>(2 * d.size()), SineProduct::placed);
  const Bins bins = analyseComplex(a, *form.onComplex, column, u);
  for (int j = 0; j < count; ++j) {
    out.put(1 + 6L * j, bins[static_cast<std::size_t>(j)]);
  }
  return out.bins();
}

} // namespace tfmgen::transform
