// The twiddle tables of a plan and the source records that compute them.
#pragma once

#include "records.hpp"

#include <cstdint>

namespace tfmgen::dct4 {

// Fill a source record.
template <class T>
void fillTwiddleSource(TfmgDCT4TwiddleSource<T>* source, TfmgArena* arena, std::int32_t length, std::int32_t factor);
template <class T>
void fillLaneSource(TfmgDCT4LaneSource<T>* source, TfmgArena* arena, const TfmgDCT4TwiddleSource<T>* twiddles,
                    std::int32_t blocks);
template <class T>
void fillAngleSource(TfmgOddAngleSource<T>* source, TfmgArena* arena, std::int32_t splitLength, std::int32_t subFactor);

// Take a table of the arena, fill it and store it in the record, whose other fields are set.
template <class T>
void makeMergeTable(TfmgDCT4MergeLoop<T>* loop);
template <class T>
void makeSplitTable(TfmgOddSplitMerge<T>* merge);

} // namespace tfmgen::dct4
