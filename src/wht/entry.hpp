// From an entry of the library to the transform of its order.
#pragma once

#include "frame/enter.hpp"
#include "tfmcore.h"
#include "wht/passes.hpp"

namespace tfmgen::wht {

// Number of bodies an entry has and where they are.
enum class Bodies { one, inlined, separate };

template <class Real>
constexpr Bodies bodiesOf(int order) {
  const int vectors = (1 << order) / kLanes<Real>;
  if (order < 3 || vectors < kLanes<Real>) {
    return Bodies::one;
  }
  return order == 3 ? Bodies::inlined : Bodies::separate;
}

template <class Access, int order, class Real>
TFMGEN_INLINE inline void transform(const Real* src, Real* dst, Real scale, std::uint8_t* buffer) {
  if constexpr (bodiesOf<Real>(order) == Bodies::one) {
    transformElements<order>(src, dst, scale);
  } else if constexpr (order <= kMaxRowOrder) {
    const auto scales = broadcast<Vector<Real>>(scale);
    transformRow<Access, order>(src, [&](auto k, auto v)
                                         TFMGEN_INLINE { Access::store(dst + k * kLanes<Real>, v * scales); });
  } else {
    constexpr std::int32_t size = bufferSize<Real>(order);
    void* const work = buffer != nullptr ? buffer : tfmMalloc(size);
    transformByPasses<Access, order>(src, dst, scale, static_cast<Real*>(work));
    if (buffer == nullptr) {
      tfmFree(work);
    }
  }
}

template <class Access, int order, class Real>
TFMGEN_INLINE inline TfmStatus run(const Real* src, Real* dst, std::int32_t flag, std::uint8_t* buffer) {
  return enter<Real, 1 << order, Direction::none>(
      src, dst, flag, [&](Real scale) TFMGEN_INLINE { transform<Access, order>(src, dst, scale, buffer); });
}

template <int order, class Real>
[[gnu::noinline]] static TfmStatus runUnaligned(const Real* src, Real* dst, std::int32_t flag, std::uint8_t* buffer) {
  return run<Unaligned, order>(src, dst, flag, buffer);
}

template <int order, class Real>
TFMGEN_INLINE inline TfmStatus entry(const Real* src, Real* dst, std::int32_t flag, std::uint8_t* buffer) {
  constexpr Bodies bodies = bodiesOf<Real>(order);
  if constexpr (bodies == Bodies::one) {
    return run<Unaligned, order>(src, dst, flag, buffer);
  }
  if (bothAligned(src, dst)) [[likely]] {
    return run<Aligned, order>(src, dst, flag, buffer);
  }
  if constexpr (bodies == Bodies::inlined) {
    return run<Unaligned, order>(src, dst, flag, buffer);
  } else {
    return runUnaligned<order>(src, dst, flag, buffer);
  }
}

} // namespace tfmgen::wht

#define TFMGEN_WHT_ENTRY(order, suffix, Sample)                                                                        \
  TfmStatus tfmgWHT_##order##_##suffix(const Sample* pSrc, Sample* pDst, int32_t flag, uint8_t* pBuffer) {             \
    return tfmgen::wht::entry<order>(pSrc, pDst, flag, pBuffer);                                                       \
  }
