// Real decimation in frequency: the even bins are the transform of the sums x[n] + x[n + N/2], the odd bins the
// odd-frequency transform of the differences. See Sorensen, Jones, Heideman, Burrus, "Real-valued fast Fourier
// transform algorithms", 1987.
#include "analysis.hpp"
#include "number/modular.hpp"

namespace tfmgen::transform {

namespace {

struct Halves {
  Samples sums;
  Samples differences;
};

Halves butterflies(Graph& g, const Samples& x) {
  const std::size_t half = x.size() / 2;
  Halves out;
  for (std::size_t n = 0; n < half; ++n) {
    out.sums.push_back(g.add(x[n], x[n + half]));
    out.differences.push_back(g.subtract(x[n], x[n + half]));
  }
  return out;
}

Bins interleaved(const Bins& even, const OddBins& odd) {
  Bins out(even.size() + odd.size());
  for (std::size_t j = 0; j < even.size(); ++j) {
    out[2 * j] = even[j];
  }
  for (const auto& [f, z] : odd) {
    at(out, f) = z;
  }
  return out;
}

// d[n] - i*d[n + L/2] rotated by the n-th root of order 2L, then a complex transform: frequencies 1, 5, 9 and so on.
OddBins byPairs(Analysis& a, plan::OddHalf form, const Samples& d, long u) {
  const std::size_t half = d.size() / 2;
  const auto order = static_cast<long>(2 * d.size());
  Bins z;
  for (std::size_t n = 0; n < half; ++n) {
    const Ref im = number::modulo(u, 4) == 1 ? -d[n + half] : d[n + half];
    z.push_back(rotate(a.g, {d[n], im}, u * static_cast<long>(n), order, SineProduct::placed, a.eighth));
  }
  const Bins bins = analyseComplex(a, {plan::PowerOfTwo{static_cast<int>(half), form}}, z, u);
  OddHalfSpectrum out(static_cast<int>(d.size()));
  for (std::size_t j = 0; j < half; ++j) {
    out.put(static_cast<long>(1 + 4 * j), bins[j]);
  }
  return out.bins();
}

// Decimation in time: the odd-frequency transforms of `radix` subsequences, rotated, and a butterfly over them.
OddBins bySubsequences(Analysis& a, plan::OddHalf form, std::size_t radix, const Samples& d, long u) {
  const auto order = static_cast<long>(2 * d.size());
  const std::size_t length = d.size() / radix;
  std::vector<OddBins> parts;
  for (std::size_t s = 0; s < radix; ++s) {
    Samples subsequence;
    for (std::size_t n = s; n < d.size(); n += radix) {
      subsequence.push_back(d[n]);
    }
    parts.push_back(analyseOddForm(a, form, subsequence, u));
  }
  const plan::Plan butterfly{plan::PowerOfTwo{static_cast<int>(radix), plan::OddHalf::pairs}};
  OddHalfSpectrum out(static_cast<int>(d.size()));
  for (int f = 1; f < static_cast<int>(length); f += 2) {
    Bins z;
    for (std::size_t s = 0; s < radix; ++s) {
      z.push_back(rotate(a.g, parts[s].at(f), u * static_cast<long>(s) * f, order, SineProduct::placed, a.eighth));
    }
    const Bins bins = analyseComplex(a, butterfly, z, u);
    for (std::size_t j = 0; j < radix; ++j) {
      out.put(f + static_cast<long>(2 * length * j), bins[j]);
    }
  }
  return out.bins();
}

} // namespace

Bins analyseForm(Analysis& a, const plan::PowerOfTwo& form, const Samples& x, long u) {
  if (form.length == 2) {
    return analyseForm(a, plan::Direct{2}, x, u);
  }
  const Halves halves = butterflies(a.g, x);
  const Bins even = analyseForm(a, plan::PowerOfTwo{form.length / 2, form.oddHalf}, halves.sums, u);
  return interleaved(even, analyseOddForm(a, form.oddHalf, halves.differences, u));
}

Bins analyseForm(Analysis& a, const plan::Pairs& form, const Samples& x, long u) {
  const Halves halves = butterflies(a.g, x);
  const Bins even = analyse(a, *form.sums, halves.sums, u);
  return interleaved(even, analyseOdd(a, *form.differences, halves.differences, u));
}

OddBins analyseOddForm(Analysis& a, plan::OddHalf form, const Samples& d, long u) {
  switch (d.size()) {
  case 1: return {{1, {d[0], {}}}};
  case 2: return {{1, {d[0], number::modulo(u, 4) == 1 ? -d[1] : d[1]}}};
  case 4: return byPairs(a, form, d, u);
  default: break;
  }
  switch (form) {
  case plan::OddHalf::radix4: return bySubsequences(a, form, 4, d, u);
  case plan::OddHalf::radix2:
    return d.size() == 32 ? bySubsequences(a, plan::OddHalf::pairs, 2, d, u) : byPairs(a, form, d, u);
  default: return byPairs(a, form, d, u);
  }
}

} // namespace tfmgen::transform
