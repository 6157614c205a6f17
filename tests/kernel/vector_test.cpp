// The moves of vectors of every width that this processor has, lane by lane.
#include "moves.hpp"

#include "random.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace {

using tfmgen::test::Moves;
using tfmgen::test::Registers;

template <class RealType, int vectorBytes>
struct Form {
  using Real = RealType;
  static constexpr int bytes = vectorBytes;
};

template <int bytes>
bool isHere() {
  return bytes == 16 || (bytes == 32 ? __builtin_cpu_supports("avx2") : __builtin_cpu_supports("avx512f"));
}

template <class Form>
class VectorMoves : public testing::Test {
protected:
  using Real = typename Form::Real;
  static constexpr int lanes = Form::bytes / static_cast<int>(sizeof(Real));
  static constexpr int block = 16 / static_cast<int>(sizeof(Real));

  void SetUp() override {
    if (!isHere<Form::bytes>()) {
      GTEST_SKIP() << "this processor has no vectors of " << Form::bytes << " bytes";
    }
    tfmgen::test::Random random(1);
    const auto fill = [&](auto& array) {
      std::generate(std::begin(array), std::end(array), [&] { return random.real<Real>(tfmgen::test::Spread::wide); });
    };
    fill(m_.a);
    fill(m_.b);
    fill(m_.memory);
    fill(m_.matrix);
    Registers<Form::bytes>::move(m_);
  }

  // Lane i of `found` is expected(i), for all lanes.
  template <class Expected>
  static void expectLanes(const Real* found, const Expected& expected, const char* name, int count = lanes) {
    for (int i = 0; i < count; ++i) {
      EXPECT_EQ(found[i], expected(i)) << name << ", lane " << i;
    }
  }

  Moves<Real> m_{};
};

using Forms = testing::Types<Form<float, 16>, Form<double, 16>, Form<float, 32>, Form<double, 32>, Form<float, 64>,
                             Form<double, 64>>;
TYPED_TEST_SUITE(VectorMoves, Forms);

TYPED_TEST(VectorMoves, LanesGoWhereTheirNamesSay) {
  using Real = typename TypeParam::Real;
  constexpr int lanes = TestFixture::lanes;
  constexpr int block = TestFixture::block;
  const auto& m = this->m_;
  // Number i of the lanes of a and, behind them, of b.
  const auto either = [&](int i) { return i < lanes ? m.a[i] : m.b[i - lanes]; };
  TestFixture::expectLanes(
      m.broadcast, [&](int) { return m.a[1]; }, "broadcast");
  TestFixture::expectLanes(
      m.sum, [&](int i) { return Real(m.a[i] + m.b[i]); }, "sum");
  TestFixture::expectLanes(
      m.flipped, [&](int i) { return m.b[i] < 0 ? -m.a[i] : m.a[i]; }, "flipSigns");
  TestFixture::expectLanes(
      m.reversed, [&](int i) { return m.a[lanes - 1 - i]; }, "permute");
  TestFixture::expectLanes(
      m.everyOther, [&](int i) { return either(2 * i); }, "shuffle");
  const auto unpacked = [&](int first) {
    return [&, first](int i) { return (i % 2 == 0 ? m.a : m.b)[i / block * block + first + i % block / 2]; };
  };
  TestFixture::expectLanes(m.unpackedLow, unpacked(0), "unpackLow");
  TestFixture::expectLanes(m.unpackedHigh, unpacked(block / 2), "unpackHigh");
  TestFixture::expectLanes(
      m.rejoined, [&](int i) { return either(lanes / 2 + i); }, "halves");
  if constexpr (sizeof(Real) == sizeof(double)) {
    TestFixture::expectLanes(
        m.rounded, [&](int i) { return Real(float(m.a[i])); }, "convert");
  }
  for (int row = 0; row < lanes; ++row) {
    TestFixture::expectLanes(
        m.transposed + row * lanes, [&](int i) { return m.matrix[i * lanes + row]; }, "transpose");
  }
}

TYPED_TEST(VectorMoves, MemoryIsReachedWhereItIsMeant) {
  constexpr int lanes = TestFixture::lanes;
  const auto& m = this->m_;
  TestFixture::expectLanes(
      m.stored, [&](int i) { return i == 0 || i > lanes ? 0 : m.memory[i]; }, "any address", lanes + 2);
  if constexpr (TypeParam::bytes > 16) {
    for (int count = 0; count <= lanes; ++count) {
      TestFixture::expectLanes(
          m.first[count], [&](int i) { return i < count ? m.memory[i] : 0; }, "loadFirst");
      TestFixture::expectLanes(
          m.kept[count], [&](int i) { return i < count ? m.a[i] : m.b[i]; }, "storeFirst");
    }
  } else {
    constexpr int half = lanes / 2;
    TestFixture::expectLanes(
        m.gathered, [&](int i) { return m.memory[2 * i]; }, "gather");
    const auto scattered = [&](int i) { return i % 2 == 0 ? m.a[lanes - 1 - i / 2] : i < lanes ? m.b[i] : 0; };
    TestFixture::expectLanes(m.scattered, scattered, "scatter", 2 * lanes);
    TestFixture::expectLanes(
        m.halves, [&](int i) { return i < half ? m.b[i] : m.a[i - half]; }, "loadHalves");
    TestFixture::expectLanes(
        m.low, [&](int i) { return i < half ? m.a[i] : 0; }, "loadLow");
    TestFixture::expectLanes(
        m.apart, [&](int i) { return m.a[(i + half) % lanes]; }, "storeHalves");
  }
}

} // namespace
