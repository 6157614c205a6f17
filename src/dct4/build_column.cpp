// The column stage of a plan and its loop.
#include "build.hpp"
#include "factor.hpp"
#include "kernel/vector.hpp"

namespace tfmgen::dct4 {
namespace {

template <class T>
void releaseColumnLoop(TfmgPlanItem* item) {
  auto* loop = recordOf<TfmgOddColumnLoop<T>>(item);
  if (loop->kind >= 1 && loop->kind <= kSplitColumn) {
    tfmgArenaGiveBack(loop->head.arena, loop->table, 0);
  }
  releaseMentions(loop->stageList);
  releaseOwned(loop->owned);
}

template <class T>
TfmStatus buildColumnLoop(TfmgPlanHead* head) {
  auto* loop = recordOf<TfmgOddColumnLoop<T>>(head);
  loop->kind = kindOf(loop->columnLength, kLastColumn, kSplitColumn);
  if (loop->kind != kSplitColumn) {
    return tfmStsOk;
  }
  auto* split = createSplit<T>(loop->head.arena, {.splitLength = loop->columnLength,
                                                  .inStride = loop->length,
                                                  .outStride = loop->length,
                                                  .twoFactor = loop->twoFactor,
                                                  .workLength = loop->length,
                                                  .factor = loop->factor});
  appendToBoth(loop->owned, loop->stageList, &split->head.item);
  return build(split->head);
}

template <class T>
TfmgOddColumnLoop<T>* createColumnLoop(const TfmgOddColumnStage<T>* stage) {
  TfmgArena* arena = stage->head.arena;
  auto* loop = makeRecord<TfmgOddColumnLoop<T>>(arena, releaseColumnLoop<T>, buildColumnLoop<T>);
  loop->table = nullptr;
  loop->kind = 0;
  loop->columnLength = stage->columnLength;
  loop->length = stage->length;
  loop->mirror = stage->mirror;
  loop->twoFactor = stage->twoFactor;
  loop->columnGroups = stage->factor / kLanes<T>;
  loop->length2 = stage->length;
  loop->factor = stage->factor;
  loop->stageList = takeList(arena);
  loop->owned = takeList(arena);
  return loop;
}

template <class T>
void releaseColumnStage(TfmgPlanItem* item) {
  auto* stage = recordOf<TfmgOddColumnStage<T>>(item);
  if (stage->kind == 1) {
    tfmgArenaGiveBack(stage->head.arena, stage->table, 0);
  }
  releaseMentions(stage->stageList);
  releaseOwned(stage->owned);
}

template <class T>
TfmStatus buildColumnStage(TfmgPlanHead* head) {
  auto* stage = recordOf<TfmgOddColumnStage<T>>(head);
  if (stage->factor % kLanes<T> != 0) {
    return tfmStsBadSize;
  }
  stage->kind = 1;
  auto* loop = createColumnLoop(stage);
  appendToBoth(stage->owned, stage->stageList, &loop->head.item);
  return build(loop->head);
}

} // namespace

template <class T>
TfmgOddColumnStage<T>* createColumnStage(TfmgArena* arena, std::int32_t length, std::int32_t factor) {
  auto* stage = makeRecord<TfmgOddColumnStage<T>>(arena, releaseColumnStage<T>, buildColumnStage<T>);
  stage->table = nullptr;
  stage->kind = 0;
  stage->columnLength = length / factor;
  stage->length = length;
  stage->mirror = mirrorOf(length);
  stage->twoFactor = 2 * factor;
  stage->factor = factor;
  stage->length2 = length;
  stage->factor2 = factor;
  stage->stageList = takeList(arena);
  stage->owned = takeList(arena);
  return stage;
}

template TfmgOddColumnStage<Tfm32f>* createColumnStage(TfmgArena*, std::int32_t, std::int32_t);
template TfmgOddColumnStage<Tfm64f>* createColumnStage(TfmgArena*, std::int32_t, std::int32_t);

} // namespace tfmgen::dct4
