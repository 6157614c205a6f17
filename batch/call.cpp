#include "call.hpp"

#include "frame/scale.hpp"
#include "kernel/unroll.hpp"

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

Direction directionOf(Transform transform) {
  switch (transform) {
  case Transform::complexForward:
  case Transform::realForward: return Direction::forward;
  case Transform::complexInverse:
  case Transform::realInverse: return Direction::inverse;
  case Transform::hartley: break;
  }
  return Direction::none;
}

// ---- The scale of a length that is known at run time only

using ScaleOf = bool(std::int32_t flag, double& scale);

template <class Real, int n, Direction direction>
bool scaleOf(std::int32_t flag, double& scale) {
  Real factor = 0;
  const bool isKnown = selectScale<Real, n, direction>(flag, factor);
  scale = factor;
  return isKnown;
}

template <class Real, Direction direction>
constexpr auto kScales = withIndices<kLongest - kShortest + 1>([](auto... i) {
  return std::array<ScaleOf*, sizeof...(i)>{scaleOf<Real, kShortest + i, direction>...};
});

template <class Real>
bool selectScale(Transform transform, std::int32_t length, std::int32_t flag, double& scale) {
  const auto i = static_cast<std::size_t>(length - kShortest);
  switch (directionOf(transform)) {
  case Direction::forward: return kScales<Real, Direction::forward>[i](flag, scale);
  case Direction::inverse: return kScales<Real, Direction::inverse>[i](flag, scale);
  case Direction::none: break;
  }
  return kScales<Real, Direction::none>[i](flag, scale);
}

// ---- Widths

// Frames in 16 bytes of a register: one a lane, of complex doubles one in all.
std::int64_t blockFrames(const Family& family) {
  const bool isSingle = family.elementBytes == (isComplex(family.transform) ? sizeof(Tfm32fc) : sizeof(Tfm32f));
  return isSingle ? 4 : isComplex(family.transform) ? 1 : 2;
}

// Whether nothing is left behind. Half a group or less is not worth a call, nor the question whether the processor
// could.
template <int bytes>
bool transformAsWide(Batch& batch, int widestWanted) {
  constexpr std::int64_t blocks = bytes / 16;
  if (bytes > widestWanted || 2 * batch.count <= blocks * blockFrames(*batch.family) || !processorHas(bytes)) {
    return false;
  }
  const std::int64_t done = transformGroups<bytes>(batch);
  if (done == batch.count) {
    return true;
  }
  const auto elementBytes = static_cast<std::ptrdiff_t>(batch.family->elementBytes);
  batch.src.first += done * batch.src.distance * elementBytes;
  batch.dst.first += done * batch.dst.distance * elementBytes;
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
  const bool isDouble = family.elementBytes == (isComplex(family.transform) ? sizeof(Tfm64fc) : sizeof(Tfm64f));
  double scale = 0;
  if (!(isDouble ? selectScale<Tfm64f>(family.transform, length, flag, scale)
                 : selectScale<Tfm32f>(family.transform, length, flag, scale))) {
    return tfmStsBadFlag;
  }
  Batch batch{&family,
              length,
              flag,
              scale,
              src == dst,
              {static_cast<const std::byte*>(src), srcLayout.step, srcLayout.distance,
               sourceLength(family.transform, family.format, length)},
              {static_cast<std::byte*>(dst), dstLayout.step, dstLayout.distance,
               destinationLength(family.transform, family.format, length)},
              count};
  if (!transformAsWide<64>(batch, bytes) && !transformAsWide<32>(batch, bytes) && !transformAsWide<16>(batch, bytes)) {
    transformSingly(batch);
  }
  return tfmStsOk;
}

} // namespace tfmgen::batch
