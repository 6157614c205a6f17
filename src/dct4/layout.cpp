// The layout of a plan's memory, checked where a wrong number would otherwise show only at run time.
#include "records.hpp"

#include <cstddef>

namespace tfmgen::dct4 {
namespace {

static_assert(sizeof(TfmgDCT4Plan) == 80 && offsetof(TfmgDCT4Plan, owned) == 32 &&
              offsetof(TfmgDCT4Plan, mergeList) == 40 && offsetof(TfmgDCT4Plan, columnList) == 48 &&
              offsetof(TfmgDCT4Plan, work) == 56 && offsetof(TfmgDCT4Plan, kind) == 64 &&
              offsetof(TfmgDCT4Plan, factor) == 68 && offsetof(TfmgDCT4Plan, length) == 72);

// The other records come in one layout for both sample types.
template <class T>
struct Layout {
  using Twiddle = TfmgDCT4TwiddleSource<T>;
  static_assert(sizeof(Twiddle) == 56 && offsetof(Twiddle, head.value) == 16 && offsetof(Twiddle, head.arena) == 24 &&
                offsetof(Twiddle, twoFactor) == 32 && offsetof(Twiddle, eightLength) == 36 &&
                offsetof(Twiddle, rows) == 40 && offsetof(Twiddle, factor) == 44 && offsetof(Twiddle, rowStride) == 48);

  using Lane = TfmgDCT4LaneSource<T>;
  static_assert(sizeof(Lane) == 48 && offsetof(Lane, head.value) == 16 && offsetof(Lane, head.arena) == 24 &&
                offsetof(Lane, twoFactor) == 32 && offsetof(Lane, blocks) == 36 && offsetof(Lane, source) == 40);

  using Angle = TfmgOddAngleSource<T>;
  static_assert(sizeof(Angle) == 40 && offsetof(Angle, head.value) == 16 && offsetof(Angle, head.arena) == 24 &&
                offsetof(Angle, splitLength) == 32 && offsetof(Angle, subFactor) == 36);

  using Merge = TfmgDCT4MergeStage<T>;
  static_assert(sizeof(Merge) == 96 && offsetof(Merge, owned) == 32 && offsetof(Merge, stageList) == 40 &&
                offsetof(Merge, table) == 48 && offsetof(Merge, kind) == 56 && offsetof(Merge, factor) == 60 &&
                offsetof(Merge, length) == 64 && offsetof(Merge, twoFactor) == 68 && offsetof(Merge, rows) == 72 &&
                offsetof(Merge, length2) == 76 && offsetof(Merge, mirror) == 80 &&
                offsetof(Merge, columnLength) == 84 && offsetof(Merge, source) == 88);

  using MergeLoop = TfmgDCT4MergeLoop<T>;
  static_assert(sizeof(MergeLoop) == 96 && offsetof(MergeLoop, owned) == 32 && offsetof(MergeLoop, table) == 40 &&
                offsetof(MergeLoop, kind) == 48 && offsetof(MergeLoop, factor) == 52 &&
                offsetof(MergeLoop, length) == 56 && offsetof(MergeLoop, twoFactor) == 60 &&
                offsetof(MergeLoop, blockStride) == 64 && offsetof(MergeLoop, blocks) == 68 &&
                offsetof(MergeLoop, length2) == 72 && offsetof(MergeLoop, mirror) == 76 &&
                offsetof(MergeLoop, columnLength) == 80 && offsetof(MergeLoop, source) == 88);

  using Column = TfmgOddColumnStage<T>;
  static_assert(sizeof(Column) == 88 && offsetof(Column, owned) == 32 && offsetof(Column, stageList) == 40 &&
                offsetof(Column, table) == 48 && offsetof(Column, kind) == 56 && offsetof(Column, columnLength) == 60 &&
                offsetof(Column, length) == 64 && offsetof(Column, mirror) == 68 && offsetof(Column, twoFactor) == 72 &&
                offsetof(Column, factor) == 76 && offsetof(Column, length2) == 80 && offsetof(Column, factor2) == 84);

  using ColumnLoop = TfmgOddColumnLoop<T>;
  static_assert(sizeof(ColumnLoop) == 88 && offsetof(ColumnLoop, owned) == 32 &&
                offsetof(ColumnLoop, stageList) == 40 && offsetof(ColumnLoop, table) == 48 &&
                offsetof(ColumnLoop, kind) == 56 && offsetof(ColumnLoop, columnLength) == 60 &&
                offsetof(ColumnLoop, length) == 64 && offsetof(ColumnLoop, mirror) == 68 &&
                offsetof(ColumnLoop, twoFactor) == 72 && offsetof(ColumnLoop, columnGroups) == 76 &&
                offsetof(ColumnLoop, length2) == 80 && offsetof(ColumnLoop, factor) == 84);

  using Split = TfmgOddSplit<T>;
  static_assert(sizeof(Split) == 96 && offsetof(Split, owned) == 32 && offsetof(Split, mergeList) == 40 &&
                offsetof(Split, columnList) == 48 && offsetof(Split, work) == 56 && offsetof(Split, kind) == 64 &&
                offsetof(Split, splitLength) == 68 && offsetof(Split, subFactor) == 72 &&
                offsetof(Split, inStride) == 76 && offsetof(Split, outStride) == 80 &&
                offsetof(Split, twoFactor) == 84 && offsetof(Split, workLength) == 88 && offsetof(Split, factor) == 92);

  using SplitMerge = TfmgOddSplitMerge<T>;
  static_assert(sizeof(SplitMerge) == 104 && offsetof(SplitMerge, owned) == 32 && offsetof(SplitMerge, table) == 40 &&
                offsetof(SplitMerge, kind) == 48 && offsetof(SplitMerge, subFactor) == 52 &&
                offsetof(SplitMerge, workLength) == 56 && offsetof(SplitMerge, factor) == 60 &&
                offsetof(SplitMerge, stride2) == 64 && offsetof(SplitMerge, halfRows) == 68 &&
                offsetof(SplitMerge, length) == 72 && offsetof(SplitMerge, halfLength) == 76 &&
                offsetof(SplitMerge, lastIndex) == 80 && offsetof(SplitMerge, factor2) == 84 &&
                offsetof(SplitMerge, subLength) == 88 && offsetof(SplitMerge, source) == 96);

  using SplitColumns = TfmgOddSplitColumns<T>;
  static_assert(sizeof(SplitColumns) == 96 && offsetof(SplitColumns, owned) == 32 &&
                offsetof(SplitColumns, stageList) == 40 && offsetof(SplitColumns, table) == 48 &&
                offsetof(SplitColumns, kind) == 56 && offsetof(SplitColumns, subLength) == 60 &&
                offsetof(SplitColumns, inStride) == 64 && offsetof(SplitColumns, outStride) == 68 &&
                offsetof(SplitColumns, stride2) == 72 && offsetof(SplitColumns, twoFactor) == 76 &&
                offsetof(SplitColumns, subFactor) == 80 && offsetof(SplitColumns, workLength) == 84 &&
                offsetof(SplitColumns, groupStep) == 88 && offsetof(SplitColumns, factor) == 92);
};

template struct Layout<Tfm32f>;
template struct Layout<Tfm64f>;

} // namespace
} // namespace tfmgen::dct4
