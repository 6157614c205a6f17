// The column stage: all columns by their kernel, or by splits where they are too long for one. A long column is
// finished for one group before the next group starts.
#include "factor.hpp"
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
  for (std::ptrdiff_t s = 0; s < columns.subFactor; ++s) {
    const SplitGroup<T> part{group.up + s * columns.twoFactor, group.down - s * columns.twoFactor,
                             group.column + s * columns.factor};
    if (columns.kind == kSplitColumn) {
      runSplit(*recordOf<TfmgOddSplit<T>>(tfmgListItem(columns.stageList, 0)), scratch, part);
    } else {
      runColumnKernel<T>(columns.kind, {part.up, part.down, columns.stride2, scratch + part.column, columns.groupStep});
    }
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
  for (std::ptrdiff_t column = 0; column < loop.factor; column += kLanes<T>) {
    const T* up = src + column;
    const T* down = src + (loop.mirror - column);
    if (loop.kind == kSplitColumn) {
      runSplit<T>(*recordOf<TfmgOddSplit<T>>(tfmgListItem(loop.stageList, 0)), work, {up, down, column});
    } else {
      runColumnKernel<T>(loop.kind, {up, down, loop.twoFactor, work + column, loop.factor});
    }
  }
  return tfmStsOk;
}

template TfmStatus runColumnLoop(const TfmgOddColumnLoop<Tfm32f>&, Tfm32f*, const Tfm32f*);
template TfmStatus runColumnLoop(const TfmgOddColumnLoop<Tfm64f>&, Tfm64f*, const Tfm64f*);

} // namespace tfmgen::dct4
