// The eighteen transforms.
#pragma once

#include "batch.hpp"
#include "frame/scale.hpp"
#include "kernel/unroll.hpp"

#include <array>
#include <type_traits>

namespace tfmgen::batch {

template <class Sample, TfmStatus (*entry)(const Sample*, Sample*, std::int32_t, std::int32_t)>
TfmStatus single(const void* src, void* dst, std::int32_t len, std::int32_t flag) {
  return entry(static_cast<const Sample*>(src), static_cast<Sample*>(dst), len, flag);
}

constexpr Direction directionOf(Transform transform) {
  switch (transform) {
  case Transform::complexForward:
  case Transform::realForward: return Direction::forward;
  case Transform::complexInverse:
  case Transform::realInverse: return Direction::inverse;
  case Transform::hartley: break;
  }
  return Direction::none;
}

template <class Real, int n, Direction direction>
bool scaleOf(std::int32_t flag, double& scale) {
  Real factor = 0;
  const bool isKnown = selectScale<Real, n, direction>(flag, factor);
  scale = factor;
  return isKnown;
}

template <class Real, Direction direction>
inline constexpr auto kScales = withIndices<kLongest - kShortest + 1>([](auto... i) {
  return std::array<Family::ScaleOf*, sizeof...(i)>{scaleOf<Real, kShortest + i, direction>...};
});

template <Transform transform, Format format, class Sample,
          TfmStatus (*entry)(const Sample*, Sample*, std::int32_t, std::int32_t)>
constexpr Family familyOf() {
  constexpr bool isDouble = std::is_same_v<Sample, Tfm64f> || std::is_same_v<Sample, Tfm64fc>;
  using Real = std::conditional_t<isDouble, Tfm64f, Tfm32f>;
  return {transform, format, isDouble, single<Sample, entry>, kScales<Real, directionOf(transform)>.data()};
}

// name, sample type and its suffix, transform, format
#define TFMBATCH_FOR_EACH_FAMILY(USE)                                                                                  \
  USE(DFTFwd_CToC, 32fc, Tfm32fc, complexForward, plain)                                                               \
  USE(DFTFwd_CToC, 64fc, Tfm64fc, complexForward, plain)                                                               \
  USE(DFTInv_CToC, 32fc, Tfm32fc, complexInverse, plain)                                                               \
  USE(DFTInv_CToC, 64fc, Tfm64fc, complexInverse, plain)                                                               \
  USE(DFTFwd_RToCCS, 32f, Tfm32f, realForward, ccs)                                                                    \
  USE(DFTFwd_RToCCS, 64f, Tfm64f, realForward, ccs)                                                                    \
  USE(DFTFwd_RToPack, 32f, Tfm32f, realForward, pack)                                                                  \
  USE(DFTFwd_RToPack, 64f, Tfm64f, realForward, pack)                                                                  \
  USE(DFTFwd_RToPerm, 32f, Tfm32f, realForward, perm)                                                                  \
  USE(DFTFwd_RToPerm, 64f, Tfm64f, realForward, perm)                                                                  \
  USE(DFTInv_CCSToR, 32f, Tfm32f, realInverse, ccs)                                                                    \
  USE(DFTInv_CCSToR, 64f, Tfm64f, realInverse, ccs)                                                                    \
  USE(DFTInv_PackToR, 32f, Tfm32f, realInverse, pack)                                                                  \
  USE(DFTInv_PackToR, 64f, Tfm64f, realInverse, pack)                                                                  \
  USE(DFTInv_PermToR, 32f, Tfm32f, realInverse, perm)                                                                  \
  USE(DFTInv_PermToR, 64f, Tfm64f, realInverse, perm)                                                                  \
  USE(Hartley, 32f, Tfm32f, hartley, plain)                                                                            \
  USE(Hartley, 64f, Tfm64f, hartley, plain)

#define TFMBATCH_FAMILY(name, suffix, Sample, transform, format)                                                       \
  inline constexpr Family k##name##_##suffix =                                                                         \
      familyOf<Transform::transform, Format::format, Sample, tfmg##name##_##suffix>();
TFMBATCH_FOR_EACH_FAMILY(TFMBATCH_FAMILY)
#undef TFMBATCH_FAMILY

} // namespace tfmgen::batch
