#include "analysis.hpp"

#include "number/modular.hpp"

#include <cstdlib>

namespace tfmgen::transform {

namespace {

// Decimation in frequency by 2 on complex data.
Bins radix2(Analysis& a, const Bins& z, long u) {
  Graph& g = a.g;
  const std::size_t half = z.size() / 2;
  if (half == 0) {
    return z;
  }
  Bins sums(half);
  Bins differences(half);
  for (std::size_t i = 0; i < half; ++i) {
    sums[i] = add(g, z[i], z[i + half]);
    differences[i] = rotate(g, subtract(g, z[i], z[i + half]), u * static_cast<long>(i), static_cast<long>(z.size()),
                            SineProduct::placed, a.eighth);
  }
  const Bins even = radix2(a, sums, u);
  const Bins odd = radix2(a, differences, u);
  Bins out(z.size());
  for (std::size_t j = 0; j < half; ++j) {
    out[2 * j] = even[j];
    out[2 * j + 1] = odd[j];
  }
  return out;
}

} // namespace

Bins analyse(Analysis& a, const plan::Plan& plan, const Samples& x, long u) {
  const auto byForm =
      plan::Overload{[&](const plan::ByData& form) { return analyse(a, *form.onReal, x, u); },
                     [&](const plan::Chirp&) -> Bins { std::abort(); }, // a convolution of complex vectors only
                     [&](const auto& form) { return analyseForm(a, form, x, u); }};
  return std::visit(byForm, plan.form);
}

Bins analyseComplex(Analysis& a, const plan::Plan& plan, const Bins& z, long u) {
  if (const auto* split = std::get_if<plan::ByData>(&plan.form)) {
    return analyseComplex(a, *split->onComplex, z, u);
  }
  if (const auto* power = std::get_if<plan::PowerOfTwo>(&plan.form)) {
    if (power->oddHalf == plan::OddHalf::pairsOf2 && power->length > 2) {
      return radix2(a, z, u);
    }
  }
  const Bins p = analyse(a, plan, realParts(z), u);
  const Bins q = analyse(a, plan, imaginaryParts(a.g, z), u);
  return combine(a.g, p, q, z.size());
}

OddBins analyseOdd(Analysis& a, const plan::OddPlan& plan, const Samples& d, long u) {
  return std::visit([&](const auto& form) { return analyseOddForm(a, form, d, u); }, plan.form);
}

std::vector<Bins> analyseEach(Analysis& a, const plan::Plan& plan, int count, const SubSample& sample, long u) {
  std::vector<Bins> inner;
  for (int r = 0; r < count; ++r) {
    Samples samples;
    for (int m = 0; m < plan::length(plan); ++m) {
      samples.push_back(sample(r, m));
    }
    inner.push_back(analyse(a, plan, samples, u));
  }
  return inner;
}

Bins column(const std::vector<Bins>& inner, int k) {
  Bins bins;
  for (const Bins& stage : inner) {
    bins.push_back(at(stage, k));
  }
  return bins;
}

Bins combine(Graph& g, const Bins& p, const Bins& q, std::size_t n) {
  Bins out(n);
  for (std::size_t k = 0; k < p.size(); ++k) {
    if (p[k].im.isZero() && q[k].im.isZero()) {
      out[k] = {p[k].re, q[k].re};
      continue;
    }
    out[k] = addTimesI(g, p[k], q[k]);
    const Ref pIm = place(g, p[k].im);
    const Ref qIm = place(g, q[k].im);
    out[out.size() - k] = {g.add(p[k].re, qIm), g.subtract(q[k].re, pIm)};
  }
  return out;
}

Bins completed(const Bins& half, int n) {
  Bins all = half;
  for (int k = static_cast<int>(half.size()); k < n; ++k) {
    all.push_back(conjugate(at(half, n - k)));
  }
  return all;
}

Samples realParts(const Bins& z) {
  Samples parts;
  for (const Bin& bin : z) {
    parts.push_back(bin.re);
  }
  return parts;
}

Samples imaginaryParts(Graph& g, const Bins& z) {
  Samples parts;
  for (const Bin& bin : z) {
    parts.push_back(place(g, bin.im));
  }
  return parts;
}

void HalfSpectrum::put(long k, const Bin& z) {
  const int index = number::modulo(k, n_);
  const bool isMirrored = 2 * index > n_;
  bins_.try_emplace(isMirrored ? n_ - index : index, isMirrored ? conjugate(z) : z);
}

Bins HalfSpectrum::bins() const {
  Bins bins;
  bins.reserve(bins_.size());
  for (const auto& [k, z] : bins_) {
    bins.push_back(z);
  }
  return bins;
}

void OddHalfSpectrum::put(long f, const Bin& z) {
  const int index = number::modulo(f, 2L * length_);
  const bool isMirrored = index > length_;
  bins_.try_emplace(isMirrored ? 2 * length_ - index : index, isMirrored ? conjugate(z) : z);
}

Ref continued(const Samples& d, long n) {
  const auto length = static_cast<long>(d.size());
  const int index = number::modulo(n, 2 * length);
  return index < length ? at(d, index) : -at(d, index - length);
}

} // namespace tfmgen::transform
