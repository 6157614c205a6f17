// The Walsh-Hadamard transform against its definition, on arrays between inaccessible pages.
#include "allocator.hpp"
#include "bits.hpp"
#include "families.hpp"
#include "guarded.hpp"
#include "processor_level.hpp"
#include "random.hpp"
#include "wht.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace tfmgen::test {
namespace {

template <class Real>
class WalshHadamard : public ::testing::Test {
protected:
  void SetUp() override { allocatorLog = {}; }
};

using SampleTypes = ::testing::Types<float, double>;
TYPED_TEST_SUITE(WalshHadamard, SampleTypes);

// A NaN stands for all of them: which one comes out where several meet is open.
template <class Real>
std::vector<Real> withOneNan(std::vector<Real> values) {
  for (Real& x : values) {
    x = std::isnan(x) ? std::numeric_limits<Real>::quiet_NaN() : x;
  }
  return values;
}

// Signed zeros everywhere, denormals, the largest numbers, infinities of one sign and of both, NaNs, among others.
template <class Real>
std::vector<std::vector<Real>> inputs(std::size_t n, Random& random) {
  using Limits = std::numeric_limits<Real>;
  std::vector<std::vector<Real>> all = {random.reals<Real>(n, Spread::wide)};
  const auto mixed = [&](const std::vector<Real>& palette) {
    std::vector<Real> x(n);
    for (Real& value : x) {
      value = palette[random.bits() % palette.size()];
    }
    all.push_back(x);
  };
  const Real tiny = Limits::denorm_min();
  mixed({Real(0), -Real(0)});
  all.emplace_back(n, -Real(0));
  mixed({tiny, -tiny, 3 * tiny, Limits::min(), -Limits::min(), -Real(0)});
  mixed({Limits::max(), -Limits::max(), Real(1), Limits::epsilon()});
  all.push_back(random.reals<Real>(n, Spread::uniform));
  all.back()[n / 2] = Limits::infinity();
  mixed({Limits::infinity(), -Limits::infinity(), Real(1)});
  all.push_back(random.reals<Real>(n, Spread::uniform));
  all.back()[n - 1] = Limits::quiet_NaN();
  return all;
}

template <class Real>
std::vector<Real> contents(const Real* from, std::size_t n) {
  std::vector<Real> values(n);
  std::memcpy(values.data(), from, n * sizeof(Real));
  return values;
}

// How one call reaches its arrays.
struct Setting {
  Edge edge;
  std::size_t src; // displacements in bytes
  std::size_t dst;
  bool inPlace;
  bool ownBuffer;
};

template <class Real>
std::vector<Setting> settings() {
  std::vector<Setting> all;
  for (const Edge edge : {Edge::start, Edge::end}) {
    for (const std::size_t src : {0U, 4U, 8U, 13U}) {
      for (const std::size_t dst : {0U, 4U, 8U}) {
        all.push_back({edge, src, dst, false, (src + dst) % 8 == 0});
      }
      all.push_back({edge, src, src, true, src != 8});
    }
  }
  return all;
}

template <class Real>
std::vector<Real> result(int order, std::int32_t flag, const std::vector<Real>& x, const Setting& how) {
  const std::size_t bytes = x.size() * sizeof(Real);
  GuardedMemory source(bytes + how.src);
  GuardedMemory separate(bytes + how.dst);
  const auto bufferBytes = static_cast<std::size_t>(whtBufferSize<Real>(order));
  GuardedMemory buffer(bufferBytes);
  auto* const src = source.array<Real>(bytes, how.edge, how.src);
  auto* const dst = how.inPlace ? src : separate.array<Real>(bytes, how.edge, how.dst);
  auto* const work = how.ownBuffer ? buffer.array<std::uint8_t>(bufferBytes, how.edge) : nullptr;
  std::memcpy(static_cast<void*>(src), x.data(), bytes);
  EXPECT_EQ(whtCall<Real>(order)(src, dst, flag, work), tfmStsOk);
  if (!how.inPlace) {
    EXPECT_TRUE(sameBits(x.data(), src, bytes, sizeof(Real))) << "the source has changed";
  }
  return contents(dst, x.size());
}

TYPED_TEST(WalshHadamard, EqualsTheDefinitionOnEverySide) {
  for (int order = 1; order <= kWhtOrders; ++order) {
    SCOPED_TRACE(whtName<TypeParam>(order));
    Random random(static_cast<std::uint64_t>(order));
    const std::size_t n = std::size_t{1} << order;
    const auto all = inputs<TypeParam>(n, random);
    for (const std::int32_t flag : kFlags) {
      for (std::size_t input = 0; input < all.size(); ++input) {
        const auto expected = withOneNan(whtByDefinition(all[input], flag));
        // Every setting for random numbers; for special values one of either body.
        for (const Setting& how :
             input == 0 ? settings<TypeParam>()
                        : std::vector<Setting>{{Edge::end, 0, 0, false, true}, {Edge::end, 4, 8, false, false}}) {
          const auto actual = withOneNan(result(order, flag, all[input], how));
          ASSERT_TRUE(sameBits(expected.data(), actual.data(), n * sizeof(TypeParam), sizeof(TypeParam)))
              << "flag " << flag << ", input " << input << ", displacements " << how.src << " and " << how.dst
              << (how.inPlace ? ", in place" : "") << (how.ownBuffer ? ", own buffer" : "");
        }
      }
    }
  }
}

TYPED_TEST(WalshHadamard, FollowsTheSignsOfTheMatrix) {
  const std::vector<TypeParam> example = {1, 2, 3, 4};
  EXPECT_EQ(result(2, TFM_NO_DIV, example, {Edge::end, 0, 0, false, true}), (std::vector<TypeParam>{10, -2, -4, 0}));
  for (const int order : {3, 6, 8, 11, 13}) {
    const std::size_t n = std::size_t{1} << order;
    const std::size_t v = n - n / 4 - 3;
    std::vector<TypeParam> impulse(n);
    impulse[v] = 1;
    const auto y = result(order, TFM_DIV_BY_SQRTN, impulse, {Edge::end, 0, 0, false, true});
    const auto scale = whtScale<TypeParam>(TFM_DIV_BY_SQRTN, n);
    for (std::size_t u = 0; u < n; ++u) {
      ASSERT_EQ(y[u], __builtin_parityll(u & v) == 0 ? scale : -scale) << order << " " << u;
    }
  }
}

TYPED_TEST(WalshHadamard, AllocatesTheExactSizeOrNothing) {
  for (int order = 1; order <= kWhtOrders; ++order) {
    SCOPED_TRACE(whtName<TypeParam>(order));
    const std::int32_t size = whtBufferSize<TypeParam>(order);
    const std::vector<std::int32_t> once(size == 0 ? 0 : 1, size);
    const std::vector<TypeParam> x(std::size_t{1} << order, TypeParam(1));
    for (const std::size_t displacement : {0U, 8U}) {
      allocatorLog = {};
      result(order, TFM_NO_DIV, x, {Edge::end, displacement, displacement, false, true});
      EXPECT_TRUE(allocatorLog.sizes.empty());
      result(order, TFM_NO_DIV, x, {Edge::end, displacement, displacement, false, false});
      EXPECT_EQ(allocatorLog.sizes, once);
      EXPECT_EQ(allocatorLog.freed.size(), once.size());
    }
  }
}

TYPED_TEST(WalshHadamard, ChecksComeFirstAndTouchNothing) {
  alignas(16) std::array<std::byte, 64> room{};
  auto* const good = reinterpret_cast<TypeParam*>(room.data());
  auto* const odd = reinterpret_cast<TypeParam*>(room.data() + 8);
  TypeParam* const none = nullptr;
  const auto general = Wht<TypeParam>::general;
  // The arrays are far too short for most orders: a call that went on would run into the stack.
  for (int order = 1; order <= kWhtOrders; ++order) {
    SCOPED_TRACE(whtName<TypeParam>(order));
    const auto call = whtCall<TypeParam>(order);
    for (const std::int32_t flag : {TFM_NO_DIV + 0, 99}) {
      EXPECT_EQ(call(none, none, flag, nullptr), tfmStsNullPtr);
      EXPECT_EQ(call(none, good, flag, nullptr), tfmStsNullPtr);
      EXPECT_EQ(call(good, none, flag, nullptr), tfmStsNullPtr);
      EXPECT_EQ(call(none, odd, flag, nullptr), tfmStsNullPtr);
      EXPECT_EQ(call(odd, none, flag, nullptr), tfmStsNullPtr);
      EXPECT_EQ(general(none, odd, order, flag, nullptr), tfmStsNullPtr);
    }
    for (const std::int32_t flag : {0, 3, 5, 6, 7, 9, 12, 16, -1, std::numeric_limits<std::int32_t>::min()}) {
      EXPECT_EQ(call(good, good, flag, nullptr), tfmStsBadFlag) << flag;
      EXPECT_EQ(call(odd, good, flag, nullptr), tfmStsBadFlag) << flag;
      EXPECT_EQ(general(good, odd, order, flag, nullptr), tfmStsBadFlag) << flag;
    }
  }
  for (const std::int32_t order : {0, 14, -1, 257, std::numeric_limits<std::int32_t>::min()}) {
    EXPECT_EQ(general(none, none, order, 99, nullptr), tfmStsBadSize) << order;
  }
  EXPECT_TRUE(allocatorLog.sizes.empty());
  EXPECT_EQ(room, (std::array<std::byte, 64>{}));
}

TYPED_TEST(WalshHadamard, GeneralEntryHandsOnAllArguments) {
  Random random(5);
  for (int order = 1; order <= kWhtOrders; ++order) {
    const auto x = random.reals<TypeParam>(std::size_t{1} << order, Spread::uniform);
    const auto expected = whtByDefinition(x, TFM_DIV_FWD_BY_N);
    std::vector<TypeParam> y(x.size());
    const auto size = static_cast<std::size_t>(whtBufferSize<TypeParam>(order));
    GuardedMemory buffer(size);
    auto* const work = buffer.array<std::uint8_t>(size, Edge::end);
    ASSERT_EQ(Wht<TypeParam>::general(x.data(), y.data(), order, TFM_DIV_FWD_BY_N, work), tfmStsOk);
    ASSERT_TRUE(sameBits(expected.data(), y.data(), y.size() * sizeof(TypeParam), sizeof(TypeParam))) << order;
  }
  EXPECT_TRUE(allocatorLog.sizes.empty());
}

TYPED_TEST(WalshHadamard, TellsTheBufferSize) {
  for (int order = 1; order <= kWhtOrders; ++order) {
    std::int32_t size = -1;
    EXPECT_EQ(Wht<TypeParam>::bufferSize(order, &size), tfmStsOk);
    EXPECT_EQ(size, whtBufferSize<TypeParam>(order)) << order;
  }
  std::int32_t size = 77;
  for (const std::int32_t order : {0, 14, -1, std::numeric_limits<std::int32_t>::max()}) {
    EXPECT_EQ(Wht<TypeParam>::bufferSize(order, &size), tfmStsBadSize);
    EXPECT_EQ(Wht<TypeParam>::bufferSize(order, nullptr), tfmStsBadSize);
  }
  EXPECT_EQ(size, 77);
}

// Longer vectors need no alignment.
TYPED_TEST(WalshHadamard, MisalignedBufferFaultsInTheDefaultLibrary) {
  if (!loadedLevel().empty()) {
    GTEST_SKIP() << "the library of a level";
  }
  const std::vector<TypeParam> x(256);
  std::vector<TypeParam> y(256);
  alignas(16) std::array<std::uint8_t, 4096> room{};
  EXPECT_DEATH(whtCall<TypeParam>(8)(x.data(), y.data(), TFM_NO_DIV, room.data() + 8), "");
}

} // namespace
} // namespace tfmgen::test
