// What generated complex kernels share: their types, and the two bodies behind an entry.
#pragma once

#include "frame/enter.hpp"
#include "kernel/access.hpp"
#include "kernel/elements.hpp"
#include "kernel/fused_sum.hpp"

namespace tfmgen {

template <class Sample>
struct RealOf;
template <>
struct RealOf<Tfm32fc> {
  using Type = Tfm32f;
};
template <>
struct RealOf<Tfm64fc> {
  using Type = Tfm64f;
};

// The base of a kernel. A kernel adds `template <class Access> static void run(const Real* x, Real* y, V s)`: the whole
// transform of x into y, all loads before the first store, each output multiplied by s last. A kernel on scalars adds
// `template <class T> static void run(const T* x, T* y, T s)`, one on the vectors of a level the same without a
// template.
template <class SampleType, int n, Direction transformDirection>
struct Complex {
  using Sample = SampleType;
  using Real = typename RealOf<Sample>::Type;
  using V = Vector<Real>;
  // By the elements that they hold.
  using V2 = Vector<Real, 2 * sizeof(Sample)>;
  using V4 = Vector<Real, 4 * sizeof(Sample)>;
  using V8 = Vector<Real, 8 * sizeof(Sample)>;
  static constexpr int length = n;
  static constexpr Direction direction = transformDirection;

  // For kernels on scalars: every number is loaded once, also where the compiler would rather look again.
  TFMGEN_INLINE static Real loadElement(const Real* from) { return opaque(tfmgen::loadElement(from)); }
};

template <class Kernel, class Access>
TFMGEN_INLINE inline TfmStatus runBody(const typename Kernel::Sample* src, typename Kernel::Sample* dst,
                                       std::int32_t flag) {
  using Real = typename Kernel::Real;
  return enter<Real, Kernel::length, Kernel::direction>(src, dst, flag, [&](Real scale) TFMGEN_INLINE {
    Kernel::template run<Access>(reinterpret_cast<const Real*>(src), reinterpret_cast<Real*>(dst),
                                 broadcast<Vector<Real>>(scale));
  });
}

// A kernel that any address suits: on scalars, or on the vectors of a level.
template <class Kernel>
TFMGEN_INLINE inline TfmStatus oneBody(const typename Kernel::Sample* src, typename Kernel::Sample* dst,
                                       std::int32_t flag) {
  using Real = typename Kernel::Real;
  return enter<Real, Kernel::length, Kernel::direction>(src, dst, flag, [&](Real scale) TFMGEN_INLINE {
    Kernel::run(reinterpret_cast<const Real*>(src), reinterpret_cast<Real*>(dst), scale);
  });
}

template <class Kernel>
TFMGEN_INLINE inline TfmStatus bodiesInOneFunction(const typename Kernel::Sample* src, typename Kernel::Sample* dst,
                                                   std::int32_t flag) {
  return bothAligned(src, dst) ? runBody<Kernel, Aligned>(src, dst, flag) : runBody<Kernel, Unaligned>(src, dst, flag);
}

template <class Kernel>
[[gnu::noinline]] inline TfmStatus unalignedBody(const typename Kernel::Sample* src, typename Kernel::Sample* dst,
                                                 std::int32_t flag) {
  return runBody<Kernel, Unaligned>(src, dst, flag);
}

template <class Kernel>
TFMGEN_INLINE inline TfmStatus bodiesInTwoFunctions(const typename Kernel::Sample* src, typename Kernel::Sample* dst,
                                                    std::int32_t flag) {
  return bothAligned(src, dst) ? runBody<Kernel, Aligned>(src, dst, flag) : unalignedBody<Kernel>(src, dst, flag);
}

} // namespace tfmgen
