// Good-Thomas: coprime factors and no twiddles. The samples of one residue modulo the second factor form a transform of
// the first; the output index follows from the Chinese remainder theorem. See Good, "The interaction algorithm and
// practical Fourier analysis", 1958.
#include "analysis.hpp"

namespace tfmgen::transform {

Bins analyseForm(Analysis& a, const plan::GoodThomas& form, const Samples& x, long u) {
  const int first = plan::length(*form.first);
  const int second = plan::length(*form.second);
  const int n = first * second;
  std::vector<Bins> inner;
  for (int r = 0; r < second; ++r) {
    Samples coset;
    for (int m = 0; m < first; ++m) {
      coset.push_back(x[static_cast<std::size_t>((second * m + first * r) % n)]);
    }
    inner.push_back(analyse(a, *form.first, coset, u * second));
  }
  HalfSpectrum out(n);
  for (int k1 = 0; k1 <= first / 2; ++k1) {
    Bins column;
    for (const Bins& bins : inner) {
      column.push_back(bins[static_cast<std::size_t>(k1)]);
    }
    const bool isReal = 2 * k1 % first == 0;
    const Bins bins = isReal ? completed(analyse(a, *form.second, realParts(column), u * first), second)
                             : analyseComplex(a, *form.second, column, u * first);
    for (int k2 = 0; k2 < second; ++k2) {
      out.put(second * k1 + first * k2, bins[static_cast<std::size_t>(k2)]);
    }
  }
  return out.bins();
}

// d has length first * second with second a power of two, and is continued to 4 * L by its sign.
OddBins analyseOddForm(Analysis& a, const plan::OddGoodThomas& form, const Samples& d, long u) {
  const int first = plan::length(*form.first);
  const int second = static_cast<int>(d.size()) / first;
  std::vector<Bins> inner;
  for (int r = 0; r < second; ++r) {
    Samples coset;
    for (int m = 0; m < first; ++m) {
      coset.push_back(continued(d, 2L * second * m + static_cast<long>(first) * r));
    }
    inner.push_back(analyse(a, *form.first, coset, u * 2 * second));
  }
  OddHalfSpectrum out(static_cast<int>(d.size()));
  for (int k1 = 0; k1 <= first / 2; ++k1) {
    Samples re;
    Samples im;
    for (const Bins& bins : inner) {
      re.push_back(bins[static_cast<std::size_t>(k1)].re);
      im.push_back(place(a.g, bins[static_cast<std::size_t>(k1)].im));
    }
    const OddBins p = analyseOddForm(a, plan::OddHalf::pairs, re, u * first);
    if (k1 == 0) {
      for (const auto& [f, z] : p) {
        out.put(static_cast<long>(first) * f, z);
      }
      continue;
    }
    const OddBins q = analyseOddForm(a, plan::OddHalf::pairs, im, u * first);
    for (const auto& [f, z] : p) {
      const Ref pIm = place(a.g, z.im);
      const Ref qIm = place(a.g, q.at(f).im);
      out.put(2L * second * k1 + static_cast<long>(first) * f, addTimesI(a.g, z, q.at(f)));
      out.put(2L * second * k1 - static_cast<long>(first) * f, {a.g.add(z.re, qIm), a.g.subtract(q.at(f).re, pIm)});
    }
  }
  return out.bins();
}

} // namespace tfmgen::transform
