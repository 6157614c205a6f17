// Every form of every function gives the bits and the statuses of the C function of its family and length.
#include "bits.hpp"
#include "families.hpp"
#include "random.hpp"

#include <tfmgen.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <complex>
#include <memory>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using tfmgen::Error;
using tfmgen::Scale;
using tfmgen::Status;
using tfmgen::test::Entry;
using tfmgen::test::Family;
using tfmgen::test::Spread;
using Packing = tfmgen::Format;

constexpr std::array kScales{Scale::forwardByN, Scale::inverseByN, Scale::bySqrtN, Scale::none};

template <class T>
inline const std::string kSuffix = sizeof(T) == sizeof(float) ? "32f" : "64f";

const Family& familyOf(const std::string& name) {
  for (const Family& family : tfmgen::test::families()) {
    if (family.name == name) {
      return family;
    }
  }
  throw std::out_of_range(name);
}

template <class T, std::size_t N>
std::array<T, N> randomArray() {
  tfmgen::test::Random random(N);
  std::array<T, N> result;
  for (T& value : result) {
    if constexpr (tfmgen::Real<T>) {
      value = random.real<T>(Spread::uniform);
    } else {
      using Part = typename T::value_type;
      value = {random.real<Part>(Spread::uniform), random.real<Part>(Spread::uniform)};
    }
  }
  return result;
}

// The named, the deduced and the run-time length of a call `f.operator()<N>(in, out, scale)`, `<std::dynamic_extent>`.
template <class In, std::size_t n, class Out, std::size_t m, std::size_t Length, class Function>
void expectBitsOf(const std::string& familyName, const Function& f) {
  const Family& family = familyOf(familyName);
  const Entry entry{family, static_cast<int>(Length)};
  SCOPED_TRACE(entry.name());
  const std::array<In, n> in = randomArray<In, n>();
  for (const Scale scale : kScales) {
    std::array<Out, m> expected{};
    ASSERT_EQ(entry(in.data(), expected.data(), static_cast<std::int32_t>(scale)), tfmStsOk);
    const auto isExpected = [&](const auto& out) {
      return tfmgen::test::sameBits(expected.data(), out.data(), sizeof(expected), family.realBytes);
    };
    std::array<Out, m> named{};
    f.template operator()<Length>(in, named, scale);
    EXPECT_TRUE(isExpected(named));
    std::array<Out, m> deduced{};
    f.template operator()<std::dynamic_extent>(in, deduced, scale);
    EXPECT_TRUE(isExpected(deduced));
    std::vector<Out> ofRunTime(m);
    f.template operator()<std::dynamic_extent>(std::span<const In>(in), ofRunTime, scale);
    EXPECT_TRUE(isExpected(ofRunTime));
  }
}

// Runs f.operator()<N>() for lengths at the ends of the tables of entries and within.
template <class Function>
void forEachLength(const Function& f) {
  [&]<std::size_t... n>(std::index_sequence<n...>) {
    (f.template operator()<n>(), ...);
  }
  (std::index_sequence<2, 53, 64>());
}

template <class T>
class Interface : public testing::Test {};
using Types = testing::Types<float, double>;
TYPED_TEST_SUITE(Interface, Types);

TYPED_TEST(Interface, ComplexTransforms) {
  using T = TypeParam;
  using C = std::complex<T>;
  forEachLength([]<std::size_t N>() {
    expectBitsOf<C, N, C, N, N>("tfmgDFTFwd_CToC_" + kSuffix<T> + "c",
                                []<std::size_t L>(const auto& in, auto& out, Scale s) { tfmgen::dft<L>(in, out, s); });
    expectBitsOf<C, N, C, N, N>(
        "tfmgDFTInv_CToC_" + kSuffix<T> + "c",
        []<std::size_t L>(const auto& in, auto& out, Scale s) { tfmgen::inverseDft<L>(in, out, s); });
  });
}

template <class T, Packing packing, class Bin = T>
void expectRealTransforms(const std::string& name) {
  forEachLength([&]<std::size_t N>() {
    constexpr std::size_t reals = std::is_same_v<Bin, T> ? 1 : 2;
    constexpr std::size_t m = tfmgen::spectrumLength(packing, N) / reals;
    expectBitsOf<T, N, Bin, m, N>(
        "tfmgDFTFwd_RTo" + name + "_" + kSuffix<T>,
        []<std::size_t L>(const auto& in, auto& out, Scale s) { tfmgen::realDft<packing, L>(in, out, s); });
    expectBitsOf<Bin, m, T, N, N>(
        "tfmgDFTInv_" + name + "ToR_" + kSuffix<T>,
        []<std::size_t L>(const auto& in, auto& out, Scale s) { tfmgen::inverseRealDft<packing, L>(in, out, s); });
  });
}

