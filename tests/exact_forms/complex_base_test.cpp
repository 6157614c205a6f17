// The complex butterflies that all longer kernels are made of.
#include "complex_forms.hpp"

#include <numbers>

namespace tfmgen::test {
namespace {

double nearest(long double value) {
  return static_cast<double>(value);
}

// An odd prime: constants and sums with them in double, one rounding to the sample type at the end of each.
template <class Real>
Vector<Real> odd(const Vector<Real>& x, int sign) {
  const std::size_t p = x.size();
  const std::size_t half = (p - 1) / 2;
  Vector<Real> t(half + 1);
  Vector<Real> e(half + 1);
  std::complex<Real> total;
  for (std::size_t j = 1; j <= half; ++j) {
    t[j] = x[j] + x[p - j];
    e[j] = x[j] - x[p - j];
    total = j == 1 ? t[j] : total + t[j];
  }
  Vector<Real> out(p);
  out[0] = x[0] + total;
  for (std::size_t k = 1; k <= half; ++k) {
    const auto angle = [&](std::size_t j) {
      return 2 * std::numbers::pi_v<long double> * static_cast<long double>(j * k % p) / static_cast<long double>(p);
    };
    const auto cosines = [&](auto part) {
      double sum = part(x[0]);
      for (std::size_t j = 1; j <= half; ++j) {
        sum += nearest(std::cos(angle(j))) * part(t[j]);
      }
      return static_cast<Real>(sum);
    };
    const auto sines = [&](auto part) {
      double sum = nearest(std::sin(angle(1))) * part(e[1]);
      for (std::size_t j = 2; j <= half; ++j) {
        sum += nearest(std::sin(angle(j))) * part(e[j]);
      }
      return static_cast<Real>(sum);
    };
    const auto re = [](const std::complex<Real>& z) { return static_cast<double>(z.real()); };
    const auto im = [](const std::complex<Real>& z) { return static_cast<double>(z.imag()); };
    const std::complex<Real> a(cosines(re), cosines(im));
    const auto b = turned(std::complex<Real>(sines(re), sines(im)), sign);
    out[k] = a + b;
    out[p - k] = a - b;
  }
  return out;
}

// The odd half is combined before it is rotated.
Vector<double> singleEight(const Vector<double>& x, int sign) {
  constexpr double c = 0.7071067811865476;
  const auto p = x[0] + x[4];
  const auto q = x[0] - x[4];
  const auto r = x[2] + x[6];
  const auto v = x[2] - x[6];
  const auto t = (x[1] + x[5]) + (x[3] + x[7]);
  const auto w = (x[1] + x[5]) - (x[3] + x[7]);
  const auto f = c * (x[1] - x[5]);
  const auto g = c * (x[3] - x[7]);
  const auto m = f - g;
  const auto n = f + g;
  const auto iw = turned(w, sign);
  const auto i1 = turned(v + n, sign);
  const auto i3 = turned(n - v, sign);
  return {(p + r) + t, (q + m) + i1, (p - r) + iw, (q - m) + i3, (p + r) - t, (q - m) - i3, (p - r) - iw, (q + m) - i1};
}

template <class Real>
Vector<Real> expected(const Vector<Real>& x, int sign) {
  if constexpr (std::is_same_v<Real, double>) {
    if (x.size() == 8) {
      return singleEight(x, sign);
    }
  }
  switch (x.size()) {
  case 2: return two(x);
  case 4: return four(x, sign);
  default: return odd(x, sign);
  }
}

bool isBase(const Entry& entry) {
  const bool isWide = entry.family.realBytes == sizeof(double);
  return entry.family.isComplex() && (entry.n <= 5 || (isWide && (entry.n == 7 || entry.n == 8 || entry.n == 11)));
}

TEST(ExactForms, ComplexBaseKernels) {
  forEachTypedEntry([]<class Real>(const Entry& entry) {
    if (isBase(entry)) {
      expectComplexForm<Real>(entry, expected<Real>);
    }
  });
}

} // namespace
} // namespace tfmgen::test
