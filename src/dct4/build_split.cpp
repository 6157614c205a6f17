// The split of a column too long for a kernel: its merge, which holds the split table, and its columns, which may be
// split again.
#include "build.hpp"
#include "factor.hpp"
#include "tables.hpp"

namespace tfmgen::dct4 {
namespace {

// The kind of a split by kLastFactor, the last one.
constexpr std::int32_t kLastSplitKind = kindOf(kLastFactor, kLastFactor, 0);

template <class T>
void releaseSplitMerge(TfmgPlanItem* item) {
  auto* merge = recordOf<TfmgOddSplitMerge<T>>(item);
  if (merge->kind >= 1 && merge->kind <= kLastSplitKind) {
    tfmgArenaGiveBack(merge->head.arena, merge->table, vectorBytes(merge->halfRows, 2 * merge->subFactor - 2));
  }
  releaseOwned(merge->owned);
}

template <class T>
TfmStatus buildSplitMerge(TfmgPlanHead* head) {
  auto* merge = recordOf<TfmgOddSplitMerge<T>>(head);
  merge->kind = kindOf(merge->subFactor, kLastFactor, 0);
  if (merge->kind == 0) {
    return tfmStsBadSize;
  }
  makeSplitTable(merge);
  return tfmStsOk;
}

template <class T>
void fillSplitMerge(TfmgOddSplitMerge<T>* merge, const TfmgOddSplit<T>* split, const TfmgOddAngleSource<T>* source) {
  fillHead(merge, split->head.arena, releaseSplitMerge<T>, buildSplitMerge<T>);
  merge->table = nullptr;
  merge->kind = 0;
  merge->subFactor = split->subFactor;
  merge->workLength = split->workLength;
  merge->factor = split->factor;
  merge->stride2 = split->subFactor * split->twoFactor;
  merge->halfRows = split->splitLength / (2 * split->subFactor);
  merge->length = split->splitLength;
  merge->halfLength = split->splitLength / 2;
  merge->lastIndex = split->splitLength - 1;
  merge->factor2 = split->factor;
  merge->subLength = split->splitLength / split->subFactor;
  merge->source = source;
  merge->owned = takeList(merge->head.arena);
}

template <class T>
void releaseSplitColumns(TfmgPlanItem* item) {
  auto* columns = recordOf<TfmgOddSplitColumns<T>>(item);
  if (columns->kind >= 1 && columns->kind <= kSplitColumn) {
    tfmgArenaGiveBack(columns->head.arena, columns->table, 0);
  }
  releaseMentions(columns->stageList);
  releaseOwned(columns->owned);
}

template <class T>
TfmStatus buildSplitColumns(TfmgPlanHead* head) {
  auto* columns = recordOf<TfmgOddSplitColumns<T>>(head);
  columns->kind = kindOf(columns->subLength, kLastColumn, kSplitColumn);
  if (columns->kind != kSplitColumn) {
    return tfmStsOk;
  }
  auto* split = createSplit<T>(columns->head.arena, {.splitLength = columns->subLength,
                                                     .inStride = columns->inStride,
                                                     .outStride = columns->outStride,
                                                     .twoFactor = columns->stride2,
                                                     .workLength = columns->workLength,
                                                     .factor = columns->groupStep});
  appendToBoth(columns->owned, columns->stageList, &split->head.item);
  return build(split->head);
}

template <class T>
TfmgOddSplitColumns<T>* createSplitColumns(const TfmgOddSplit<T>* split) {
  TfmgArena* arena = split->head.arena;
  auto* columns = makeRecord<TfmgOddSplitColumns<T>>(arena, releaseSplitColumns<T>, buildSplitColumns<T>);
  columns->table = nullptr;
  columns->kind = 0;
  columns->subLength = split->splitLength / split->subFactor;
  columns->inStride = split->inStride;
  columns->outStride = split->outStride;
  columns->stride2 = split->subFactor * split->twoFactor;
  columns->twoFactor = split->twoFactor;
  columns->subFactor = split->subFactor;
  columns->workLength = split->workLength;
  columns->groupStep = split->subFactor * split->factor;
  columns->factor = split->factor;
  columns->stageList = takeList(arena);
  columns->owned = takeList(arena);
  return columns;
}

// A refused split gives back the scratch that it has not taken yet: the word of a refused plan has no meaning.
template <class T>
void releaseSplit(TfmgPlanItem* item) {
  auto* split = recordOf<TfmgOddSplit<T>>(item);
  if (split->kind == 1) {
    tfmgArenaGiveBack(split->head.arena, split->work, sampleBytes<T>(split->workLength));
  }
  releaseMentions(split->mergeList);
  releaseMentions(split->columnList);
  releaseOwned(split->owned);
}

template <class T>
TfmStatus buildMerge(TfmgOddSplit<T>* split) {
  const auto fillSource = [&](TfmgOddAngleSource<T>* source, TfmgArena* arena) {
    fillAngleSource(source, arena, split->splitLength, split->subFactor);
  };
  return buildWithSource<TfmgOddSplitMerge<T>, TfmgOddAngleSource<T>>(split, split->mergeList, fillSource,
                                                                      fillSplitMerge<T>);
}

template <class T>
TfmStatus buildSplit(TfmgPlanHead* head) {
  auto* split = recordOf<TfmgOddSplit<T>>(head);
  split->kind = 1;
  if (!tfmgDCT4ChooseFactor(split->splitLength / 2, split->subFactor)) {
    return tfmStsBadSize;
  }
  if (const TfmStatus status = buildMerge(split); status != tfmStsOk) {
    return status;
  }
  auto* columns = createSplitColumns(split);
  appendToBoth(split->owned, split->columnList, &columns->head.item);
  if (const TfmStatus status = build(columns->head); status != tfmStsOk) {
    return status;
  }
  split->work = takeSamples<T>(split->head.arena, sampleBytes<T>(split->workLength));
  return tfmStsOk;
}

} // namespace

template <class T>
TfmgOddSplit<T>* createSplit(TfmgArena* arena, const SplitPlace& place) {
  auto* split = makeRecord<TfmgOddSplit<T>>(arena, releaseSplit<T>, buildSplit<T>);
  split->work = nullptr;
  split->kind = 0;
  split->splitLength = place.splitLength;
  split->inStride = place.inStride;
  split->outStride = place.outStride;
  split->twoFactor = place.twoFactor;
  split->workLength = place.workLength;
  split->factor = place.factor;
  split->mergeList = takeList(arena);
  split->columnList = takeList(arena);
  split->owned = takeList(arena);
  return split;
}

template TfmgOddSplit<Tfm32f>* createSplit(TfmgArena*, const SplitPlace&);
template TfmgOddSplit<Tfm64f>* createSplit(TfmgArena*, const SplitPlace&);

} // namespace tfmgen::dct4
