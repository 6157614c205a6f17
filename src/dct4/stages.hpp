// The two stages of a plan, kind 6, and what they are made of. Every routine tests the kind of its own record first,
// returns tfmStsBadArg for one that no construction leaves and has written nothing then.
//
// A matrix of columns, such as `work`, has a row for the real parts and a row for the imaginary parts of each result i
// of the columns' transforms: rows 2i and 2i+1. Its rows are 16-byte aligned.
#pragma once

#include "records.hpp"

#include <cstddef>

namespace tfmgen::dct4 {

// Groups of L adjacent columns, one in each lane. Sample t of lane l stands at up[t stride + l] in the first half of a
// column and, with its sign changed, at down[-t stride - l] in the second; neither needs an alignment. The result goes
// to rows of `rowStride` samples at `out`. From one group to the next `up` and `down` move apart from or towards each
// other by `inStep`, and `out` moves by `outStep`.
template <class T>
struct ColumnGroups {
  const T* up;
  const T* down;
  std::ptrdiff_t stride;
  T* out;
  std::ptrdiff_t rowStride;
  std::int32_t count; // at least 1
  std::ptrdiff_t inStep;
  std::ptrdiff_t outStep;
};

// T(2), T(4), .. T(64) by kind, from 1 to 6.
template <class T>
void runColumnKernel(std::int32_t kind, const ColumnGroups<T>& groups);

// All columns of `src`, from N samples to the N samples of `work`.
template <class T>
TfmStatus runColumnLoop(const TfmgOddColumnLoop<T>& loop, T* work, const T* src);

// The last step of a split, for L columns that start at `column` of a row: from the split's scratch to `out`.
template <class T>
TfmStatus runSplitMerge(const TfmgOddSplitMerge<T>& merge, T* out, const T* scratch, std::ptrdiff_t column);

// All rows of `work`, N samples, into the N samples of `dst`, which needs no alignment.
template <class T>
TfmStatus runMergeLoop(const TfmgDCT4MergeLoop<T>& loop, T* dst, const T* work);

} // namespace tfmgen::dct4
