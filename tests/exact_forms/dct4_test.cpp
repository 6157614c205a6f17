// The short DCT-IV routines.
#include "dct4.hpp"

#include "forms.hpp"

#include <algorithm>
#include <numbers>

namespace tfmgen::test {
namespace {

// cos, sin and tan of pi * numerator / denominator, rounded once.
template <class Real>
struct Angle {
  Real c;
  Real s;
  Real t;

  Angle(int numerator, int denominator) {
    const long double angle = std::numbers::pi_v<long double> * numerator / denominator;
    c = static_cast<Real>(std::cos(angle));
    s = static_cast<Real>(std::sin(angle));
    t = static_cast<Real>(std::tan(angle));
  }
};

template <class Real>
struct Pair {
  Real p;
  Real q;
};

template <class Real>
Pair<Real> rotated(Real c, Real s, const Angle<Real>& theta) {
  return {c * theta.c - s * theta.s, c * theta.s + s * theta.c};
}

template <class Real>
std::vector<Real> two(const std::vector<Real>& x) {
  const Angle<Real> a(1, 8);
  return {a.c * x[0] + a.s * x[1], a.s * x[0] - a.c * x[1]};
}

template <class Real>
std::vector<Real> four(const std::vector<Real>& x) {
  const Real r = Angle<Real>(1, 4).c;
  const Real outer = Angle<Real>(7, 32).t;
  const Real inner = Angle<Real>(5, 32).t;
  const Real t0 = x[0] - outer * x[3];
  const Real p0 = x[3] + Angle<Real>(7, 16).s * t0;
  const Real q0 = t0 - outer * p0;
  const Real t1 = x[1] - inner * x[2];
  const Real p1 = x[2] + Angle<Real>(5, 16).s * t1;
  const Real q1 = t1 - inner * p1;
  const Real u = (p0 - p1) * r;
  const Real v = (q0 + q1) * r;
  return {p0 + p1, u + v, u - v, q0 - q1};
}

// Columns of 4: rows 0 and 1 of column j of f, rotated.
template <class Real>
std::array<Pair<Real>, 2> column(const std::vector<Real>& x, std::size_t f, std::size_t j) {
  const Real r = Angle<Real>(1, 4).c;
  const auto n = static_cast<int>(x.size());
  const Real a = (x[2 * f + j] + x[2 * f - 1 - j]) * r;
  const Real b = (x[2 * f + j] - x[2 * f - 1 - j]) * r;
  const Real last = x[x.size() - 1 - j];
  const auto odd = static_cast<int>(2 * j + 1);
  return {rotated(x[j] + a, b - last, Angle<Real>(odd, 4 * n)),
          rotated(x[j] - a, b + last, Angle<Real>(3 * odd, 4 * n))};
}

template <class Real>
std::vector<Real> eight(const std::vector<Real>& x) {
  const Real r = Angle<Real>(1, 4).c;
  const auto column0 = column(x, 2, 0);
  const auto column1 = column(x, 2, 1);
  std::vector<Real> y(8);
  for (std::size_t i = 0; i < 2; ++i) {
    const auto [p0, q0] = column0[i];
    const auto [p1, q1] = column1[i];
    const Real u = (p0 - p1) * r;
    const Real v = (q0 + q1) * r;
    y[i] = p0 + p1;
    y[4 + i] = u - v;
    y[3 - i] = u + v;
    y[7 - i] = q0 - q1;
  }
  return y;
}

template <class Real>
std::vector<Real> sixteen(const std::vector<Real>& x) {
  const Real r = Angle<Real>(1, 4).c;
  std::vector<Real> y(16);
  for (std::size_t i = 0; i < 2; ++i) {
    const auto [p0, q0] = column(x, 4, 0)[i];
    const auto [p1, q1] = column(x, 4, 1)[i];
    const auto [p2, q2] = column(x, 4, 2)[i];
    const auto [p3, q3] = column(x, 4, 3)[i];
    const Real A = p0 + p3;
    const Real B = p0 - p3;
    const Real D = q0 + q3;
    const Real E = q0 - q3;
    const Real F = p1 + p2;
    const Real G = p1 - p2;
    const Real H = q1 + q2;
    const Real K = q1 - q2;
    y[i] = A + F;
    const Real u = (A - F) * r;
    const Real v = (E + K) * r;
    y[8 + i] = u - v;
    y[7 - i] = u + v;
    y[15 - i] = E - K;
    const auto [B1, D1] = rotated(B, D, Angle<Real>(1, 8));
    const auto [G1, H1] = rotated(G, H, Angle<Real>(3, 8));
    y[4 + i] = B1 + G1;
    const Real u1 = (B1 - G1) * r;
    const Real v1 = (D1 + H1) * r;
    y[12 + i] = u1 - v1;
    y[3 - i] = u1 + v1;
    y[11 - i] = D1 - H1;
  }
  return y;
}

template <class Real>
void compareLengths() {
  struct Routine {
    std::int32_t length;
    std::vector<Real> (*form)(const std::vector<Real>&);
  };
  for (const Routine& routine :
       {Routine{2, two<Real>}, Routine{4, four<Real>}, Routine{8, eight<Real>}, Routine{16, sixteen<Real>}}) {
    SCOPED_TRACE("length " + std::to_string(routine.length) + Dct4<Real>::suffix);
    TfmgDCT4Plan* plan = nullptr;
    ASSERT_EQ(Dct4<Real>::initAlloc(&plan, routine.length), tfmStsOk);
    const auto n = static_cast<std::size_t>(routine.length);
    constexpr std::array<std::int32_t, 1> kNoFlag{0};
    expectForm<Real>(
        n, n, kNoFlag, [&](const std::vector<Real>& x, std::int32_t) { return routine.form(x); },
        [&](const std::vector<Real>& x, const Places<Real>& at, std::int32_t) {
          std::ranges::copy(x, at.source);
          return Dct4<Real>::run(at.source, at.result, plan);
        });
    Dct4<Real>::free(plan);
  }
}

TEST(ExactForms, ShortDct4) {
  compareLengths<float>();
  compareLengths<double>();
}

} // namespace
} // namespace tfmgen::test
