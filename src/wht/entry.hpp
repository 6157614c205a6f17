// From an entry of the library to the transform of its order.
#pragma once

#include "frame/enter.hpp"
#include "tfmcore.h"
#include "wht/passes.hpp"

#include <algorithm>

namespace tfmgen::wht {

// Bytes of the vectors that a transform works on; 0 where it works on single elements.
template <class Real>
constexpr int widthOf(int order) {
  const int bytes = int{sizeof(Real)} << order;
  if (order < 3) {
    return 0;
  }
  if (kRegisterBytes == kBlockBytes) {
    return bytes < kBlockBytes * kLanes<Real> ? 0 : kBlockBytes;
  }
  // A short transform waits for its moves between lanes: fewer are needed in shorter vectors.
  return order < 5 ? std::min(bytes / 2, 32) : kRegisterBytes;
}

// Number of bodies an entry has and where they are. Beyond the baseline one body reaches arrays at any address.
enum class Bodies { one, inlined, separate };

template <class Real>
constexpr Bodies bodiesOf(int order) {
  if (kRegisterBytes != kBlockBytes || widthOf<Real>(order) != kBlockBytes) {
    return Bodies::one;
  }
  return order == 3 ? Bodies::inlined : Bodies::separate;
}

template <class Access, int order, class Real>
TFMGEN_INLINE inline void transform(const Real* src, Real* dst, Real scale, std::uint8_t* buffer) {
  if constexpr (widthOf<Real>(order) == 0) {
    transformElements<order>(src, dst, scale);
  } else if constexpr (order <= kMaxRowOrder) {
    const auto scales = broadcast<Vector<Real, Access::kBytes>>(scale);
    transformRow<Access, order>(src, [&](auto k, auto v)
                                         TFMGEN_INLINE { Access::store(dst + k * kLanesOf<decltype(v)>, v * scales); });
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
    return run<UnalignedAccess<widthOf<Real>(order)>, order>(src, dst, flag, buffer);
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
