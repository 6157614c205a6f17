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

template <class T>
TfmStatus runSplit(const TfmgOddSplit<T>& split, T* out, const SplitGroup<T>& group);

// Subsequence s of each column takes every g-th sample from s on; its columns stand at s f of a row of the scratch.
template <class T>
TfmStatus runSplitColumns(const TfmgOddSplitColumns<T>& columns, T* scratch, const SplitGroup<T>& group) {
  if (!isColumnKind(columns.kind)) {
    return tfmStsBadArg;
  }
  if (columns.kind != kSplitColumn) {
    runColumnKernel<T>(columns.kind, {.up = group.up,
                                      .down = group.down,
                                      .stride = columns.stride2,
                                      .out = scratch + group.column,
                                      .rowStride = columns.groupStep,
                                      .count = columns.subFactor,
                                      .inStep = columns.twoFactor,
                                      .outStep = columns.factor});
    return tfmStsOk;
  }
  const auto& split = *recordOf<TfmgOddSplit<T>>(tfmgListItem(columns.stageList, 0));
  for (std::ptrdiff_t s = 0; s < columns.subFactor; ++s) {
    const std::ptrdiff_t shift = s * columns.twoFactor;
    runSplit<T>(split, scratch, {group.up + shift, group.down - shift, group.column + s * columns.factor});
  }
  return tfmStsOk;
}

template <class T>
TfmStatus runSplit(const TfmgOddSplit<T>& split, T* out, const SplitGroup<T>& group) {
  if (split.kind != 1) {
    return tfmStsBadArg;
  }
  runSplitColumns(*recordOf<TfmgOddSplitColumns<T>>(tfmgListItem(split.columnList, 0)), split.work, group);
  return runSplitMerge(*recordOf<TfmgOddSplitMerge<T>>(tfmgListItem(split.mergeList, 0)), out, split.work,
                       group.column);
}

} // namespace

template <class T>
TfmStatus runColumnLoop(const TfmgOddColumnLoop<T>& loop, T* work, const T* src) {
  if (!isColumnKind(loop.kind)) {
    return tfmStsBadArg;
  }
  if (loop.kind != kSplitColumn) {
    runColumnKernel<T>(loop.kind, {.up = src,
                                   .down = src + loop.mirror,
                                   .stride = loop.twoFactor,
                                   .out = work,
                                   .rowStride = loop.factor,
                                   .count = loop.columnGroups,
                                   .inStep = kLanes<T>,
                                   .outStep = kLanes<T>});
    return tfmStsOk;
  }
  const auto& split = *recordOf<TfmgOddSplit<T>>(tfmgListItem(loop.stageList, 0));
  for (std::ptrdiff_t column = 0; column < loop.factor; column += kLanes<T>) {
    runSplit<T>(split, work, {src + column, src + (loop.mirror - column), column});
  }
  return tfmStsOk;
}

template TfmStatus runColumnLoop(const TfmgOddColumnLoop<Tfm32f>&, Tfm32f*, const Tfm32f*);
template TfmStatus runColumnLoop(const TfmgOddColumnLoop<Tfm64f>&, Tfm64f*, const Tfm64f*);

} // namespace tfmgen::dct4
