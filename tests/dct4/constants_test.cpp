// The constants of the kernels are the nearest numbers of the sample type, and the short kernels take the stated
// operations.
#include "dct4/codelet_kernels.hpp"
#include "quad.hpp"
#include "support.hpp"

#include <gtest/gtest.h>

#include <utility>

namespace tfmgen::test {
namespace {

// The nearest T of a quadruple number that is not within 1e-6 units of the middle between two of them.
template <class T>
void expectNearest(long double constant, Quad exact, int p, int q) {
  EXPECT_EQ(static_cast<T>(constant), static_cast<T>(exact)) << p << " / " << q;
}

TEST(Dct4Constants, AreNearest) {
  for (const int q : {2, 4, 8, 16, 32, 64, 128}) {
    for (int p = 1; p < 2 * q; p += 2) {
      const auto [c, s] = root(p, 2 * q);
      expectNearest<float>(tfmgen::dct4::cosPi(p, q), c, p, q);
      expectNearest<double>(tfmgen::dct4::cosPi(p, q), c, p, q);
      expectNearest<float>(tfmgen::dct4::sinPi(p, q), s, p, q);
      expectNearest<double>(tfmgen::dct4::sinPi(p, q), s, p, q);
    }
  }
  for (const int p : {5, 7}) {
    const auto [c, s] = root(p, 64);
    expectNearest<float>(tfmgen::dct4::tanPi(p, 32), s / c, p, 32);
    expectNearest<double>(tfmgen::dct4::tanPi(p, 32), s / c, p, 32);
  }
}

// A number that counts what is done with numbers like it.
struct Counted {
  static inline int multiplications = 0;
  static inline int additions = 0;

  double value = 0;

  constexpr Counted() = default;
  constexpr explicit Counted(long double x) : value(static_cast<double>(x)) {}

  friend Counted operator+(Counted a, Counted b) { return ++additions, Counted(a.value + b.value); }
  friend Counted operator-(Counted a, Counted b) { return ++additions, Counted(a.value - b.value); }
  friend Counted operator*(Counted a, Counted b) { return ++multiplications, Counted(a.value * b.value); }
};

// Runs `kernel(in, out)` once on Counted samples: multiplications, additions.
template <class Kernel>
std::pair<int, int> count(const Kernel& kernel) {
  Counted::multiplications = 0;
  Counted::additions = 0;
  kernel([](auto /*index*/) { return Counted(1.0L); }, [](auto /*index*/, const auto& /*value*/) {});
  return {Counted::multiplications, Counted::additions};
}

template <int N>
std::pair<int, int> countCodelet() {
  return count([](const auto& in, const auto& out) { tfmgen::dct4::codeletKernel<N, Counted>(in, out); });
}

TEST(Dct4Operations, OfTheCodelets) {
  EXPECT_EQ(countCodelet<2>(), std::pair(4, 2));
  EXPECT_EQ(countCodelet<4>(), std::pair(8, 12));
  EXPECT_EQ(countCodelet<8>(), std::pair(24, 32));
  EXPECT_EQ(countCodelet<16>(), std::pair(64, 88));
  EXPECT_EQ(countCodelet<32>(), std::pair(144, 216));
}

template <int n>
void expectTransposeCostsTheSame() {
  const auto forward = count([](const auto& in, const auto& out) { tfmgen::dct4::oddTransform<n, Counted>(in, out); });
  const auto transposed = count([](const auto& in, const auto& out) {
    const auto row = [&](auto i) { return tfmgen::dct4::Complex<Counted>{in(i), in(i)}; };
    tfmgen::dct4::oddTransposed<n, Counted>(row, out);
  });
  EXPECT_EQ(forward, transposed) << n;
}

// A flow graph run backward has the same products, and as many sums when it has as many inputs as outputs.
TEST(Dct4Operations, OfTheTransposes) {
  expectTransposeCostsTheSame<4>();
  expectTransposeCostsTheSame<8>();
  expectTransposeCostsTheSame<16>();
  expectTransposeCostsTheSame<32>();
  expectTransposeCostsTheSame<64>();
}

} // namespace
} // namespace tfmgen::test
