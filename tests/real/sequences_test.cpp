// Short kernels against their sequences of operations written out by hand, bit for bit, and worked values.
//
// D is the precision of constants and of everything behind a constant product in the same assignment; T is the sample
// type, to which an assignment rounds.
#include "bits.hpp"
#include "entries.hpp"
#include "random.hpp"
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
  Format format;
  int n;
  std::vector<T> (*statement)(const std::vector<T>&, T);
};

template <class T>
void compare() {
  const std::vector<Sequence<T>> sequences{
      {Kind::realForward, Format::pack, 2, forward2<T>}, {Kind::realForward, Format::pack, 3, forward3<T>},
      {Kind::realForward, Format::pack, 4, forward4<T>}, {Kind::realForward, Format::pack, 5, forward5<T>},
      {Kind::realForward, Format::pack, 8, forward8<T>}, {Kind::realForward, Format::pack, 16, forward16<T>},
      {Kind::realInverse, Format::pack, 2, forward2<T>}, {Kind::realInverse, Format::pack, 3, inverse3<T>},
      {Kind::realInverse, Format::pack, 4, inverse4<T>}, {Kind::realInverse, Format::pack, 8, inverse8<T>},
      {Kind::hartley, Format::plain, 2, forward2<T>},    {Kind::hartley, Format::plain, 3, hartley3<T>},
      {Kind::hartley, Format::plain, 4, hartley4<T>},    {Kind::hartley, Format::plain, 5, hartley5<T>},
      {Kind::hartley, Format::plain, 8, hartley8<T>},
  };
  for (const Sequence<T>& sequence : sequences) {
    const Entry kernel = entry<T>(sequence.kind, sequence.format, sequence.n);
    SCOPED_TRACE(kernel.name());
    Random random(static_cast<std::uint64_t>(sequence.n));
    for (int trial = 0; trial < 200; ++trial) {
      const auto x = random.reals<T>(sequence.n, trial % 2 == 0 ? Spread::uniform : Spread::wide);
      for (const std::int32_t flag : kFlags) {
        const std::vector<T> expected = sequence.statement(x, expectedScale<T>(kernel.family, sequence.n, flag));
        const std::vector<T> actual = run(kernel, x, flag);
        ASSERT_TRUE(sameBits(expected.data(), actual.data(), sizeof(T) * expected.size(), sizeof(T)))
            << "flag " << flag;
      }
    }
  }
}

TEST(RealSequences, SinglePrecisionKernelsRoundAtTheEndOfAnAssignment) {
  compare<float>();
}

TEST(RealSequences, DoublePrecisionKernelsHaveTheSameOperations) {
  compare<double>();
}

std::vector<double> ramp(int n) {
  std::vector<double> x;
  for (int i = 1; i <= n; ++i) {
    x.push_back(i);
  }
  return x;
}

TEST(RealSequences, ProductInDoubleIsSeenInTheLastBits) {
  std::vector<float> x(8);
  x[1] = 9;
  EXPECT_EQ(static_cast<double>(run(entry<float>(Kind::realForward, Format::pack, 8), x, TFM_NO_DIV)[1]),
            6.363961219787598);
}

TEST(RealSequences, SpectraOfRamps) {
  const auto spectrum = [](Format format, int n) {
    return run(entry<double>(Kind::realForward, format, n), ramp(n), TFM_NO_DIV);
  };
  using Values = std::vector<double>;
  EXPECT_EQ(spectrum(Format::ccs, 4), (Values{10, 0, -2, 2, -2, 0}));
  EXPECT_EQ(spectrum(Format::pack, 4), (Values{10, -2, 2, -2}));
  EXPECT_EQ(spectrum(Format::perm, 4), (Values{10, -2, -2, 2}));
  const Values eight = spectrum(Format::perm, 8);
  const Values rounded{36, -4, -4, 9.6568542, -4, 4, -4, 1.6568542};
  for (std::size_t i = 0; i < eight.size(); ++i) {
    EXPECT_NEAR(eight[i], rounded[i], 5e-8);
  }
  const auto hartley = [](int n) { return run(entry<double>(Kind::hartley, Format::plain, n), ramp(n), TFM_NO_DIV); };
  EXPECT_EQ(hartley(4), (Values{10, -4, -2, 0}));
  EXPECT_EQ(hartley(8),
            (Values{36, -13.65685424949238, -8, -5.656854249492381, -4, -2.3431457505076194, 0, 5.65685424949238}));
}

TEST(RealSequences, InverseDoesNotReadTheZerosOfCcs) {
  constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(
      run<double>(entry<double>(Kind::realInverse, Format::ccs, 4), {10, kNaN, -2, 2, -2, kNaN}, TFM_DIV_INV_BY_N),
      ramp(4));
}

} // namespace
} // namespace tfmgen::test
