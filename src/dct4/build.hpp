// Construction of the records, by the level that owns them. A `create` takes a record and the heads of its lists of the
// arena and fills it; its `build`, reached through the head, makes what belongs under it.
#pragma once

#include "records.hpp"

#include <cstdint>

namespace tfmgen::dct4 {

// Where a column of `factor` interleaved columns stands within a plan of `workLength` samples.
struct SplitPlace {
  std::int32_t splitLength;
  std::int32_t inStride;
  std::int32_t outStride;
  std::int32_t twoFactor;
  std::int32_t workLength;
  std::int32_t factor;
};

// The root of a plan of any length; a refused length shows in the build.
template <class T>
TfmgDCT4Plan* createPlan(TfmgArena* arena, std::int32_t length);

// Fills a merge stage and its lists; the record itself has been taken.
template <class T>
void fillMergeStage(TfmgDCT4MergeStage<T>* stage, const TfmgDCT4Plan* plan, const TfmgDCT4TwiddleSource<T>* source);

template <class T>
TfmgOddColumnStage<T>* createColumnStage(TfmgArena* arena, std::int32_t length, std::int32_t factor);

template <class T>
TfmgOddSplit<T>* createSplit(TfmgArena* arena, const SplitPlace& place);

// Appends to two lists: the one that owns the record and the one that execution follows.
inline void appendToBoth(TfmgPlanList* owned, TfmgPlanList* executed, TfmgPlanItem* item) {
  tfmgListAppend(executed, tfmgListAppend(owned, item));
}

inline TfmStatus build(TfmgPlanHead& head) {
  return head.build(&head);
}

// Makes a record under `owner` together with the source of what its tables hold, and builds it. The record lies before
// the source and stands behind it in the list of the owner; execution finds it in `executed`.
template <class Record, class Source>
TfmStatus buildWithSource(auto* owner, TfmgPlanList* executed, auto fillSource, auto fillRecord) {
  TfmgArena* arena = owner->head.arena;
  auto* record = takeRecord<Record>(arena);
  auto* source = takeRecord<Source>(arena);
  fillSource(source, arena);
  tfmgListAppend(owner->owned, &source->head.item);
  fillRecord(record, owner, source);
  appendToBoth(owner->owned, executed, &record->head.item);
  return build(record->head);
}

} // namespace tfmgen::dct4
