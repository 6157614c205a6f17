// The stages one by one, on records made here: every kernel against its sum, those too that no length reaches, and what
// becomes of records with a bad kind.
#include "bits.hpp"
#include "dct4/records.hpp"
#include "support.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

namespace tfmgen::test {
namespace {

using namespace tfmgen::dct4;

template <class T>
struct Complex {
  T re;
  T im;
};

// Samples with the alignment that scratch and tables have.
template <class T>
class AlignedSamples {
public:
  explicit AlignedSamples(std::size_t count) : samples_(count + 16 / sizeof(T)) {}
  T* data() {
    const auto address = reinterpret_cast<std::uintptr_t>(samples_.data());
    return samples_.data() + (16 - address % 16) / sizeof(T);
  }

private:
  std::vector<T> samples_;
};

std::int32_t log2Of(std::int32_t power) {
  return std::countr_zero(static_cast<std::uint32_t>(power));
}

// C + i S of row i: sum over t of g(t) e(pi (2i+1) t / n), for g every 2f-th sample from j on of the input extended
// with its negative mirror image.
template <class T>
ComplexL columnResult(const std::vector<T>& x, std::int32_t f, std::int32_t n, std::int32_t j, std::int32_t i) {
  ComplexL sum = 0;
  for (std::int32_t t = 0; t < n; ++t) {
    const std::int32_t m = 2 * f * t + j;
    const std::int32_t length = f * n;
    const long double g = m < length ? x.begin()[m] : -x.begin()[2 * length - 1 - m];
    sum += g * halfTurns(std::int64_t{2 * i + 1} * t % (2 * n), n);
  }
  return sum;
}

template <class T>
class Dct4Stages : public ::testing::Test {
protected:
  static constexpr std::int32_t kLaneCount = 16 / sizeof(T);
  static constexpr long double kBound = 64 * std::numeric_limits<T>::epsilon();

  // A plan whose stages are the given ones; kind 0 leaves a stage out.
  struct TestPlan {
    TfmgDCT4Plan root{};
    TfmgPlanList columnList{};
    TfmgPlanList columnStageList{};
    TfmgPlanList mergeList{};
    TfmgPlanList mergeStageList{};
    TfmgOddColumnStage<T> columnStage{};
    TfmgOddColumnLoop<T> columnLoop{};
    TfmgDCT4MergeStage<T> mergeStage{};
    TfmgDCT4MergeLoop<T> mergeLoop{};

    TestPlan(std::int32_t f, std::int32_t n, T* work) {
      root.kind = 6;
      root.work = work;
      root.columnList = &columnList;
      root.mergeList = &mergeList;
      columnList.item = &columnStage.head.item;
      columnStage.stageList = &columnStageList;
      columnStageList.item = &columnLoop.head.item;
      mergeList.item = &mergeStage.head.item;
      mergeStage.stageList = &mergeStageList;
      mergeStageList.item = &mergeLoop.head.item;

      columnLoop.columnLength = mergeLoop.columnLength = n;
      columnLoop.length = columnLoop.length2 = mergeLoop.length = mergeLoop.length2 = f * n;
      columnLoop.mirror = mergeLoop.mirror = 2 * f * n - 1;
      columnLoop.twoFactor = mergeLoop.twoFactor = 2 * f;
      columnLoop.factor = mergeLoop.factor = f;
      columnLoop.columnGroups = f / kLaneCount;
      mergeLoop.blockStride = kLaneCount * 2 * f;
      mergeLoop.blocks = n / 2 / kLaneCount;
    }
  };

  static void expectColumns(const std::vector<T>& x, const T* work, std::int32_t f, std::int32_t n) {
    for (std::int32_t i = 0; i < n / 2; ++i) {
      for (std::int32_t j = 0; j < f; ++j) {
        const ComplexL expected = columnResult(x, f, n, j, i);
        const ComplexL actual(work[2 * i * f + j], work[(2 * i + 1) * f + j]);
        EXPECT_LT(std::abs(actual - expected), n * kBound) << n << ": row " << i << ", column " << j;
      }
    }
  }

