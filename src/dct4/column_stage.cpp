// The column stage: all columns by their kernel, or by splits where they are too long for one. A long column is
// finished for one group before the next group starts.
#include "factor.hpp"
#include "kernel/vector.hpp"
#include "stages.hpp"

namespace tfmgen::dct4 {
namespace {

constexpr bool isColumnKind(std::int32_t kind) {
  return kind >= 1 && kind <= kSplitColumn;
}

// The group's place in the input, and its first column in a row of the output.
template <class T>
struct SplitGroup {
  const T* up;
  const T* down;
  std::ptrdiff_t column;
};

template <class V, class T>
TfmStatus runSplit(const TfmgOddSplit<T>& split, T* out, const SplitGroup<T>& group);

// All vectors of a group for one subsequence after the other.
template <class V, class T>
void runPackedColumns(const TfmgOddSplitColumns<T>& columns, T* scratch, const SplitGroup<T>& group) {
  for (std::ptrdiff_t s = 0; s < columns.subFactor; ++s) {
    runColumnKernel<V>(columns.kind, {.up = group.up + s * columns.twoFactor,
                                      .down = group.down - s * columns.twoFactor,
                                      .stride = columns.stride2,
                                      .out = scratch + s * kGroupLanes<V>,
                                      .rowStride = std::ptrdiff_t{columns.subFactor} * kGroupLanes<V>,
                                      .count = kParts<V>,
                                      .inStep = kLanesOf<V>,
                                      .outStep = kLanesOf<V>});
  }
}

// Subsequence s of each column takes every g-th sample from s on; its columns stand at s f of a row of the scratch.
template <class V, class T>
TfmStatus runSplitColumns(const TfmgOddSplitColumns<T>& columns, T* scratch, const SplitGroup<T>& group) {
  if (!isColumnKind(columns.kind)) {
    return tfmStsBadArg;
  }
  if (columns.kind != kSplitColumn) {
    if constexpr (isPacked<V>(kLastColumn)) {
      runPackedColumns<V>(columns, scratch, group);
    } else {
      runColumnKernel<V>(columns.kind, {.up = group.up,
                                        .down = group.down,
                                        .stride = columns.stride2,
                                        .out = scratch + group.column,
                                        .rowStride = columns.groupStep,
                                        .count = columns.subFactor,
                                        .inStep = columns.twoFactor,
                                        .outStep = columns.factor});
    }
    return tfmStsOk;
  }
  const auto& split = *recordOf<TfmgOddSplit<T>>(tfmgListItem(columns.stageList, 0));
  for (std::ptrdiff_t s = 0; s < columns.subFactor; ++s) {
    const std::ptrdiff_t shift = s * columns.twoFactor;
    runSplit<V, T>(split, scratch, {group.up + shift, group.down - shift, group.column + s * columns.factor});
  }
  return tfmStsOk;
}

template <class V, class T>
TfmStatus runSplit(const TfmgOddSplit<T>& split, T* out, const SplitGroup<T>& group) {
  if (split.kind != 1) {
    return tfmStsBadArg;
  }
  runSplitColumns<V, T>(*recordOf<TfmgOddSplitColumns<T>>(tfmgListItem(split.columnList, 0)), split.work, group);
  return runSplitMerge<V>(*recordOf<TfmgOddSplitMerge<T>>(tfmgListItem(split.mergeList, 0)), out, split.work,
                          group.column);
}

// By V or, where its groups do not come out even, by shorter vectors.
template <class V, class T>
void runKernels(const TfmgOddColumnLoop<T>& loop, T* work, const T* src) {
  constexpr std::int32_t groups = kLanesOf<V> / kLanes<T>;
  if constexpr (groups > 1) {
    if (loop.columnGroups % groups != 0) {
      return runKernels<HalfVector<V>>(loop, work, src);
    }
  }
  runColumnKernel<V>(loop.kind, {.up = src,
                                 .down = src + loop.mirror,
                                 .stride = loop.twoFactor,
                                 .out = work,
                                 .rowStride = loop.factor,
                                 .count = loop.columnGroups / groups,
                                 .inStep = kLanesOf<V>,
                                 .outStep = kLanesOf<V>});
}

} // namespace

template <class T>
TfmStatus runColumnLoop(const TfmgOddColumnLoop<T>& loop, T* work, const T* src) {
  if (!isColumnKind(loop.kind)) {
    return tfmStsBadArg;
  }
  using V = WidestVector<T>;
  if (loop.kind != kSplitColumn) {
    runKernels<V>(loop, work, src);
    return tfmStsOk;
  }
  // The factor of a plan with a split is a multiple of any group.
  const auto& split = *recordOf<TfmgOddSplit<T>>(tfmgListItem(loop.stageList, 0));
  for (std::ptrdiff_t column = 0; column < loop.factor; column += kGroupLanes<V>) {
    runSplit<V>(split, work, {src + column, src + (loop.mirror - column), column});
  }
  return tfmStsOk;
}

template TfmStatus runColumnLoop(const TfmgOddColumnLoop<Tfm32f>&, Tfm32f*, const Tfm32f*);
template TfmStatus runColumnLoop(const TfmgOddColumnLoop<Tfm64f>&, Tfm64f*, const Tfm64f*);

} // namespace tfmgen::dct4
