// The exported execution of a plan.
#include "codelets.hpp"
#include "stages.hpp"

namespace tfmgen::dct4 {
namespace {

// A stage whose kind is not 1 is skipped, and what a stage returns is dropped: a bad kind of the root is the one
// failure of an execution.
template <class T>
[[gnu::noinline]] TfmStatus runStages(const TfmgDCT4Plan& plan, const T* src, T* dst) {
  auto* work = static_cast<T*>(plan.work);
  const auto* column = recordOf<TfmgOddColumnStage<T>>(tfmgListItem(plan.columnList, 0));
  if (column->kind == 1) {
    runColumnLoop(*recordOf<TfmgOddColumnLoop<T>>(tfmgListItem(column->stageList, 0)), work, src);
  }
  const auto* merge = recordOf<TfmgDCT4MergeStage<T>>(tfmgListItem(plan.mergeList, 0));
  if (merge->kind == 1) {
    runMergeLoop(*recordOf<TfmgDCT4MergeLoop<T>>(tfmgListItem(merge->stageList, 0)), dst, work);
  }
  return tfmStsOk;
}

template <class T>
TfmStatus run(const TfmgDCT4Plan& plan, const T* src, T* dst) {
  switch (plan.kind) {
  case 1: return codelet<T, 2>(src, dst);
  case 2: return codelet<T, 4>(src, dst);
  case 3: return codelet<T, 8>(src, dst);
  case 4: return codelet<T, 16>(src, dst);
  case 5: return codelet<T, 32>(src, dst);
  case kStagedPlan: return runStages(plan, src, dst);
  default: return tfmStsBadArg;
  }
}

template <class T>
TfmStatus checkAndRun(const T* src, T* dst, const TfmgDCT4Plan* plan) {
  if (plan == nullptr || src == nullptr || dst == nullptr) {
    return tfmStsNullPtr;
  }
  return run(*plan, src, dst);
}

} // namespace
} // namespace tfmgen::dct4

TfmStatus tfmgDCT4_32f(const Tfm32f* pSrc, Tfm32f* pDst, TfmgDCT4Plan* pPlan) {
  return tfmgen::dct4::checkAndRun(pSrc, pDst, pPlan);
}
TfmStatus tfmgDCT4_64f(const Tfm64f* pSrc, Tfm64f* pDst, TfmgDCT4Plan* pPlan) {
  return tfmgen::dct4::checkAndRun(pSrc, pDst, pPlan);
}
