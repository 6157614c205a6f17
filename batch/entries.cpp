#include "call.hpp"
#include "transforms.hpp"
#include "tfmbatch.h"

using namespace tfmgen::batch;

#define TFMBATCH_DEFINE(name, suffix, Sample, transform, format)                                                       \
  TfmStatus tfmb##name##_##suffix(const Sample* pSrc, TfmbLayout srcLayout, Sample* pDst, TfmbLayout dstLayout,        \
                                  int32_t len, int64_t count, int32_t flag) {                                          \
    return call(k##name##_##suffix, pSrc, srcLayout, pDst, dstLayout, len, count, flag, widest());                     \
  }
TFMBATCH_FOR_EACH_FAMILY(TFMBATCH_DEFINE)