  static std::vector<T> mergeTable(std::int32_t f, std::int32_t n);
};
using Samples = ::testing::Types<Tfm32f, Tfm64f>;
TYPED_TEST_SUITE(Dct4Stages, Samples);

template <class T>
std::vector<T> Dct4Stages<T>::mergeTable(std::int32_t f, std::int32_t n) {
  constexpr std::int32_t order32[] = {0, 31, 16, 15, 4, 27, 20, 11, 8, 23, 24, 7, 12, 19, 28, 3,
                                      1, 30, 17, 14, 5, 26, 21, 10, 9, 22, 25, 6, 13, 18, 29, 2};
  std::vector<T> table;
  for (std::int32_t block = 0; block < n / 2 / kLaneCount; ++block) {
    for (std::int32_t position = 0; position < f; ++position) {
      const std::int32_t half = position / 2;
      const std::int32_t j = f == 32 ? order32[position] : position % 2 == 0 ? half : f - 1 - half;
      for (const bool sine : {false, true}) {
        for (std::int32_t lane = 0; lane < kLaneCount; ++lane) {
          const std::int32_t i = block * kLaneCount + lane;
          const ComplexL theta = halfTurns(std::int64_t{2 * i + 1} * (2 * j + 1), 4 * f * n);
          table.push_back(static_cast<T>(sine ? theta.imag() : theta.real()));
        }
      }
    }
  }
  return table;
}

TYPED_TEST(Dct4Stages, ColumnKernelsOfAllLengths) {
  using T = TypeParam;
  for (std::int32_t n = 2; n <= 64; n *= 2) {
    for (const std::int32_t f : {4, 8}) {
      const auto count = static_cast<std::size_t>(f * n);
      const auto x = randomSamples<T>(count, 5);
      AlignedSamples<T> work(count);
      typename TestFixture::TestPlan plan(f, n, work.data());
      plan.columnStage.kind = 1;
      plan.columnLoop.kind = log2Of(n);
      std::vector<T> y(count, 3);
      ASSERT_EQ(Dct4<T>::run(x.data(), y.data(), &plan.root), tfmStsOk);
      this->expectColumns(x, work.data(), f, n);
      EXPECT_EQ(y, std::vector<T>(count, 3)) << "the merge stage has been left out";
    }
  }
}

TYPED_TEST(Dct4Stages, MergeKernelsOfAllFactors) {
  using T = TypeParam;
  for (std::int32_t f = 1; f <= 32; f *= 2) {
    for (const std::int32_t n : {8, 16}) {
      const auto count = static_cast<std::size_t>(f * n);
      const auto x = randomSamples<T>(count, 6);
      AlignedSamples<T> work(count);
      for (std::int32_t i = 0; i < n / 2; ++i) {
        for (std::int32_t j = 0; j < f; ++j) {
          const ComplexL z = columnResult(x, f, n, j, i);
          work.data()[2 * i * f + j] = static_cast<T>(z.real());
          work.data()[(2 * i + 1) * f + j] = static_cast<T>(z.imag());
        }
      }
      const auto entries = this->mergeTable(f, n);
      AlignedSamples<T> table(entries.size());
      std::copy(entries.begin(), entries.end(), table.data());
      typename TestFixture::TestPlan plan(f, n, work.data());
      plan.mergeStage.kind = 1;
      plan.mergeLoop.kind = 1 + log2Of(f);
      plan.mergeLoop.table = table.data();
      std::vector<T> y(count);
      ASSERT_EQ(Dct4<T>::run(x.data(), y.data(), &plan.root), tfmStsOk);
      EXPECT_LT(maxError(y, dct4ByDefinition(x)), this->kBound * n) << f;
    }
  }
}

// One split of a column of m samples by g, as records.
template <class T>
struct TestSplit {
  TfmgOddSplit<T> split{};
  TfmgPlanList mergeList{};
  TfmgPlanList columnList{};
  TfmgOddSplitMerge<T> merge{};
  TfmgOddSplitColumns<T> columns{};
  AlignedSamples<T> scratch;
  AlignedSamples<T> table;

  TestSplit(std::int32_t m, std::int32_t g, std::int32_t f)
      : scratch(static_cast<std::size_t>(m * f)), table(static_cast<std::size_t>(m / (2 * g) * (2 * g - 2)) * lanes()) {
    const std::int32_t r = m / g;
    split.kind = 1;
    split.work = scratch.data();
    split.mergeList = &mergeList;
    split.columnList = &columnList;
    mergeList.item = &merge.head.item;
    columnList.item = &columns.head.item;
    columns.kind = log2Of(r);
    columns.subLength = r;
    columns.twoFactor = 2 * f;
    columns.stride2 = 2 * g * f;
    columns.subFactor = g;
    columns.groupStep = g * f;
    columns.factor = f;
    merge.kind = log2Of(g);
    merge.subFactor = g;
    merge.factor = merge.factor2 = f;
    merge.stride2 = 2 * g * f;
    merge.halfRows = r / 2;
    merge.length = m;
    merge.halfLength = m / 2;
    merge.lastIndex = m - 1;
    merge.subLength = r;
    merge.table = table.data();
    fillTable(m, g, r);
  }

private:
  static constexpr std::size_t lanes() { return 16 / sizeof(T); }

