#include "split_transform.hpp"

#include "number/modular.hpp"

#include <algorithm>
#include <cstdlib>

namespace tfmgen::lower {

namespace {

using transform::binIndex;
using transform::RootSign;
using transform::sampleIndex;
using transform::Values;

std::vector<int> mapped(std::span<const int> indices, const auto& map) {
  std::vector<int> out;
  std::ranges::transform(indices, std::back_inserter(out), map);
  return out;
}

// The inner transforms r of `group`, one in each lane.
template <class Form>
Values innerStage(Graph& g, const Form& form, std::span<const int> group, const Source& source, RootSign sign) {
  const int first = plan::length(*form.first);
  const int second = plan::length(*form.second);
  Values samples;
  for (int m = 0; m < first; ++m) {
    samples.push_back(source(mapped(group, [&](int r) { return sampleIndex(form, first, second, r, m); })));
  }
  return transformComplex(g, *form.first, samples, sign);
}

Complex rotated(Graph& /*g*/, const plan::GoodThomas& /*form*/, const Complex& z, std::span<const int> /*bins*/,
                int /*r*/, RootSign /*sign*/) {
  return z;
}

// All lanes are multiplied alike, also where the twiddle is 1 or i.
Complex rotated(Graph& g, const plan::CooleyTukey& form, const Complex& z, std::span<const int> bins, int r,
                RootSign sign) {
  if (r == 0) {
    return z;
  }
  const long order = static_cast<long>(plan::length(*form.first)) * plan::length(*form.second);
  std::vector<number::Complex> twiddles;
  for (const int k1 : bins) {
    twiddles.push_back(number::root(static_cast<long>(factor(sign)) * r * k1, order));
  }
  return multiply(g, twiddles, z);
}

template <class Form>
std::vector<Packed> twoStages(Graph& g, const Form& form, const Source& source, RootSign sign) {
  const int first = plan::length(*form.first);
  const int second = plan::length(*form.second);
  const std::vector<std::vector<int>> binGroups = laneGroups(first);
  std::vector<Values> columns(binGroups.size()); // of each group of bins, for r = 0 .. second-1
  for (const std::vector<int>& group : laneGroups(second)) {
    const Values bins = innerStage(g, form, group, source, sign);
    for (std::size_t i = 0; i < binGroups.size(); ++i) {
      for (std::size_t lane = 0; lane < group.size(); ++lane) {
        std::vector<Lane> re;
        std::vector<Lane> im;
        for (const int k1 : binGroups[i]) {
          re.push_back({at(bins, k1).re, static_cast<int>(lane)});
          im.push_back({at(bins, k1).im, static_cast<int>(lane)});
        }
        const Ref real = gather(g, re);
        columns[i].push_back({real, gather(g, im)});
      }
    }
  }
  std::vector<Packed> out;
  for (std::size_t i = 0; i < binGroups.size(); ++i) {
    for (int r = 0; r < second; ++r) {
      Complex& z = at(columns[i], r);
      z = rotated(g, form, z, binGroups[i], r, sign);
    }
    const Values bins = transformComplex(g, *form.second, columns[i], sign);
    for (int k2 = 0; k2 < second; ++k2) {
      out.push_back(
          {at(bins, k2), mapped(binGroups[i], [&](int k1) { return binIndex(form, first, second, k1, k2); })});
    }
  }
  return out;
}

// A first factor that fills no register with its bins: each outer transform runs over lanes of its own instead.
std::vector<Packed> nestedStages(Graph& g, const plan::GoodThomas& form, const Source& source, RootSign sign) {
  const int first = plan::length(*form.first);
  const int second = plan::length(*form.second);
  std::vector<Elements> inner;
  for (const std::vector<int>& group : laneGroups(second)) {
    const Values bins = innerStage(g, form, group, source, sign);
    inner.resize(bins.size());
    for (std::size_t k1 = 0; k1 < bins.size(); ++k1) {
      inner[k1].put({bins[k1], group});
    }
  }
  std::vector<Packed> out;
  for (int k1 = 0; k1 < first; ++k1) {
    const Elements& column = at(inner, k1);
    const Source samples = [&](std::span<const int> r) { return column.gather(g, r); };
    for (const Packed& bins : transformLanes(g, *form.second, samples, sign)) {
      out.push_back({bins.value, mapped(bins.elements, [&](int k2) { return binIndex(form, first, second, k1, k2); })});
    }
  }
  return out;
}

std::vector<Packed> transformConvolution(Graph& g, const plan::Plan& plan, const Source& source, RootSign sign) {
  const auto* goodThomas = std::get_if<plan::GoodThomas>(&plan.form);
  return goodThomas != nullptr ? nestedStages(g, *goodThomas, source, sign) : transformLanes(g, plan, source, sign);
}

std::vector<number::Complex> selected(const std::vector<number::Complex>& factors, std::span<const int> indices) {
  std::vector<number::Complex> out;
  for (const int i : indices) {
    out.push_back(at(factors, i));
  }
  return out;
}

// c[k] = (-1)^k * exp(sign*i*pi*k*k/n), which is a whole power of the n-th root.
std::vector<number::Complex> chirp(int n, RootSign sign) {
  std::vector<number::Complex> c;
  for (long k = 0; k < n; ++k) {
    c.push_back(number::root(factor(sign) * (k * (k + n) / 2), n));
  }
  return c;
}

// The spectrum of the conjugate chirp, wrapped around the convolution length m, with the 1/m of the way back.
std::vector<number::Complex> chirpSpectrum(const std::vector<number::Complex>& c, int m, RootSign sign) {
  const int n = static_cast<int>(c.size());
  std::vector<number::Complex> spectrum;
  for (int k = 0; k < m; ++k) {
    number::Complex sum{0, 0};
    for (int j = 1 - n; j < n; ++j) {
      sum = sum + number::conjugate(at(c, std::abs(j))) * number::root(static_cast<long>(factor(sign)) * j * k, m);
    }
    spectrum.push_back(graph::Quad{1} / m * number::withExactZeros(sum));
  }
  return spectrum;
}

} // namespace

std::vector<Packed> transformLanes(Graph& g, const plan::Plan& plan, const Source& source, RootSign sign) {
  const plan::Overload byForm{
      [&](const plan::GoodThomas& form) { return twoStages(g, form, source, sign); },
      [&](const plan::CooleyTukey& form) { return twoStages(g, form, source, sign); },
      [](const auto& /*form*/) -> std::vector<Packed> { std::abort(); }, // nothing to lay side by side
  };
  return std::visit(byForm, plan.form);
}

RaderBins transformRader(Graph& g, const plan::Rader& form, const Source& source, Ref sample0, RootSign sign) {
  const int p = form.length;
  const int root = form.primitiveRoot;
  const Source permuted = [&](std::span<const int> indices) {
    return source(mapped(indices, [&](int i) { return number::powerModulo(root, i, p); }));
  };
  RaderBins out;
  const std::vector<number::Complex> factors = transform::raderMultipliers(p, root, sign);
  Elements products;
  for (const Packed& bins : transformLanes(g, *form.analysis, permuted, sign)) {
    Complex product = multiply(g, selected(factors, bins.elements), bins.value);
    if (bins.elements.front() == 0) {
      out.first = g.add(sample0, g.shuffle(bins.value.re, bins.value.im, kUnpackLow));
      product.re = g.add(product.re, g.shuffle(sample0, sample0, selector(0, 2, 2, 2)));
      product.im = g.add(product.im, g.shuffle(sample0, sample0, selector(1, 2, 2, 2)));
    }
    products.put({product, bins.elements});
  }
  const Source spectrum = [&](std::span<const int> indices) { return products.gather(g, indices); };
  const int inverseRoot = number::inverseModulo(root, p);
  for (const Packed& bins : transformLanes(g, *form.synthesis, spectrum, opposite(sign))) {
    out.bins.push_back(
        {bins.value, mapped(bins.elements, [&](int j) { return number::powerModulo(inverseRoot, j, p); })});
  }
  return out;
}

std::vector<Packed> transformChirp(Graph& g, const plan::Chirp& form, const Source& source, RootSign sign) {
  const std::vector<number::Complex> c = chirp(form.length, sign);
  const std::vector<number::Complex> spectrum = chirpSpectrum(c, plan::length(*form.convolution), sign);
  Elements samples;
  for (const std::vector<int>& group : laneGroups(form.length)) {
    samples.put({multiply(g, selected(c, group), source(group)), group});
  }
  const Source padded = [&](std::span<const int> indices) { return samples.gather(g, indices); };
  Elements products;
  for (const Packed& bins : transformConvolution(g, *form.convolution, padded, sign)) {
    products.put({multiply(g, selected(spectrum, bins.elements), bins.value), bins.elements});
  }
  const Source filtered = [&](std::span<const int> indices) { return products.gather(g, indices); };
  const Elements convolved(transformConvolution(g, *form.convolution, filtered, opposite(sign)));
  std::vector<Packed> out;
  for (const std::vector<int>& group : laneGroups(form.length)) {
    out.push_back({multiply(g, selected(c, group), convolved.gather(g, group)), group});
  }
  return out;
}

} // namespace tfmgen::lower