TYPED_TEST(Interface, RealTransforms) {
  expectRealTransforms<TypeParam, Packing::ccs>("CCS");
  expectRealTransforms<TypeParam, Packing::ccs, std::complex<TypeParam>>("CCS");
  expectRealTransforms<TypeParam, Packing::pack>("Pack");
  expectRealTransforms<TypeParam, Packing::perm>("Perm");
}

TYPED_TEST(Interface, HartleyTransforms) {
  using T = TypeParam;
  forEachLength([]<std::size_t N>() {
    expectBitsOf<T, N, T, N, N>("tfmgHartley_" + kSuffix<T>, []<std::size_t L>(const auto& in, auto& out, Scale s) {
      tfmgen::hartley<L>(in, out, s);
    });
  });
}

template <class T>
TfmStatus wht(const T* in, T* out, std::int32_t order, Scale scale) {
  const auto flag = static_cast<std::int32_t>(scale);
  if constexpr (std::same_as<T, float>) {
    return tfmgWHT_32f(in, out, order, flag, nullptr);
  } else {
    return tfmgWHT_64f(in, out, order, flag, nullptr);
  }
}

TYPED_TEST(Interface, WalshHadamardTransforms) {
  using T = TypeParam;
  tfmgen::WalshHadamardBuffer buffer;
  const auto expectOrder = [&]<std::size_t order>() {
    SCOPED_TRACE(order);
    constexpr std::size_t n = std::size_t{1} << order;
    static constexpr auto bytes = n * sizeof(T);
    const auto in = std::make_unique<std::array<T, n>>(randomArray<T, n>());
    const auto out = std::make_unique<std::array<T, n>>();
    std::vector<T> expected(n);
    for (const Scale scale : kScales) {
      const auto isExpected = [&](const auto& result) {
        return tfmgen::test::sameBits(expected.data(), result.data(), bytes, sizeof(T));
      };
      ASSERT_EQ(wht(in->data(), expected.data(), order, scale), tfmStsOk);
      tfmgen::walshHadamard(*in, *out, buffer, scale);
      EXPECT_TRUE(isExpected(*out));
      std::vector<T> ofRunTime(n);
      tfmgen::walshHadamard(std::span<const T>(*in), ofRunTime, buffer, scale);
      EXPECT_TRUE(isExpected(ofRunTime));
      if constexpr (n <= 128) {
        out->fill(0);
        tfmgen::walshHadamard<n>(*in, *out, scale);
        EXPECT_TRUE(isExpected(*out));
      }
    }
  };
  [&]<std::size_t... i>(std::index_sequence<i...>) {
    (expectOrder.template operator()<i + 1>(), ...);
  }
  (std::make_index_sequence<13>());
}

TEST(WalshHadamardBuffer, HoldsWhatEveryLengthTakes) {
  for (std::int32_t order = 1; order <= 13; ++order) {
    std::int32_t size32 = 0;
    std::int32_t size64 = 0;
    ASSERT_EQ(tfmgWHTGetBufferSize_32f(order, &size32), tfmStsOk);
    ASSERT_EQ(tfmgWHTGetBufferSize_64f(order, &size64), tfmStsOk);
    EXPECT_LE(static_cast<std::size_t>(std::max(size32, size64)), tfmgen::WalshHadamardBuffer::size) << order;
  }
}

// The status that a call throws, Status::ok when it does not.
template <class Function>
Status thrownBy(const Function& f) {
  try {
    f();
  } catch (const Error& error) {
    EXPECT_STRNE(error.what(), "");
    return error.status();
  }
  return Status::ok;
}

TEST(Errors, ArraysThatDoNotFit) {
  std::vector<std::complex<float>> c(65);
  std::vector<float> r(65);
  tfmgen::WalshHadamardBuffer buffer;
  const std::span complex(c);
  const std::span real(r);
  for (const auto& lengths : {std::pair(53U, 52U), std::pair(0U, 0U), std::pair(1U, 1U), std::pair(65U, 65U)}) {
    const std::size_t n = lengths.first;
    const std::size_t m = lengths.second;
    SCOPED_TRACE(n);
    const auto in = complex.first(n);
    const auto out = complex.first(m);
    EXPECT_EQ(tfmgen::tryDft(in, out), Status::badSize);
    EXPECT_EQ(thrownBy([&] { tfmgen::dft(in, out); }), Status::badSize);
    EXPECT_EQ(thrownBy([&] { tfmgen::inverseDft(in, out); }), Status::badSize);
    EXPECT_EQ(thrownBy([&] { tfmgen::hartley(real.first(n), real.first(m)); }), Status::badSize);
    EXPECT_EQ(thrownBy([&] { tfmgen::realDft<Packing::pack>(real.first(n), real.first(m)); }), Status::badSize);
    EXPECT_EQ(thrownBy([&] { tfmgen::inverseRealDft<Packing::perm>(real.first(n), real.first(m)); }), Status::badSize);
    EXPECT_EQ(thrownBy([&] { tfmgen::walshHadamard(real.first(n), real.first(m), buffer); }), Status::badSize);
  }
  // CCS takes more than the signal, in reals or in bins.
  EXPECT_EQ(tfmgen::tryRealDft<Packing::ccs>(real.first(16), real.first(16)), Status::badSize);
  EXPECT_EQ(tfmgen::tryRealDft<Packing::ccs>(real.first(16), complex.first(8)), Status::badSize);
  EXPECT_EQ(tfmgen::tryRealDft<Packing::ccs>(real.first(16), complex.first(9)), Status::ok);
  EXPECT_EQ(tfmgen::tryWalshHadamard(real.first(48), real.first(48), buffer), Status::badSize);
}

