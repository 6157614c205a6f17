// The size of a plan: the walk of its construction, level by level, without memory. It refuses what construction
// refuses and, beyond that, every length at which a running total turns negative as a signed 32-bit number. Sums wrap
// around, so that a few lengths above those pass again. Sizes and accepted lengths are published: they stay, also where
// fewer list nodes are taken than counted here.
#include "sizing.hpp"

#include "arena.hpp"
#include "factor.hpp"
#include "kernel/vector.hpp"
#include "list.hpp"
#include "records.hpp"

namespace tfmgen::dct4 {
namespace {

// A running total of bytes. A negative value is a refusal, and every level returns it at once.
struct Total {
  std::uint32_t bytes;

  [[nodiscard]] constexpr bool refused() const { return static_cast<std::int32_t>(bytes) < 0; }
  friend constexpr Total operator+(Total a, Total b) { return {a.bytes + b.bytes}; }
};
constexpr Total kRefused{static_cast<std::uint32_t>(tfmStsBadSize)};

// Records and the nodes of their lists.
template <class... Record>
constexpr Total records(std::uint32_t listNodes) {
  return {(tfmgRoundUp32(sizeof(Record)) + ...) + tfmgListSpace(listNodes)};
}

constexpr Total vectorTable(std::int32_t rows, std::int32_t vectorsPerRow) {
  return {tfmgRoundUp32(vectorBytes(rows, vectorsPerRow))};
}

template <class T>
constexpr Total scratch(std::int32_t length) {
  return {tfmgRoundUp32(sampleBytes<T>(length))};
}

constexpr bool needsSplit(std::int32_t columnLength) {
  return kindOf(columnLength, kLastColumn, kSplitColumn) == kSplitColumn;
}

// The split of a column of m samples in a plan of `length`, with all splits below it.
template <class T>
Total splitTotal(std::int32_t length, std::int32_t m) {
  std::int32_t g = 0;
  if (!tfmgDCT4ChooseFactor(m / 2, g)) {
    return kRefused;
  }
  const Total merge = vectorTable(m / (2 * g), 2 * g - 2) + records<TfmgOddSplitMerge<T>>(1);
  if (merge.refused()) {
    return merge;
  }
  Total columns = records<TfmgOddSplitColumns<T>>(2);
  if (needsSplit(m / g)) {
    const Total below = splitTotal<T>(length, m / g);
    if (below.refused()) {
      return below;
    }
    columns = below + records<TfmgOddSplitColumns<T>>(4);
    if (columns.refused()) {
      return columns;
    }
  }
  return merge + columns + scratch<T>(length) + records<TfmgOddSplit<T>, TfmgOddAngleSource<T>>(8);
}

template <class T>
Total mergeTotal(std::int32_t length, std::int32_t f) {
  const std::int32_t rows = length / (2 * f);
  if (rows % kLanes<T> != 0) {
    return kRefused;
  }
  const Total loop = vectorTable(rows / kLanes<T>, 2 * f) + records<TfmgDCT4MergeLoop<T>>(1);
  if (loop.refused()) {
    return loop;
  }
  return loop + records<TfmgDCT4MergeStage<T>, TfmgDCT4LaneSource<T>>(5);
}

template <class T>
Total columnTotal(std::int32_t length, std::int32_t f) {
  if (f % kLanes<T> != 0) {
    return kRefused;
  }
  if (!needsSplit(length / f)) {
    return records<TfmgOddColumnStage<T>, TfmgOddColumnLoop<T>>(6);
  }
  const Total split = splitTotal<T>(length, length / f);
  if (split.refused()) {
    return split;
  }
  return split + records<TfmgOddColumnStage<T>, TfmgOddColumnLoop<T>>(8);
}

template <class T>
Total planTotal(std::int32_t length) {
  if (kindOf(length, kLastCodelet, kStagedPlan) != kStagedPlan) {
    return records<TfmgDCT4Plan>(3);
  }
  std::int32_t f = 0;
  if (!tfmgDCT4ChooseFactor(length / 2, f)) {
    return kRefused;
  }
  const Total merge = mergeTotal<T>(length, f);
  if (merge.refused()) {
    return merge;
  }
  const Total column = columnTotal<T>(length, f);
  if (column.refused()) {
    return column;
  }
  return merge + column + scratch<T>(length) + records<TfmgDCT4Plan, TfmgDCT4TwiddleSource<T>>(8);
}

} // namespace

template <class T>
std::int32_t planBytes(std::int32_t length) {
  // The arena word and the distance from the start of the buffer to the first record.
  constexpr Total margin{2 * tfmgRoundUp32(1)};
  const Total total = planTotal<T>(length);
  return static_cast<std::int32_t>((total.refused() ? total : total + margin).bytes);
}

template std::int32_t planBytes<Tfm32f>(std::int32_t length);
template std::int32_t planBytes<Tfm64f>(std::int32_t length);

} // namespace tfmgen::dct4
