// The records of a plan: a tree in one buffer. N is the plan's length, f the factor chosen for it, n = N/f the length
// of a column, L the lanes of a vector. All layouts are fixed, and all numbers are set when the plan is built.
#pragma once

#include "head.hpp"
#include "list.hpp"
#include "tfmgen.h"

#include <cstdint>

// The root. One type serves both sample types, as the public header names it; `work` points to samples of the plan's.
struct TfmgDCT4Plan {
  tfmgen::dct4::TfmgPlanHead head;
  tfmgen::dct4::TfmgPlanList* owned;
  tfmgen::dct4::TfmgPlanList* mergeList;
  tfmgen::dct4::TfmgPlanList* columnList;
  void* work; // N samples between the two stages; null at kinds 1 to 5
  std::int32_t kind;
  std::int32_t factor;
  std::int32_t length;
};

namespace tfmgen::dct4 {

// Kinds of the root: log2 N for the codelets of N = 2 to 32, and this one for all that runs in stages.
inline constexpr std::int32_t kStagedPlan = 6;
// The kind of a column record whose length has no kernel and is split.
inline constexpr std::int32_t kSplitColumn = 7;

template <class T>
struct TfmgDCT4TwiddleSource {
  TfmgSourceHead<TfmgDCT4TwiddleSource, T, std::int32_t, std::int32_t> head; // (row, column)
  std::int32_t twoFactor;
  std::int32_t eightLength;
  std::int32_t rows;
  std::int32_t factor;
  std::int32_t rowStride;
};

template <class T>
struct TfmgDCT4LaneSource {
  TfmgSourceHead<TfmgDCT4LaneSource, T, std::int32_t, std::int32_t, std::int32_t> head; // (block, lane, column)
  std::int32_t twoFactor;
  std::int32_t blocks;
  const TfmgDCT4TwiddleSource<T>* source;
};

template <class T>
struct TfmgOddAngleSource {
  TfmgSourceHead<TfmgOddAngleSource, T, std::int32_t> head; // (row)
  std::int32_t splitLength;
  std::int32_t subFactor;
};

template <class T>
struct TfmgDCT4MergeStage {
  TfmgPlanHead head;
  TfmgPlanList* owned;
  TfmgPlanList* stageList;
  T* table; // null
  std::int32_t kind;
  std::int32_t factor;
  std::int32_t length;
  std::int32_t twoFactor;
  std::int32_t rows;
  std::int32_t length2;
  std::int32_t mirror;
  std::int32_t columnLength;
  const TfmgDCT4TwiddleSource<T>* source;
};

template <class T>
struct TfmgDCT4MergeLoop {
  TfmgPlanHead head;
  TfmgPlanList* owned;
  T* table; // blocks x 2f vectors
  std::int32_t kind;
  std::int32_t factor;
  std::int32_t length;
  std::int32_t twoFactor;
  std::int32_t blockStride; // samples of `work` from one block of L rows to the next
  std::int32_t blocks;
  std::int32_t length2;
  std::int32_t mirror;
  std::int32_t columnLength;
  const TfmgDCT4LaneSource<T>* source;
};

template <class T>
struct TfmgOddColumnStage {
  TfmgPlanHead head;
  TfmgPlanList* owned;
  TfmgPlanList* stageList;
  T* table; // null
  std::int32_t kind;
  std::int32_t columnLength;
  std::int32_t length;
  std::int32_t mirror;
  std::int32_t twoFactor;
  std::int32_t factor;
  std::int32_t length2;
  std::int32_t factor2;
};

template <class T>
struct TfmgOddColumnLoop {
  TfmgPlanHead head;
  TfmgPlanList* owned;
  TfmgPlanList* stageList;
  T* table; // null
  std::int32_t kind;
  std::int32_t columnLength;
  std::int32_t length;
  std::int32_t mirror;
  std::int32_t twoFactor;
  std::int32_t columnGroups; // groups of L columns
  std::int32_t length2;
  std::int32_t factor;
};

// Below here f is the column count of the level: that of the root, times the factor of every split above.
template <class T>
struct TfmgOddSplit {
  TfmgPlanHead head;
  TfmgPlanList* owned;
  TfmgPlanList* mergeList;
  TfmgPlanList* columnList;
  T* work; // workLength samples
  std::int32_t kind;
  std::int32_t splitLength; // m
  std::int32_t subFactor;   // g
  std::int32_t inStride;
  std::int32_t outStride;
  std::int32_t twoFactor; // samples from one element of a column to the next
  std::int32_t workLength;
  std::int32_t factor;
};

template <class T>
struct TfmgOddSplitMerge {
  TfmgPlanHead head;
  TfmgPlanList* owned;
  T* table; // halfRows x (2g - 2) vectors
  std::int32_t kind;
  std::int32_t subFactor; // g
  std::int32_t workLength;
  std::int32_t factor;
  std::int32_t stride2;  // samples of scratch from one row pair to the next
  std::int32_t halfRows; // m / 2g
  std::int32_t length;   // m
  std::int32_t halfLength;
  std::int32_t lastIndex;
  std::int32_t factor2;
  std::int32_t subLength; // r = m / g
  const TfmgOddAngleSource<T>* source;
};

template <class T>
struct TfmgOddSplitColumns {
  TfmgPlanHead head;
  TfmgPlanList* owned;
  TfmgPlanList* stageList;
  T* table; // null
  std::int32_t kind;
  std::int32_t subLength; // r
  std::int32_t inStride;
  std::int32_t outStride;
  std::int32_t stride2; // samples from one element of a subsequence to the next
  std::int32_t twoFactor;
  std::int32_t subFactor; // g
  std::int32_t workLength;
  std::int32_t groupStep; // g f: samples of a row of the scratch
  std::int32_t factor;
};

} // namespace tfmgen::dct4
