// The memory of a plan, byte by byte: a second statement of where every record stands and what it holds, by plain
// offsets.
#include "guarded.hpp"
#include "support.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <numbers>

namespace tfmgen::test {
namespace {

// A record or a list node at its place in the buffer.
struct Record {
  const std::byte* at;

  template <class Field>
  [[nodiscard]] Field field(std::size_t offset) const {
    Field value;
    std::memcpy(&value, at + offset, sizeof(value));
    return value;
  }
  [[nodiscard]] const std::byte* pointer(std::size_t offset) const { return field<const std::byte*>(offset); }

  void expectIntegers(std::size_t offset, std::initializer_list<std::int32_t> expected) const {
    for (const std::int32_t value : expected) {
      EXPECT_EQ(field<std::int32_t>(offset), value) << "at offset " << offset;
      offset += sizeof(value);
    }
  }
  void expectPointers(std::size_t offset, std::initializer_list<const std::byte*> expected) const {
    for (const std::byte* value : expected) {
      EXPECT_EQ(pointer(offset), value) << "at offset " << offset;
      offset += sizeof(value);
    }
  }
};

template <class T>
class Dct4PlanMemory : public ::testing::Test {
protected:
  static constexpr std::int32_t kLanes = 16 / sizeof(T);

  // Builds a plan, walks through its memory, and once more behind a call, which writes nothing but scratch.
  void check(std::int32_t length);

private:
  void walk();
  // The next record of the arena, in the order in which they are taken.
  Record take(std::size_t bytes) {
    const Record record{next_};
    next_ += (bytes + 31) / 32 * 32;
    return record;
  }
  Record takeSamples(std::int32_t count) { return take(static_cast<std::size_t>(count) * sizeof(T)); }

  void expectHead(const Record& record, std::uint32_t byteSize) const {
    EXPECT_NE(record.pointer(0), nullptr);
    EXPECT_EQ(record.field<std::uint32_t>(8), byteSize);
    EXPECT_NE(record.pointer(16), nullptr);
    EXPECT_EQ(record.pointer(24), buffer_);
  }
  void expectNode(const Record& node, const std::byte* item, const std::byte* next = nullptr) const {
    node.expectPointers(0, {item, next, buffer_});
  }

  // cos (part 0) or sin (part 1) of a fraction of pi, through the roundings of table construction.
  static T roundedSteps(T fraction, int part) {
    const auto angle = static_cast<T>(static_cast<double>(fraction) * std::numbers::pi);
    return part == 0 ? std::cos(angle) : std::sin(angle);
  }
  static void expectEntry(T actual, T fraction, int part, std::int64_t numerator, std::int64_t denominator) {
    const long double exact =
        part == 0 ? cosPiRatio(numerator, denominator) : cosPiRatio(2 * numerator + 3 * denominator, 2 * denominator);
    const T expected = roundedSteps(fraction, part);
    // Counted by hand: an assertion for each entry of a long table takes seconds.
    if (actual != expected || std::abs(actual - exact) > 8 * std::numeric_limits<T>::epsilon()) {
      ADD_FAILURE() << actual << " is not " << expected << " near " << exact;
    }
  }

  void expectMergeTable(const Record& table) const;
  void expectSplitTable(const Record& table, std::int32_t m, std::int32_t g) const;
  void walkMerge(const Record& stage, const Record& twiddles);
  const std::byte* walkSplit(std::int32_t m, std::int32_t f); // column count f; returns the split
  void walkColumn(const Record& stage);

