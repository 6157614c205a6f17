#include "call.hpp"
#include "tfmbatch.h"
#include "transforms.hpp"

using namespace tfmgen::batch;

namespace {

// Frames in one piece that are single calls, up to this number, without a look at anything else: as measured. A group
// of four complex frames of floats gains nothing that would pay for its call, nor does one of four frames of few
// operations, nor a group that is not full but for long frames.
constexpr std::int64_t fewFrames(const Family& family, std::int32_t len) {
  if (isComplex(family.transform) && !family.isDouble) {
    return 7;
  }
  if (len <= 8 || (len == 12 && family.isDouble)) {
    return 4;
  }
  return len <= longestSingly(family.transform) ? 3 : family.isDouble ? 1 : 2;
}

// The checks of single calls are those of a batch with frames in it.
template <auto single, class Sample>
[[gnu::noinline]] TfmStatus callSingly(const Sample* src, std::int64_t srcDistance, Sample* dst,
                                       std::int64_t dstDistance, std::int32_t len, std::int64_t count,
                                       std::int32_t flag) {
  TfmStatus status = single(src, dst, len, flag);
  for (std::int64_t f = 1; f < count && status == tfmStsOk; ++f) {
    status = single(src + f * srcDistance, dst + f * dstDistance, len, flag);
  }
  return status;
}

template <const Family& family, auto single, class Sample>
TFMGEN_INLINE inline TfmStatus enter(const Sample* src, TfmbLayout srcLayout, Sample* dst, TfmbLayout dstLayout,
                                     std::int32_t len, std::int64_t count, std::int32_t flag) {
  if (count >= 1 && srcLayout.step == 1 && dstLayout.step == 1) {
    if (count == 1) {
      return single(src, dst, len, flag); // a jump
    }
    if (count <= fewFrames(family, len)) {
      return callSingly<single>(src, srcLayout.distance, dst, dstLayout.distance, len, count, flag);
    }
  }
  return call(family, src, srcLayout, dst, dstLayout, len, count, flag, kWidths.front());
}

} // namespace

#define TFMBATCH_DEFINE(name, suffix, Sample, transform, format)                                                       \
  TfmStatus tfmb##name##_##suffix(const Sample* pSrc, TfmbLayout srcLayout, Sample* pDst, TfmbLayout dstLayout,        \
                                  int32_t len, int64_t count, int32_t flag) {                                          \
    return enter<k##name##_##suffix, tfmg##name##_##suffix>(pSrc, srcLayout, pDst, dstLayout, len, count, flag);       \
  }
TFMBATCH_FOR_EACH_FAMILY(TFMBATCH_DEFINE)
