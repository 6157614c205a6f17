#include "call.hpp"

namespace tfmgen::batch {

bool processorHas(int bytes) {
  switch (bytes) {
  case 64:
    return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512bw") &&
           __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl");
  case 32: return __builtin_cpu_supports("avx2");
  default: return true;
  }
}

namespace {

// Whether nothing is left behind. Half a group or less is not worth a call, nor the question whether the processor
// could.
template <int bytes>
bool transformAsWide(Batch& batch, int widestWanted) {
  constexpr std::int64_t blocks = bytes / 16;
  if (bytes > widestWanted || 2 * batch.count <= blocks * batch.family->blockFrames || !processorHas(bytes)) {
    return false;
  }
  const std::int64_t done = transformGroups<bytes>(batch);
  if (done == batch.count) {
    return true;
  }
  batch.src.first += done * batch.src.distance * batch.family->elementBytes;
  batch.dst.first += done * batch.dst.distance * batch.family->elementBytes;
  batch.count -= done;
  return false;
}

} // namespace

TfmStatus call(const Family& family, const void* src, TfmbLayout srcLayout, void* dst, TfmbLayout dstLayout,
               std::int32_t length, std::int64_t count, std::int32_t flag, int bytes) {
  if (length < kShortest || length > kLongest || count < 0) {
    return tfmStsBadSize;
  }
  if (src == nullptr || dst == nullptr) {
    return tfmStsNullPtr;
  }
  double scale = 0;
  if (!family.scales[length - kShortest](flag, scale)) {
    return tfmStsBadFlag;
  }
  Batch batch{&family,
              length,
              flag,
              scale,
              src == dst,
              {static_cast<const std::byte*>(src), srcLayout.step, srcLayout.distance},
              {static_cast<std::byte*>(dst), dstLayout.step, dstLayout.distance},
              count};
  if (!transformAsWide<64>(batch, bytes) && !transformAsWide<32>(batch, bytes) && !transformAsWide<16>(batch, bytes)) {
    transformSingly(batch);
  }
  return tfmStsOk;
}

} // namespace tfmgen::batch
