// Real and Hartley transforms of short lengths.
//
// D is the precision of constants and of everything behind a constant product in the same assignment; T is the sample
// type, to which an assignment rounds.
#include "../real/entries.hpp"
#include "forms.hpp"
#include "scale.hpp"

#include <limits>

namespace tfmgen::test {
namespace {

using D = double;
constexpr D kHalfRoot2 = 0.7071067811865476;
constexpr D kHalfRoot3 = 0.8660254037844386;

// ---- Forward, results in Pack order

template <class T>
T negated(T scaled) {
  return T(0) - scaled;
}

template <class T>
std::vector<T> forward2(const std::vector<T>& x, T s) {
  return {(x[0] + x[1]) * s, (x[0] - x[1]) * s};
}

template <class T>
std::vector<T> forward3(const std::vector<T>& x, T s) {
  const T a = x[1] + x[2];
  const T b = x[1] - x[2];
  return {(x[0] + a) * s, static_cast<T>((D(x[0]) - D(a) * 0.5) * D(s)),
          static_cast<T>(D(0) - D(s) * (D(b) * kHalfRoot3))};
}

template <class T>
std::vector<T> forward4(const std::vector<T>& x, T s) {
  return {((x[0] + x[2]) + (x[1] + x[3])) * s, (x[0] - x[2]) * s, negated((x[1] - x[3]) * s),
          ((x[0] + x[2]) - (x[1] + x[3])) * s};
}

constexpr D c1 = 0.30901699437494745;
constexpr D c2 = 0.8090169943749475;
constexpr D s1 = 0.9510565162951535;
constexpr D s2 = 0.5877852522924731;

template <class T>
std::vector<T> forward5(const std::vector<T>& x, T s) {
  const T a1 = x[1] + x[4];
  const T a2 = x[3] + x[2];
  const T b1 = x[1] - x[4];
  const T b2 = x[3] - x[2];
  return {((a1 + a2) + x[0]) * s, static_cast<T>(((c1 * D(a1) - c2 * D(a2)) + D(x[0])) * D(s)),
          static_cast<T>((s2 * D(b2) - s1 * D(b1)) * D(s)),
          static_cast<T>(((D(x[0]) - c2 * D(a1)) + c1 * D(a2)) * D(s)),
          static_cast<T>(D(0) - D(s) * (s2 * D(b1) + s1 * D(b2)))};
}

template <class T>
std::vector<T> forward8(const std::vector<T>& x, T s) {
  const T A = x[0] + x[4];
  const T e = x[0] - x[4];
  const T B = x[1] + x[5];
  const T C = x[2] + x[6];
  const T f = x[2] - x[6];
  const T dd = x[3] + x[7];
  const T E = A + C;
  const T F = B + dd;
  const T p = static_cast<T>(D(x[1] - x[5]) * kHalfRoot2);
  const T q = static_cast<T>(D(x[3] - x[7]) * kHalfRoot2);
  const T u = p - q;
  const T v = p + q;
  return {(E + F) * s,           (e + u) * s, negated((f + v) * s), (A - C) * s,
          negated((B - dd) * s), (e - u) * s, negated((v - f) * s), (E - F) * s};
}

template <class T>
std::vector<T> forward16(const std::vector<T>& x, T s) {
  constexpr D a = 0.9238795325112867;
  constexpr D b = 0.3826834323650898;
  std::vector<T> sums;
  std::vector<T> d;
  for (std::size_t n = 0; n < 8; ++n) {
    sums.push_back(x[n] + x[n + 8]);
    d.push_back(x[n] - x[n + 8]);
  }
  const std::vector<T> even = forward8(sums, s);
  const T P = static_cast<T>(a * D(d[1]) - b * D(d[5]));
  const T Q = static_cast<T>(b * D(d[3]) - a * D(d[7]));
  const T A = static_cast<T>(b * D(d[1]) + a * D(d[5]));
  const T B = static_cast<T>(a * D(d[3]) + b * D(d[7]));
  const T p = static_cast<T>(kHalfRoot2 * D(d[2]));
  const T q = static_cast<T>(kHalfRoot2 * D(d[6]));
  const T minus = d[0] - (p - q);
  const T plus = d[0] + (p - q);
  const T below = (p + q) - d[4];
  const T above = d[4] + (p + q);
  return {even[0],
          (plus + (P + Q)) * s,
          negated((above + (A + B)) * s), // bin 1
          even[1],
          even[2], //
          (minus - (B - A)) * s,
          negated((below + (P - Q)) * s), // bin 3
          even[3],
          even[4], //
          (minus + (B - A)) * s,
          (below - (P - Q)) * s, // bin 5
          even[5],
          even[6], //
          (plus - (P + Q)) * s,
          negated(((A + B) - above) * s), // bin 7
          even[7]};
}

// ---- Inverse, of spectra in Pack order

template <class T>
std::vector<T> inverse3(const std::vector<T>& X, T s) {
  const T c = 2 * X[1];
  const T a = static_cast<T>(D(X[0]) - 0.5 * D(c));
  const T b = static_cast<T>(1.7320508075688772 * D(X[2]));
  return {(X[0] + c) * s, (a - b) * s, (a + b) * s};
}

template <class T>
std::vector<T> inverse4(const std::vector<T>& X, T s) {
  const T sum = X[0] + X[3];
  const T difference = X[0] - X[3];
  return {(sum + 2 * X[1]) * s, (difference - 2 * X[2]) * s, (sum - 2 * X[1]) * s, (difference + 2 * X[2]) * s};
}

template <class T>
std::vector<T> inverse8(const std::vector<T>& X, T s) {
  const T a = X[0] + X[7];
  const T b = X[0] - X[7];
  const T e = 2 * X[1];
  const T g = 2 * X[2];
  const T c = 2 * X[3];
  const T d = 2 * X[4];
  const T f = 2 * X[5];
  const T h = 2 * X[6];
  const T P = static_cast<T>(kHalfRoot2 * D(e - f));
  const T Q = static_cast<T>(kHalfRoot2 * D(g + h));
  const T u = P - Q;
  const T v = P + Q;
  return {((a + c) + (e + f)) * s, ((b - d) + u) * s, ((a - c) - (g - h)) * s, ((b + d) - v) * s,
          ((a + c) - (e + f)) * s, ((b - d) - u) * s, ((a - c) + (g - h)) * s, ((b + d) + v) * s};
}

// ---- Hartley

template <class T>
std::vector<T> hartley3(const std::vector<T>& x, T s) {
  const T a = static_cast<T>(D(x[0]) - D(x[1] + x[2]) * 0.5);
  const T b = static_cast<T>(D(x[1] - x[2]) * kHalfRoot3);
  return {(x[0] + (x[1] + x[2])) * s, (a + b) * s, (a - b) * s};
}

template <class T>
std::vector<T> hartley4(const std::vector<T>& x, T s) {
  return {((x[1] + x[3]) + (x[0] + x[2])) * s, ((x[1] - x[3]) + (x[0] - x[2])) * s, ((x[0] + x[2]) - (x[1] + x[3])) * s,
          ((x[0] - x[2]) - (x[1] - x[3])) * s};
}

template <class T>
std::vector<T> hartley5(const std::vector<T>& x, T s) {
  const T a1 = x[1] + x[4];
  const T a2 = x[3] + x[2];
  const T b1 = x[1] - x[4];
  const T b2 = x[3] - x[2];
  const T A1 = static_cast<T>(c1 * D(a1) - c2 * D(a2) + D(x[0]));
  const T B1 = static_cast<T>(s1 * D(b1) - s2 * D(b2));
  const T A2 = static_cast<T>(D(x[0]) - c2 * D(a1) + c1 * D(a2));
  const T B2 = static_cast<T>(s2 * D(b1) + s1 * D(b2));
  return {((a1 + a2) + x[0]) * s, (A1 + B1) * s, (A2 + B2) * s, (A2 - B2) * s, (A1 - B1) * s};
}

template <class T>
std::vector<T> hartley8(const std::vector<T>& x, T s) {
  const T e = x[0] - x[4];
  const T f = x[2] - x[6];
  const T p = static_cast<T>(kHalfRoot2 * D(x[1] - x[5]));
  const T q = static_cast<T>(kHalfRoot2 * D(x[3] - x[7]));
  const T u = p - q;
  const T v = p + q;
  const T G = (x[0] + x[4]) + (x[2] + x[6]);
  const T K = (x[0] + x[4]) - (x[2] + x[6]);
  const T L = (x[1] + x[5]) + (x[3] + x[7]);
  const T M = (x[1] + x[5]) - (x[3] + x[7]);
  const T A = e + u;
  const T B = f + v;
  const T C = e - u;
  const T dd = f - v;
  return {(G + L) * s, (A + B) * s, (K + M) * s, (C - dd) * s, (G - L) * s, (C + dd) * s, (K - M) * s, (A - B) * s};
}

// ---- Checks

template <class T>
struct Sequence {
  Kind kind;
  int n;
  std::vector<T> (*statement)(const std::vector<T>&, T);
};

// A statement about one kind of transform in Pack order, for all formats of the kind.
template <class T>
void compare(const Sequence<T>& sequence, Format format) {
  const Entry kernel = entry<T>(sequence.kind, format, sequence.n);
  SCOPED_TRACE(kernel.name());
  expectForm<T>(
      static_cast<std::size_t>(sequence.n), kernel.destinationReals(), kFlags,
      [&](const std::vector<T>& x, std::int32_t flag) {
        const std::vector<T> y = sequence.statement(x, expectedScale<T>(kernel.family, sequence.n, flag));
        return sequence.kind == Kind::realForward ? repacked(y, sequence.n, Format::pack, format, T(0)) : y;
      },
      [&](const std::vector<T>& x, const Places<T>& at, std::int32_t flag) {
        const auto source = sequence.kind == Kind::realInverse
                                ? repacked(x, sequence.n, Format::pack, format, std::numeric_limits<T>::quiet_NaN())
                                : x;
        std::ranges::copy(source, at.source);
        return kernel(at.source, at.result, flag);
      });
}

template <class T>
void compareAll() {
  const std::vector<Sequence<T>> sequences{
      {Kind::realForward, 2, forward2<T>}, {Kind::realForward, 3, forward3<T>}, {Kind::realForward, 4, forward4<T>},
      {Kind::realForward, 5, forward5<T>}, {Kind::realForward, 8, forward8<T>}, {Kind::realForward, 16, forward16<T>},
      {Kind::realInverse, 2, forward2<T>}, {Kind::realInverse, 3, inverse3<T>}, {Kind::realInverse, 4, inverse4<T>},
      {Kind::realInverse, 8, inverse8<T>}, {Kind::hartley, 2, forward2<T>},     {Kind::hartley, 3, hartley3<T>},
      {Kind::hartley, 4, hartley4<T>},     {Kind::hartley, 5, hartley5<T>},     {Kind::hartley, 8, hartley8<T>},
  };
  for (const Sequence<T>& sequence : sequences) {
    if (sequence.kind == Kind::hartley) {
      compare(sequence, Format::plain);
      continue;
    }
    for (const Format format : kFormats) {
      compare(sequence, format);
    }
  }
}

TEST(ExactForms, RealAndHartleyOf32Bits) {
  compareAll<float>();
}

TEST(ExactForms, RealAndHartleyOf64Bits) {
  compareAll<double>();
}

} // namespace
} // namespace tfmgen::test
