// The root of a plan.
#include "build.hpp"
#include "factor.hpp"
#include "tables.hpp"

namespace tfmgen::dct4 {
namespace {

template <class T>
void releasePlan(TfmgPlanItem* item) {
  auto* plan = recordOf<TfmgDCT4Plan>(item);
  if (plan->kind >= 1 && plan->kind <= kStagedPlan) {
    tfmgArenaGiveBack(plan->head.arena, plan->work, plan->kind == kStagedPlan ? sampleBytes<T>(plan->length) : 0);
  }
  releaseMentions(plan->mergeList);
  releaseMentions(plan->columnList);
  releaseOwned(plan->owned);
}

template <class T>
TfmStatus buildMergeStage(TfmgDCT4Plan* plan) {
  const auto fillSource = [&](TfmgDCT4TwiddleSource<T>* source, TfmgArena* arena) {
    fillTwiddleSource(source, arena, plan->length, plan->factor);
  };
  return buildWithSource<TfmgDCT4MergeStage<T>, TfmgDCT4TwiddleSource<T>>(plan, plan->mergeList, fillSource,
                                                                          fillMergeStage<T>);
}

template <class T>
TfmStatus buildColumnStage(TfmgDCT4Plan* plan) {
  auto* stage = createColumnStage<T>(plan->head.arena, plan->length, plan->factor);
  appendToBoth(plan->owned, plan->columnList, &stage->head.item);
  return build(stage->head);
}

template <class T>
TfmStatus buildPlan(TfmgPlanHead* head) {
  auto* plan = recordOf<TfmgDCT4Plan>(head);
  plan->kind = kindOf(plan->length, kLastCodelet, kStagedPlan);
  if (plan->kind != kStagedPlan) {
    return tfmStsOk;
  }
  if (!tfmgDCT4ChooseFactor(plan->length / 2, plan->factor)) {
    return tfmStsBadSize;
  }
  if (const TfmStatus status = buildMergeStage<T>(plan); status != tfmStsOk) {
    return status;
  }
  if (const TfmStatus status = buildColumnStage<T>(plan); status != tfmStsOk) {
    return status;
  }
  plan->work = takeSamples<T>(plan->head.arena, sampleBytes<T>(plan->length));
  return tfmStsOk;
}

} // namespace

template <class T>
TfmgDCT4Plan* createPlan(TfmgArena* arena, std::int32_t length) {
  auto* plan = makeRecord<TfmgDCT4Plan>(arena, releasePlan<T>, buildPlan<T>);
  plan->work = nullptr;
  plan->kind = 0;
  plan->length = length;
  plan->mergeList = takeList(arena);
  plan->columnList = takeList(arena);
  plan->owned = takeList(arena);
  return plan;
}

template TfmgDCT4Plan* createPlan<Tfm32f>(TfmgArena*, std::int32_t);
template TfmgDCT4Plan* createPlan<Tfm64f>(TfmgArena*, std::int32_t);

} // namespace tfmgen::dct4