  std::int32_t length_ = 0;
  std::int32_t factor_ = 0;
  const std::byte* buffer_ = nullptr;
  const std::byte* next_ = nullptr;
};

std::int32_t factorOf(std::int32_t length) {
  return length >= 1024 ? 32 : length >= 256 ? 16 : length >= 64 ? 8 : length >= 32 ? 4 : 2;
}

constexpr std::int32_t kColumnsOf32[] = {0, 31, 16, 15, 4, 27, 20, 11, 8, 23, 24, 7, 12, 19, 28, 3,
                                         1, 30, 17, 14, 5, 26, 21, 10, 9, 22, 25, 6, 13, 18, 29, 2};

template <class T>
void Dct4PlanMemory<T>::expectMergeTable(const Record& table) const {
  const std::int32_t rows = length_ / (2 * factor_);
  std::size_t offset = 0;
  for (std::int32_t block = 0; block < rows / kLanes; ++block) {
    for (std::int32_t position = 0; position < factor_; ++position) {
      const std::int32_t half = position / 2;
      const std::int32_t b = factor_ == 32 ? kColumnsOf32[position] : position % 2 == 0 ? half : factor_ - 1 - half;
      for (int part = 0; part < 2; ++part) {
        for (std::int32_t lane = 0; lane < kLanes; ++lane, offset += sizeof(T)) {
          const std::int32_t numerator = (2 * (block * kLanes + lane) + 1) * (2 * b + 1);
          const T fraction = static_cast<T>(2 * numerator) / static_cast<T>(8 * length_);
          expectEntry(table.field<T>(offset), fraction, part, numerator, 4 * std::int64_t{length_});
        }
      }
    }
  }
}

template <class T>
void Dct4PlanMemory<T>::expectSplitTable(const Record& table, std::int32_t m, std::int32_t g) const {
  const std::int32_t r = m / g;
  std::size_t offset = 0;
  const auto expectPair = [&](T fraction, std::int32_t numerator) {
    for (int part = 0; part < 2; ++part) {
      for (std::int32_t lane = 0; lane < kLanes; ++lane, offset += sizeof(T)) {
        expectEntry(table.field<T>(offset), fraction, part, numerator, m);
      }
    }
  };
  const auto rowFraction = [&](std::int32_t a) { return (static_cast<T>(a) + T{0.5}) / static_cast<T>(r); };
  if (g == 8) {
    for (std::int32_t a = 0; a < r / 2; ++a) {
      for (std::int32_t k = 1; k < 8; ++k) {
        expectPair(rowFraction(a) * (static_cast<T>(k) / 4), k * (2 * a + 1));
      }
    }
    return;
  }
  for (std::int32_t a = 0; a < r / 2; ++a) {
    for (std::int32_t v = 0; v < g / 4; ++v) {
      const T shifted = rowFraction(a) + static_cast<T>(v);
      for (std::int32_t k = 1; k < 4; ++k) {
        const double scaled = static_cast<double>(shifted) * (g == 16 ? 0.25 : 0.125) * (k / 2.0);
        expectPair(static_cast<T>(scaled), k * (2 * a + 1 + 2 * r * v));
      }
    }
  }
  for (std::int32_t a = 0; a < r / 2; ++a) {
    for (std::int32_t k = 1; k < g / 4; ++k) {
      expectPair(rowFraction(a) * (static_cast<T>(k) / (g == 16 ? 2 : 4)), 4 * k * (2 * a + 1));
    }
  }
}

template <class T>
void Dct4PlanMemory<T>::walkMerge(const Record& stage, const Record& twiddles) {
  const std::int32_t f = factor_;
  const std::int32_t rows = length_ / (2 * f);
  const std::int32_t mirror = 2 * length_ - 1;
  const Record loop = take(96);
  const Record lanes = take(48);
  const Record loopOwned = take(24);
  const Record chain = take(24);
  const Record table = take(static_cast<std::size_t>(rows / kLanes * 2 * f) * 16);

  expectHead(stage, 96);
  EXPECT_EQ(stage.pointer(48), nullptr);
  stage.expectIntegers(56, {1, f, length_, 2 * f, rows, length_, mirror, length_ / f});
  EXPECT_EQ(stage.pointer(88), twiddles.at);
  expectNode({stage.pointer(32)}, lanes.at, chain.at);
  expectNode(chain, loop.at);
  expectNode({stage.pointer(40)}, loop.at);

  expectHead(lanes, 48);
  lanes.expectIntegers(32, {2 * f, rows / kLanes});
  EXPECT_EQ(lanes.pointer(40), twiddles.at);

  expectHead(loop, 96);
  loop.expectPointers(32, {loopOwned.at, table.at});
  const std::int32_t kind = 1 + std::countr_zero(static_cast<std::uint32_t>(f));
  loop.expectIntegers(48, {kind, f, length_, 2 * f, kLanes * 2 * f, rows / kLanes, length_, mirror, length_ / f});
  EXPECT_EQ(loop.pointer(88), lanes.at);
  expectNode(loopOwned, nullptr);
  expectMergeTable(table);
}

template <class T>
const std::byte* Dct4PlanMemory<T>::walkSplit(std::int32_t m, std::int32_t f) {
  const std::int32_t g = factorOf(m);
  const std::int32_t r = m / g;
  const Record split = take(96);
  const Record mergeList = take(24);
  const Record columnList = take(24);
  const Record owned = take(24);
  const Record merge = take(104);
  const Record angles = take(40);
  const Record mergeOwned = take(24);
  const Record secondNode = take(24);
  const Record table = take(static_cast<std::size_t>(m / (2 * g) * (2 * g - 2)) * 16);
  const Record columns = take(96);
  const Record columnsStages = take(24);
  const Record columnsOwned = take(24);
  const Record thirdNode = take(24);

  expectHead(split, 96);
  split.expectPointers(32, {owned.at, mergeList.at, columnList.at});
  split.expectIntegers(64, {1, m, g, length_, length_, 2 * f, length_, f});
  expectNode(owned, angles.at, secondNode.at);
  expectNode(secondNode, merge.at, thirdNode.at);
  expectNode(thirdNode, columns.at);
  expectNode(mergeList, merge.at);
  expectNode(columnList, columns.at);

  expectHead(angles, 40);
  angles.expectIntegers(32, {m, g});

  expectHead(merge, 104);
  merge.expectPointers(32, {mergeOwned.at, table.at});
  merge.expectIntegers(48, {std::countr_zero(static_cast<std::uint32_t>(g)), g, length_, f, 2 * g * f, m / (2 * g), m,
                            m / 2, m - 1, f, r});
  EXPECT_EQ(merge.pointer(96), angles.at);
  expectNode(mergeOwned, nullptr);
  expectSplitTable(table, m, g);

  const bool splitAgain = r > 64;
  const std::byte* below = splitAgain ? walkSplit(r, g * f) : nullptr;
  expectHead(columns, 96);
  columns.expectPointers(32, {columnsOwned.at, columnsStages.at, nullptr});
  columns.expectIntegers(56, {splitAgain ? 7 : std::countr_zero(static_cast<std::uint32_t>(r)), r, length_, length_,
                              2 * g * f, 2 * f, g, length_, g * f, f});
  expectNode(columnsOwned, below);
  expectNode(columnsStages, below);

  EXPECT_EQ(split.pointer(56), takeSamples(length_).at);
  return split.at;
}

template <class T>
void Dct4PlanMemory<T>::walkColumn(const Record& stage) {
  const std::int32_t f = factor_;
  const std::int32_t n = length_ / f;
  const std::int32_t mirror = 2 * length_ - 1;
  const Record loop = take(88);
  const Record loopStages = take(24);
  const Record loopOwned = take(24);

  expectHead(stage, 88);
  EXPECT_EQ(stage.pointer(48), nullptr);
  stage.expectIntegers(56, {1, n, length_, mirror, 2 * f, f, length_, f});
  expectNode({stage.pointer(32)}, loop.at);
  expectNode({stage.pointer(40)}, loop.at);

  const std::byte* split = n > 64 ? walkSplit(n, f) : nullptr;
  expectHead(loop, 88);
  loop.expectPointers(32, {loopOwned.at, loopStages.at, nullptr});
  const std::int32_t kind = n > 64 ? 7 : std::countr_zero(static_cast<std::uint32_t>(n));
  loop.expectIntegers(56, {kind, n, length_, mirror, 2 * f, f / kLanes, length_, f});
  expectNode(loopOwned, split);
  expectNode(loopStages, split);
}

template <class T>
void Dct4PlanMemory<T>::walk() {
  const std::int32_t length = length_;
  next_ = buffer_ + 64;
  const Record root = take(80);
  const Record mergeList = take(24);
  const Record columnList = take(24);
  const Record owned = take(24);
  expectHead(root, 80);
  root.expectPointers(32, {owned.at, mergeList.at, columnList.at});
  if (length <= 32 && length % 2 == 0) {
    root.expectPointers(56, {nullptr});
    root.expectIntegers(64, {std::countr_zero(static_cast<std::uint32_t>(length))});
    root.expectIntegers(72, {length});
    expectNode(owned, nullptr);
    expectNode(mergeList, nullptr);
    expectNode(columnList, nullptr);
  } else {
    root.expectIntegers(64, {6, factor_, length});
    const Record merge = take(96);
    const Record twiddles = take(56);
    const Record mergeStages = take(24);
    const Record mergeOwned = take(24);
    const Record secondNode = take(24);
    merge.expectPointers(32, {mergeOwned.at, mergeStages.at});
    walkMerge(merge, twiddles);
    expectHead(twiddles, 56);
    twiddles.expectIntegers(32, {2 * factor_, 8 * length, length / (2 * factor_), factor_, 2 * factor_});

    const Record column = take(88);
    const Record columnStages = take(24);
    const Record columnOwned = take(24);
    const Record thirdNode = take(24);
    column.expectPointers(32, {columnOwned.at, columnStages.at});
    walkColumn(column);
    expectNode(owned, twiddles.at, secondNode.at);
    expectNode(secondNode, merge.at, thirdNode.at);
    expectNode(thirdNode, column.at);
    expectNode(mergeList, merge.at);
    expectNode(columnList, column.at);
    EXPECT_EQ(root.pointer(56), takeSamples(length).at);
  }
  EXPECT_EQ(Record{buffer_}.pointer(0), next_) << "the arena word ends behind the last block";
}

template <class T>
void Dct4PlanMemory<T>::check(std::int32_t length) {
  std::int32_t size = 0;
  ASSERT_EQ(Dct4<T>::getSize(length, &size), tfmStsOk);
  const std::size_t bytes = (static_cast<std::size_t>(size) + 31) / 32 * 32;
  GuardedMemory memory(bytes);
  std::byte* const buffer = memory.array(bytes, Edge::end);
  TfmgDCT4Plan* plan = nullptr;
  ASSERT_EQ(Dct4<T>::init(&plan, length, buffer), tfmStsOk);
  ASSERT_EQ(reinterpret_cast<std::byte*>(plan), buffer + 64);
  length_ = length;
  factor_ = factorOf(length);
  buffer_ = buffer;
  walk();

  auto samples = randomSamples<T>(length + 1, 1);
  ASSERT_EQ(Dct4<T>::run(samples.data(), samples.data(), plan), tfmStsOk);
  walk();
}

using Samples = ::testing::Types<Tfm32f, Tfm64f>;
TYPED_TEST_SUITE(Dct4PlanMemory, Samples);

TYPED_TEST(Dct4PlanMemory, OfCodelets) {
  for (std::int32_t length = 2; length <= 32; length *= 2) {
    SCOPED_TRACE(length);
    this->check(length);
  }
}

TYPED_TEST(Dct4PlanMemory, OfPlansWithoutSplit) {
  for (const std::int32_t length : {33, 64, 65, 128, 256, 512, 1024, 2048, 2049}) {
    SCOPED_TRACE(length);
    this->check(length);
  }
}

TYPED_TEST(Dct4PlanMemory, OfPlansWithSplits) {
  for (const std::int32_t length : {4096, 8192, 16384, 32768, 65536, 131072}) { // the last has two splits
    SCOPED_TRACE(length);
    this->check(length);
  }
}

} // namespace
} // namespace tfmgen::test
