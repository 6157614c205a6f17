// Reference transforms in quadruple precision, straight from the definitions. Nothing here is shared with the
// generator.
#pragma once

#include "families.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

namespace tfmgen::test {

__extension__ using Quad = __float128;

// exp(2*pi*i*k/n). The angle is reduced to an eighth of a turn in whole numbers, so multiples of a quarter are exact.
struct Root {
  Quad re;
  Quad im;
};

inline Root root(int k, int n) {
  const Quad pi = Quad{0x1.921fb54442d18p+1} + Quad{0x1.1a62633145c07p-53} + Quad{-0x1.f1976b7ed8fbcp-109};
  const int eighths = 8 * (((k % n) + n) % n);
  const int octant = eighths / n;
  const int rest = octant % 2 == 0 ? eighths % n : n - eighths % n;
  const Quad angle = 2 * pi * rest / (8 * n);

  Quad cosine = 0;
  Quad sine = 0;
  Quad term = 1;
  for (int power = 0; power < 32; power += 2) { // Taylor; the first term left out is below 2^-120
    cosine += power % 4 == 0 ? term : -term;
    term *= angle / (power + 1);
    sine += power % 4 == 0 ? term : -term;
    term *= angle / (power + 2);
  }
  const Root first = octant % 2 == 0 ? Root{cosine, sine} : Root{sine, cosine};
  switch (octant / 2) {
  case 0: return first;
  case 1: return {-first.im, first.re};
  case 2: return {-first.re, -first.im};
  default: return {first.im, -first.re};
  }
}

inline const std::vector<Root>& roots(int n) {
  static std::array<std::vector<Root>, kLongest + 1> tables;
  std::vector<Root>& table = tables.begin()[n];
  for (int k = static_cast<int>(table.size()); k < n; ++k) {
    table.push_back(root(k, n));
  }
  return table;
}

// The exact factor of `flag`, to quadruple precision.
inline Quad exactScale(const Family& family, int n, std::int32_t flag) {
  if (!family.divides(flag)) {
    return 1;
  }
  if (flag != TFM_DIV_BY_SQRTN) {
    return Quad{1} / n;
  }
  Quad reciprocal = 1 / std::sqrt(static_cast<double>(n));
  for (int step = 0; step < 2; ++step) { // Newton
    reciprocal = reciprocal * (3 - n * reciprocal * reciprocal) / 2;
  }
  return reciprocal;
}

namespace detail {

inline Root element(std::span<const Quad> values, const Slot& slot) {
  const auto at = [&](int index) { return index < 0 ? Quad{0} : values.begin()[index]; };
  return {at(slot.re), at(slot.im)};
}

// Sum over j of x(j) * exp(sign*2*pi*i*j*k/n).
template <class Element>
Root bin(int n, int k, int sign, const Element& x) {
  const std::vector<Root>& table = roots(n);
  Root sum{0, 0};
  for (int j = 0; j < n; ++j) {
    const Root value = x(j);
    const Root w = table.begin()[j * k % n];
    sum.re += value.re * w.re - sign * value.im * w.im;
    sum.im += value.im * w.re + sign * value.re * w.im;
  }
  return sum;
}

} // namespace detail

// The transform without its scale: reals of the source to reals of the destination.
inline std::vector<Quad> reference(const Entry& entry, std::span<const Quad> src) {
  const int n = entry.n;
  const Format format = entry.family.format;
  const auto complexInput = [&](int j) { return detail::element(src, {2 * j, 2 * j + 1}); };
  const auto realInput = [&](int j) { return detail::element(src, {j, -1}); };
  const auto spectrum = [&](int k) { // completed by conjugate symmetry; the parts that must be zero do not count
    const bool mirrored = 2 * k > n;
    const Root value = detail::element(src, spectrumSlot(format, n, mirrored ? n - k : k));
    return Root{value.re, k % n == 0 || 2 * k == n ? Quad{0} : mirrored ? -value.im : value.im};
  };

  std::vector<Quad> dst(entry.destinationReals());
  const auto store = [&](int index, Quad value) {
    if (index >= 0) {
      dst.begin()[index] = value;
    }
  };
  for (int k = 0; k < n; ++k) {
    switch (entry.family.kind) {
    case Kind::complexForward:
    case Kind::complexInverse: {
      const Root value = detail::bin(n, k, entry.family.kind == Kind::complexForward ? -1 : 1, complexInput);
      store(2 * k, value.re);
      store(2 * k + 1, value.im);
      break;
    }
    case Kind::realForward:
      if (2 * k <= n) {
        const Root value = detail::bin(n, k, -1, realInput);
        const Slot slot = spectrumSlot(format, n, k);
        store(slot.re, value.re);
        store(slot.im, k == 0 || 2 * k == n ? Quad{0} : value.im);
      }
      break;
    case Kind::realInverse: store(k, detail::bin(n, k, 1, spectrum).re); break;
    case Kind::hartley: {
      const Root value = detail::bin(n, k, 1, realInput);
      store(k, value.re + value.im);
      break;
    }
    }
  }
  return dst;
}

} // namespace tfmgen::test
