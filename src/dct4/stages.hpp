// The two stages of a plan, kind 6, and what they are made of. Every routine tests the kind of its own record first,
// returns tfmStsBadArg for one that no construction leaves and has written nothing then.
//
// A matrix of columns, such as `work`, has a row for the real parts and a row for the imaginary parts of each result i
// of the columns' transforms: rows 2i and 2i+1. Its rows are 16-byte aligned.
//
// Where vectors are longer than the L lanes of the plan's tables, a group of columns or of rows is as many as they
// have.
#pragma once

#include "factor.hpp"
#include "kernel/vector.hpp"
#include "records.hpp"

#include <cstddef>

namespace tfmgen::dct4 {

template <class T>
using WidestVector = Vector<T, kRegisterBytes>;
template <class V>
using HalfVector = Vector<Element<V>, sizeof(V) / 2>;

// Vectors side by side in a group of columns that is split: a cache line where vectors are longer than those of the
// tables. What a long column reads and writes lies at distances of powers of two: of such lines the first-level cache
// keeps a few only, and a line of which each group took a part would come anew for each of them.
template <class V>
inline constexpr int kParts = sizeof(V) == kBlockBytes ? 1 : 64 / int{sizeof(V)};
template <class V>
inline constexpr int kGroupLanes = kParts<V>* kLanesOf<V>;

// The scratch of a split has room for all columns of the plan. Where vectors are longer than those of the tables, each
// group takes the front of it, as a matrix of its own columns only: so much stays in a near cache. Not where its
// columns are split again, which needs the place that the records tell.
template <class V>
constexpr bool isPacked(std::int32_t subLength) {
  return sizeof(V) > kBlockBytes && subLength <= kLastColumn;
}

// Groups of adjacent columns, one in each lane of V. Sample t of lane l stands at up[t stride + l] in the first half of
// a column and, with its sign changed, at down[-t stride - l] in the second; neither needs an alignment. The result
// goes to rows of `rowStride` samples at `out`. From one group to the next `up` and `down` move apart from or towards
// each other by `inStep`, and `out` moves by `outStep`.
template <class V>
struct ColumnGroups {
  const Element<V>* up;
  const Element<V>* down;
  std::ptrdiff_t stride;
  Element<V>* out;
  std::ptrdiff_t rowStride;
  std::int32_t count; // at least 1
  std::ptrdiff_t inStep;
  std::ptrdiff_t outStep;
};

// T(2), T(4), .. T(64) by kind, from 1 to 6.
template <class V>
void runColumnKernel(std::int32_t kind, const ColumnGroups<V>& groups);

// All columns of `src`, from N samples to the N samples of `work`.
template <class T>
TfmStatus runColumnLoop(const TfmgOddColumnLoop<T>& loop, T* work, const T* src);

// The last step of a split, for the group of columns that starts at `column` of a row: from the split's scratch to
// `out`.
template <class V>
TfmStatus runSplitMerge(const TfmgOddSplitMerge<Element<V>>& merge, Element<V>* out, const Element<V>* scratch,
                        std::ptrdiff_t column);

// All rows of `work`, N samples, into the N samples of `dst`, which needs no alignment.
template <class T>
TfmStatus runMergeLoop(const TfmgDCT4MergeLoop<T>& loop, T* dst, const T* work);

} // namespace tfmgen::dct4
