// Good-Thomas: coprime factors and no twiddles. The samples of one residue modulo the second factor form a transform of
// the first; the output index follows from the Chinese remainder theorem. See Good, "The interaction algorithm and
// practical Fourier analysis", 1958.
#include "analysis.hpp"
#include "number/modular.hpp"

namespace tfmgen::transform {

Bins analyseForm(Analysis& a, const plan::GoodThomas& form, const Samples& x, long u) {
  const int first = plan::length(*form.first);
  const int second = plan::length(*form.second);
  const int n = first * second;
  const auto sample = [&](int r, int m) { return at(x, (second * m + first * r) % n); };
  // Complex kernels keep the root of both stages and bring the bins into order; real ones have bins in simple order and
  // other powers of the roots.
  const bool isPlain = a.style == DirectStyle::complexSamples;
  const long u1 = isPlain ? u : u * second;
  const long u2 = isPlain ? u : u * first;
  const std::vector<Bins> inner = analyseEach(a, *form.first, second, sample, u1);
  HalfSpectrum out(n);
  for (int k1 = 0; k1 <= first / 2; ++k1) {
    const Bins across = column(inner, k1);
    const bool isReal = 2 * k1 % first == 0;
    const Bins bins = isReal ? completed(analyse(a, *form.second, realParts(across), u2), second)
                             : analyseComplex(a, *form.second, across, u2);
    for (int k2 = 0; k2 < second; ++k2) {
      const int k = isPlain ? number::chineseRemainder(k1, first, k2, second) : second * k1 + first * k2;
      out.put(k, at(bins, k2));
    }
  }
  return out.bins();
}

// d has length first * second with second a power of two, and is continued to 4 * L by its sign.
OddBins analyseOddForm(Analysis& a, const plan::OddGoodThomas& form, const Samples& d, long u) {
  const int first = plan::length(*form.first);
  const int second = static_cast<int>(d.size()) / first;
  const auto sample = [&](int r, int m) { return continued(d, 2L * second * m + static_cast<long>(first) * r); };
  const std::vector<Bins> inner = analyseEach(a, *form.first, second, sample, u * 2 * second);
  OddHalfSpectrum out(static_cast<int>(d.size()));
  for (int k1 = 0; k1 <= first / 2; ++k1) {
    const Bins across = column(inner, k1);
    const OddBins p = analyseOddForm(a, plan::OddHalf::pairs, realParts(across), u * first);
    if (k1 == 0) {
      for (const auto& [f, z] : p) {
        out.put(static_cast<long>(first) * f, z);
      }
      continue;
    }
    const OddBins q = analyseOddForm(a, plan::OddHalf::pairs, imaginaryParts(a.g, across), u * first);
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
