#include "call.hpp"
#include "tfmbatch.h"
#include "transforms.hpp"

using namespace tfmgen::batch;

// One frame in one piece is a single call, whose checks are the same.

#define TFMBATCH_DEFINE(name, suffix, Sample, transform, format)                                                       \
  TfmStatus tfmb##name##_##suffix(const Sample* pSrc, TfmbLayout srcLayout, Sample* pDst, TfmbLayout dstLayout,        \
                                  int32_t len, int64_t count, int32_t flag) {                                          \
    if (count == 1 && srcLayout.step == 1 && dstLayout.step == 1) {                                                    \
      return tfmg##name##_##suffix(pSrc, pDst, len, flag);                                                             \
    }                                                                                                                  \
    return call(k##name##_##suffix, pSrc, srcLayout, pDst, dstLayout, len, count, flag, kWidths.front());              \
  }
TFMBATCH_FOR_EACH_FAMILY(TFMBATCH_DEFINE)