  void fillTable(std::int32_t m, std::int32_t g, std::int32_t r) {
    T* next = table.data();
    const auto entry = [&](std::int32_t angle) {
      const ComplexL z = halfTurns(angle, m);
      next = std::fill_n(next, lanes(), static_cast<T>(z.real()));
      next = std::fill_n(next, lanes(), static_cast<T>(z.imag()));
    };
    const std::int32_t sets = g > 8 ? g / 4 : 1;
    for (std::int32_t a = 0; a < r / 2; ++a) {
      for (std::int32_t v = 0; v < sets; ++v) {
        for (std::int32_t k = 1; k < g / sets; ++k) {
          entry(k * (2 * a + 1 + 2 * r * v));
        }
      }
    }
    for (std::int32_t a = 0; a < r / 2 && sets > 1; ++a) {
      for (std::int32_t k = 1; k < sets; ++k) {
        entry(4 * k * (2 * a + 1));
      }
    }
  }
};

TYPED_TEST(Dct4Stages, SplitsByAllFactors) {
  using T = TypeParam;
  for (std::int32_t g = 2; g <= 32; g *= 2) {
    for (const std::int32_t r : {2, 8, 16}) {
      const std::int32_t f = 32; // as every plan with a split has
      const std::int32_t m = g * r;
      const auto count = static_cast<std::size_t>(f * m);
      const auto x = randomSamples<T>(count, 11);
      AlignedSamples<T> work(count);
      TestSplit<T> split(m, g, f);
      TfmgPlanList splitList{.item = &split.split.head.item, .next = nullptr, .arena = nullptr};
      typename TestFixture::TestPlan plan(f, m, work.data());
      plan.columnStage.kind = 1;
      plan.columnLoop.kind = 7;
      plan.columnLoop.stageList = &splitList;
      std::vector<T> y(count);
      ASSERT_EQ(Dct4<T>::run(x.data(), y.data(), &plan.root), tfmStsOk);
      this->expectColumns(x, work.data(), f, m);
    }
  }
}

// Zeros and ones of both signs.
template <class T>
std::vector<T> signedUnits(std::size_t count, std::uint64_t seed) {
  Random random(seed);
  std::vector<T> x(count);
  std::ranges::generate(x, [&] { return std::array{T(0), -T(0), T(1), T(-1)}[random.bits() % 4]; });
  return x;
}

// A row from its parts C and S of the columns, compared bit for bit.
template <class T>
void expectRow(const T* row, std::int32_t f, const std::vector<Complex<T>>& columns) {
  for (std::int32_t j = 0; j < f; ++j) {
    const auto& z = columns[static_cast<std::size_t>(j)];
    ASSERT_TRUE(sameBits(&z.re, row + j, sizeof(T), sizeof(T))) << "column " << j;
    ASSERT_TRUE(sameBits(&z.im, row + f + j, sizeof(T), sizeof(T))) << "column " << j;
  }
}

// The mirrored half of the input has a minus, which is a subtraction from 0: a zero of plus sign stays one.
TYPED_TEST(Dct4Stages, ColumnsOfTwoSubtractFromZero) {
  using T = TypeParam;
  const std::int32_t f = 8;
  for (std::uint64_t seed = 0; seed < 20; ++seed) {
    const auto x = signedUnits<T>(2 * f, seed);
    AlignedSamples<T> work(2 * f);
    typename TestFixture::TestPlan plan(f, 2, work.data());
    plan.columnStage.kind = 1;
    plan.columnLoop.kind = 1;
    std::vector<T> y(x.size());
    ASSERT_EQ(Dct4<T>::run(x.data(), y.data(), &plan.root), tfmStsOk);
    std::vector<Complex<T>> expected;
    for (std::size_t j = 0; j < f; ++j) {
      expected.push_back({x[j], T(0) - x[x.size() - 1 - j]});
    }
    expectRow(work.data(), f, expected);
  }
}

// A split of 4 by 2: the row of the second half is the conjugate of a difference, formed as a difference the other way.
TYPED_TEST(Dct4Stages, SplitByTwoHasTheZerosOfItsForm) {
  using T = TypeParam;
  constexpr std::int32_t f = 32; // as every plan with a split has
  const T c = static_cast<T>(halfTurns(1, 4).real());
  const T s = static_cast<T>(halfTurns(1, 4).imag());
  for (std::uint64_t seed = 0; seed < 20; ++seed) {
    const auto x = signedUnits<T>(4 * f, seed);
    AlignedSamples<T> work(4 * f);
    TestSplit<T> split(4, 2, f);
    TfmgPlanList splitList{.item = &split.split.head.item, .next = nullptr, .arena = nullptr};
    typename TestFixture::TestPlan plan(f, 4, work.data());
    plan.columnStage.kind = 1;
    plan.columnLoop.kind = 7;
    plan.columnLoop.stageList = &splitList;
    std::vector<T> y(x.size());
    ASSERT_EQ(Dct4<T>::run(x.data(), y.data(), &plan.root), tfmStsOk);
    std::vector<Complex<T>> first;
    std::vector<Complex<T>> second;
    for (std::size_t j = 0; j < f; ++j) {
      const T c0 = x[j];
      const T s0 = T(0) - x[4 * f - 1 - j];
      const T c1 = x[2 * f + j];
      const T s1 = T(0) - x[2 * f - 1 - j];
      const T re = c1 * c - s1 * s;
      const T im = c1 * s + s1 * c;
      first.push_back({c0 + re, s0 + im});
      second.push_back({c0 - re, im - s0});
    }
    expectRow(work.data(), f, first);
    expectRow(work.data() + 2 * f, f, second);
  }
}

// Only the kind of the root is an error; any other bad kind leaves its part of the work undone, and the call succeeds.
TYPED_TEST(Dct4Stages, BadKinds) {
  using T = TypeParam;
  const std::vector<T> x(64, 1);
  AlignedSamples<T> work(64);
  const auto run = [&](auto&& change) {
    typename TestFixture::TestPlan plan(8, 8, work.data());
    plan.columnStage.kind = plan.mergeStage.kind = 1;
    plan.columnLoop.kind = 3;
    change(plan);
    std::fill_n(work.data(), 64, T{5});
    std::vector<T> y(64, 5);
    const TfmStatus status = Dct4<T>::run(x.data(), y.data(), &plan.root);
    EXPECT_EQ(y, std::vector<T>(64, 5));
    return status;
  };
  for (const std::int32_t kind : {0, 7, -1}) {
    EXPECT_EQ(run([&](auto& plan) { plan.root.kind = kind; }), tfmStsBadArg);
    EXPECT_EQ(work.data()[0], 5);
    EXPECT_EQ(run([&](auto& plan) { plan.mergeLoop.kind = kind; }), tfmStsOk);
    EXPECT_NE(work.data()[0], 5) << "the column stage has run";
  }
  for (const std::int32_t kind : {0, 8, -1}) {
    EXPECT_EQ(run([&](auto& plan) {
                plan.columnLoop.kind = kind;
                plan.mergeStage.kind = 0;
              }),
              tfmStsOk);
    EXPECT_EQ(work.data()[0], 5);
  }
}

TYPED_TEST(Dct4Stages, BadKindsInASplit) {
  using T = TypeParam;
  constexpr std::int32_t f = 32;
  constexpr std::size_t count = 8 * f;
  const std::vector<T> x(count, 1);
  const auto firstOfWork = [&](auto&& change) {
    AlignedSamples<T> work(count);
    work.data()[0] = 5;
    TestSplit<T> split(8, 2, f);
    change(split);
    TfmgPlanList splitList{.item = &split.split.head.item, .next = nullptr, .arena = nullptr};
    typename TestFixture::TestPlan plan(f, 8, work.data());
    plan.columnStage.kind = 1;
    plan.columnLoop.kind = 7;
    plan.columnLoop.stageList = &splitList;
    std::vector<T> y(count);
    EXPECT_EQ(Dct4<T>::run(x.data(), y.data(), &plan.root), tfmStsOk);
    return work.data()[0];
  };
  EXPECT_EQ(firstOfWork([](auto& split) { split.split.kind = 2; }), 5);
  EXPECT_EQ(firstOfWork([](auto& split) { split.merge.kind = 6; }), 5);
  EXPECT_EQ(firstOfWork([](auto& split) { split.columns.kind = 8; }), 0) << "the merge goes on with the empty scratch";
}

// What the two stages exchange in a built plan.
TYPED_TEST(Dct4Stages, WorkOfABuiltPlan) {
  using T = TypeParam;
  const Plan<T> plan(64);
  const auto* work = static_cast<const T*>(plan()->work);
  std::vector<T> y(64);
  ASSERT_EQ(Dct4<T>::run(impulse<T>(64, 0).data(), y.data(), plan()), tfmStsOk);
  for (int i = 0; i < 64; ++i) {
    EXPECT_EQ(work[i], i % 16 == 0 ? 1 : 0) << i;
  }
  ASSERT_EQ(Dct4<T>::run(impulse<T>(64, 63).data(), y.data(), plan()), tfmStsOk);
  for (int i = 0; i < 4; ++i) {
    EXPECT_NEAR(work[(2 * i + 1) * 8], i % 2 == 0 ? -1 : 1, 1e-6);
  }
  const Plan<T> split(4096);
  const auto x = randomSamples<T>(4096, 4);
  std::vector<T> z(4096);
  ASSERT_EQ(Dct4<T>::run(x.data(), z.data(), split()), tfmStsOk);
  this->expectColumns(x, static_cast<const T*>(split()->work), 32, 128);
}

TYPED_TEST(Dct4Stages, SplitMergeGivesATableBackForItsKindsOnly) {
  using T = TypeParam;
  const Plan<T> plan(4096);
  const auto* stage = recordOf<TfmgOddColumnStage<T>>(tfmgListItem(plan()->columnList, 0));
  const auto* loop = recordOf<TfmgOddColumnLoop<T>>(tfmgListItem(stage->stageList, 0));
  const auto* split = recordOf<TfmgOddSplit<T>>(tfmgListItem(loop->stageList, 0));
  auto* merge = recordOf<TfmgOddSplitMerge<T>>(tfmgListItem(split->mergeList, 0));
  const TfmgArena* arena = plan()->head.arena;
  const auto givenBack = [&](std::int32_t kind) {
    merge->kind = kind;
    const std::uintptr_t before = arena->next;
    merge->head.item.release(&merge->head.item);
    return static_cast<std::int64_t>(before - arena->next);
  };
  const std::int64_t lists = givenBack(0);
  const std::int64_t table = 16 * std::int64_t{merge->halfRows} * (2 * merge->subFactor - 2);
  for (const std::int32_t kind : {1, 2, 3, 4, 5}) {
    EXPECT_EQ(givenBack(kind), lists + table) << kind;
  }
  for (const std::int32_t kind : {-1, 6, 7}) {
    EXPECT_EQ(givenBack(kind), lists) << kind;
  }
}

TEST(Dct4Lists, AppendItemAndRelease) {
  alignas(32) std::byte memory[128];
  TfmgArena arena{reinterpret_cast<std::uintptr_t>(memory)};
  const std::uintptr_t start = arena.next;
  const auto used = [&] { return arena.next - start; };
  static int released;
  released = 0;
  const auto release = [](TfmgPlanItem* /*item*/) { ++released; };
  TfmgPlanItem first{release, 24};
  TfmgPlanItem second{release, 56};

  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(tfmgArenaTake(&arena, 0)), start);
  EXPECT_EQ(used(), 0);
  TfmgPlanList head;
  tfmgListInit(&head, &arena);
  EXPECT_EQ(tfmgListItem(&head, 0), nullptr);
  EXPECT_EQ(tfmgListAppend(&head, &first), &first);
  EXPECT_EQ(used(), 0) << "the first item takes no node";
  EXPECT_EQ(tfmgListAppend(&head, &second), &second);
  EXPECT_EQ(used(), 32);
  EXPECT_EQ(tfmgListItem(&head, 0), &first);
  EXPECT_EQ(tfmgListItem(&head, 1), &second);
  EXPECT_EQ(tfmgListItem(&head, 2), nullptr);
  tfmgListReleaseItems(nullptr);
  tfmgListReleaseItems(&head);
  EXPECT_EQ(released, 2);
  EXPECT_EQ(used(), std::uintptr_t{32} - 32 - 64) << "sizes are rounded on the way back too";
  tfmgListReleaseNodes(&head);
  EXPECT_EQ(used(), std::uintptr_t{0} - 96);
}

} // namespace
} // namespace tfmgen::test