TEST(Errors, LengthsBeyondThirtyTwoBits) {
  // Never read: the length is refused. Its low 32 bits are 16.
  std::array<float, 16> few{};
  const std::span<const float> many(few.data(), (std::size_t{1} << 32U) + 16);
  EXPECT_EQ(tfmgen::tryHartley(many, std::span(few.data(), many.size())), Status::badSize);
}

TEST(Errors, StatusesOfTheLibrary) {
  std::array<std::complex<double>, 5> x{};
  EXPECT_EQ(tfmgen::tryDft(x, x, Scale{3}), Status::badFlag);
  EXPECT_EQ(thrownBy([&] { tfmgen::dft(x, x, Scale{0}); }), Status::badFlag);
  const std::span<const float, 4> none(static_cast<const float*>(nullptr), 4);
  std::array<float, 4> out{};
  EXPECT_EQ(tfmgen::tryHartley<4>(none, out), Status::nullPointer);
}

template <class T>
void dct4(std::size_t n, const T* in, T* out);

template <>
void dct4(std::size_t n, const float* in, float* out) {
  TfmgDCT4Plan* plan = nullptr;
  ASSERT_EQ(tfmgDCT4InitAlloc_32f(&plan, static_cast<std::int32_t>(n)), tfmStsOk);
  EXPECT_EQ(tfmgDCT4_32f(in, out, plan), tfmStsOk);
  tfmgDCT4Free_32f(plan);
}

template <>
void dct4(std::size_t n, const double* in, double* out) {
  TfmgDCT4Plan* plan = nullptr;
  ASSERT_EQ(tfmgDCT4InitAlloc_64f(&plan, static_cast<std::int32_t>(n)), tfmStsOk);
  EXPECT_EQ(tfmgDCT4_64f(in, out, plan), tfmStsOk);
  tfmgDCT4Free_64f(plan);
}

TYPED_TEST(Interface, CosineTransforms) {
  using T = TypeParam;
  const auto samples = randomArray<T, 1024>();
  for (const std::size_t n : {2U, 32U, 64U, 1024U}) {
    SCOPED_TRACE(n);
    const auto x = std::span(samples).first(n);
    std::vector<T> expected(n);
    dct4<T>(n, x.data(), expected.data());
    tfmgen::Dct4<T> transform(n);
    tfmgen::Dct4<T> moved = std::move(transform);
    EXPECT_EQ(moved.length(), n);
    std::vector<T> y(n);
    moved(x, y);
    EXPECT_TRUE(tfmgen::test::sameBits(expected.data(), y.data(), n * sizeof(T), sizeof(T)));
    EXPECT_EQ(moved.tryTransform(x, std::span(y).first(n / 2)), Status::badSize);
  }
}

TEST(Dct4, RefusesLengths) {
  // 33 and 2^30 are among those that the C interface lets pass.
  for (const std::size_t n : {0UL, 1UL, 3UL, 33UL, 96UL, 1UL << 27U, 1UL << 30U, (1UL << 32U) + 64}) {
    EXPECT_EQ(thrownBy([&] { tfmgen::Dct4<float>{n}; }), Status::badSize) << n;
    tfmgen::Dct4<double> plan;
    EXPECT_EQ(plan.tryPlan(n), Status::badSize) << n;
  }
}

TEST(Dct4, WithoutAPlan) {
  std::vector<float> x(64);
  tfmgen::Dct4<float> plan;
  EXPECT_EQ(plan.length(), 0U);
  EXPECT_EQ(plan.tryTransform(x, x), Status::badSize);
  EXPECT_NE(plan.tryTransform(std::span(x).first(0), std::span(x).first(0)), Status::ok);
  ASSERT_EQ(plan.tryPlan(64), Status::ok);
  EXPECT_EQ(plan.tryPlan(63), Status::badSize); // and the plan of 64 stays
  EXPECT_EQ(plan.tryTransform(x, x), Status::ok);
  const tfmgen::Dct4<float> moved = std::move(plan);
  // NOLINTNEXTLINE(bugprone-use-after-move, clang-analyzer-cplusplus.Move): a plan moved from is none
  EXPECT_EQ(plan.length(), 0U);
  EXPECT_THROW(plan(x, x), Error);
}

TEST(Version, IsTheLibrarys) {
  EXPECT_EQ(&tfmgen::version(), tfmgenGetLibVersion());
}

} // namespace
