// The short kernels bit for bit against their formulas, written down once more operation by operation.
#include "bits.hpp"
#include "families.hpp"
#include "random.hpp"

#include <cmath>
#include <complex>
#include <numbers>
#include <vector>

namespace tfmgen::test {
namespace {

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

// Two transforms of length 4, twiddles that are multiplied out also where they are i, butterflies of length 2.
Vector<float> eight(const Vector<float>& x, int sign) {
  constexpr float c = 0.70710677F;
  const float s = sign > 0 ? c : -c;
  const Vector<float> even = four<float>({x[0], x[2], x[4], x[6]}, sign);
  const Vector<float> odd = four<float>({x[1], x[3], x[5], x[7]}, sign);
  const Vector<float> twiddles = {{1, 0}, {c, s}, {0, static_cast<float>(sign)}, {-c, s}};
  Vector<float> out(8);
  for (std::size_t k = 0; k < 4; ++k) {
    const auto& w = twiddles[k];
    const auto& z = odd[k];
    const std::complex<float> product(w.real() * z.real() - w.imag() * z.imag(),
                                      w.real() * z.imag() + w.imag() * z.real());
    out[k] = even[k] + product;
    out[k + 4] = even[k] - product;
  }
  return out;
}

// The odd half is combined before it is rotated.
Vector<double> eight(const Vector<double>& x, int sign) {
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
  switch (x.size()) {
  case 2: return two(x);
  case 4: return four(x, sign);
  case 8: return eight(x, sign);
  default: return odd(x, sign);
  }
}

bool isBase(const Entry& entry) {
  const bool isDirect = entry.n == 7 || entry.n == 11;
  return entry.family.isComplex() &&
         (entry.n <= 5 || entry.n == 8 || (isDirect && entry.family.realBytes == sizeof(double)));
}

TEST(BaseKernels, HaveTheBitsOfTheirFormulas) {
  forEachTypedEntry([]<class Real>(const Entry& entry) {
    if (!isBase(entry)) {
      return;
    }
    const auto n = static_cast<std::size_t>(entry.n);
    const int sign = entry.family.kind == Kind::complexForward ? -1 : 1;
    const Real scale = Real(1) / static_cast<Real>(n);
    Random random(n);
    for (int trial = 0; trial < 200; ++trial) {
      const std::vector<Real> x = random.reals<Real>(2 * n, trial % 2 == 0 ? Spread::uniform : Spread::wide);
      Vector<Real> elements;
      for (std::size_t i = 0; i < n; ++i) {
        elements.emplace_back(x[2 * i], x[2 * i + 1]);
      }
      std::vector<Real> result;
      for (const auto& z : expected(elements, sign)) {
        result.push_back(z.real() * scale);
        result.push_back(z.imag() * scale);
      }
      std::vector<Real> y(2 * n);
      ASSERT_EQ(entry(x.data(), y.data(), sign < 0 ? TFM_DIV_FWD_BY_N : TFM_DIV_INV_BY_N), tfmStsOk);
      ASSERT_TRUE(sameBits(result.data(), y.data(), entry.destinationBytes(), sizeof(Real)));
    }
  });
}

} // namespace
} // namespace tfmgen::test
