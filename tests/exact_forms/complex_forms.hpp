// What the forms of complex transforms share. `sign` is that of the exponent, -1 forward.
#pragma once

#include "families.hpp"
#include "forms.hpp"
#include "scale.hpp"

#include <complex>

namespace tfmgen::test {

template <class Real>
using Vector = std::vector<std::complex<Real>>;

// sign*i*z
template <class Real>
std::complex<Real> turned(const std::complex<Real>& z, int sign) {
  return sign > 0 ? std::complex<Real>(-z.imag(), z.real()) : std::complex<Real>(z.imag(), -z.real());
}

template <class Real>
Vector<Real> two(const Vector<Real>& x) {
  return {x[0] + x[1], x[0] - x[1]};
}

template <class Real>
Vector<Real> four(const Vector<Real>& x, int sign) {
  const auto b = x[0] + x[2];
  const auto c = x[0] - x[2];
  const auto a = x[1] + x[3];
  const auto d = turned(x[1] - x[3], sign);
  return {b + a, c + d, b - a, c - d};
}

// Compares form(elements, sign), without the scale, with the kernel.
template <class Real, class Form>
void expectComplexForm(const Entry& entry, const Form& form) {
  const int sign = entry.family.kind == Kind::complexForward ? -1 : 1;
  expectForm<Real>(
      entry.sourceReals(), entry.destinationReals(), kFlags,
      [&](const std::vector<Real>& x, std::int32_t flag) {
        Vector<Real> elements;
        for (std::size_t i = 0; i < x.size(); i += 2) {
          elements.emplace_back(x[i], x[i + 1]);
        }
        const Real scale = expectedScale<Real>(entry.family, entry.n, flag);
        std::vector<Real> result;
        for (const auto& z : form(elements, sign)) {
          result.push_back(z.real() * scale);
          result.push_back(z.imag() * scale);
        }
        return result;
      },
      [&](const std::vector<Real>& x, const Places<Real>& at, std::int32_t flag) {
        std::ranges::copy(x, at.source);
        return entry(at.source, at.result, flag);
      });
}

} // namespace tfmgen::test
