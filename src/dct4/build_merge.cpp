// The merge stage of a plan and its loop, which holds the merge table.
#include "build.hpp"
#include "factor.hpp"
#include "kernel/vector.hpp"
#include "tables.hpp"

namespace tfmgen::dct4 {
namespace {

// Kinds of a merge loop: one more than log2 of the factor.
constexpr std::int32_t mergeKind(std::int32_t factor) {
  return kindOf(2 * factor, 2 * kLastFactor, 0);
}

template <class T>
void releaseMergeLoop(TfmgPlanItem* item) {
  auto* loop = recordOf<TfmgDCT4MergeLoop<T>>(item);
  if (loop->kind >= 1 && loop->kind <= mergeKind(kLastFactor)) {
    tfmgArenaGiveBack(loop->head.arena, loop->table, vectorBytes(loop->blocks, loop->twoFactor));
  }
  releaseOwned(loop->owned);
}

template <class T>
TfmStatus buildMergeLoop(TfmgPlanHead* head) {
  auto* loop = recordOf<TfmgDCT4MergeLoop<T>>(head);
  loop->kind = mergeKind(loop->factor);
  if (loop->kind == 0) {
    return tfmStsBadSize;
  }
  makeMergeTable(loop);
  return tfmStsOk;
}

template <class T>
void fillMergeLoop(TfmgDCT4MergeLoop<T>* loop, const TfmgDCT4MergeStage<T>* stage,
                   const TfmgDCT4LaneSource<T>* source) {
  fillHead(loop, stage->head.arena, releaseMergeLoop<T>, buildMergeLoop<T>);
  loop->table = nullptr;
  loop->kind = 0;
  loop->factor = stage->factor;
  loop->length = stage->length;
  loop->twoFactor = stage->twoFactor;
  loop->blockStride = kLanes<T> * stage->twoFactor;
  loop->blocks = stage->rows / kLanes<T>;
  loop->length2 = stage->length;
  loop->mirror = stage->mirror;
  loop->columnLength = stage->columnLength;
  loop->source = source;
  loop->owned = takeList(loop->head.arena);
}

template <class T>
void releaseMergeStage(TfmgPlanItem* item) {
  auto* stage = recordOf<TfmgDCT4MergeStage<T>>(item);
  if (stage->kind == 1) {
    tfmgArenaGiveBack(stage->head.arena, stage->table, 0);
  }
  releaseMentions(stage->stageList);
  releaseOwned(stage->owned);
}

template <class T>
TfmStatus buildMergeStage(TfmgPlanHead* head) {
  auto* stage = recordOf<TfmgDCT4MergeStage<T>>(head);
  if (stage->rows % kLanes<T> != 0) {
    return tfmStsBadSize;
  }
  stage->kind = 1;
  const auto fillSource = [&](TfmgDCT4LaneSource<T>* source, TfmgArena* arena) {
    fillLaneSource(source, arena, stage->source, stage->rows / kLanes<T>);
  };
  return buildWithSource<TfmgDCT4MergeLoop<T>, TfmgDCT4LaneSource<T>>(stage, stage->stageList, fillSource,
                                                                      fillMergeLoop<T>);
}

} // namespace

template <class T>
void fillMergeStage(TfmgDCT4MergeStage<T>* stage, const TfmgDCT4Plan* plan, const TfmgDCT4TwiddleSource<T>* source) {
  TfmgArena* arena = plan->head.arena;
  const std::int32_t length = plan->length;
  const std::int32_t factor = plan->factor;
  fillHead(stage, arena, releaseMergeStage<T>, buildMergeStage<T>);
  stage->table = nullptr;
  stage->kind = 0;
  stage->factor = factor;
  stage->length = length;
  stage->twoFactor = 2 * factor;
  stage->rows = length / (2 * factor);
  stage->length2 = length;
  stage->mirror = mirrorOf(length);
  stage->columnLength = length / factor;
  stage->source = source;
  stage->stageList = takeList(arena);
  stage->owned = takeList(arena);
}

template void fillMergeStage(TfmgDCT4MergeStage<Tfm32f>*, const TfmgDCT4Plan*, const TfmgDCT4TwiddleSource<Tfm32f>*);
template void fillMergeStage(TfmgDCT4MergeStage<Tfm64f>*, const TfmgDCT4Plan*, const TfmgDCT4TwiddleSource<Tfm64f>*);

} // namespace tfmgen::dct4
