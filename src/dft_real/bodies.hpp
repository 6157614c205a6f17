// What generated real kernels share: the packed formats and the entries of a length.
#pragma once

#include "formats.hpp"
#include "frame/enter.hpp"
#include "kernel/access.hpp"

namespace tfmgen {

// The base of a kernel. A kernel adds `template <class T, class Spectrum> static void run(const T* x, T* y, T s)`: the
// whole transform of x into y, all loads before the first store.
template <int n, Direction transformDirection>
struct Real {
  static constexpr int length = n;
  static constexpr Direction direction = transformDirection;
};

struct NoSpectrum {};

template <class Kernel, class Spectrum, class T>
TFMGEN_INLINE inline TfmStatus runReal(const T* src, T* dst, std::int32_t flag) {
  return enter<T, Kernel::length, Kernel::direction>(
      src, dst, flag, [&](T scale) TFMGEN_INLINE { Kernel::template run<T, Spectrum>(src, dst, scale); });
}

} // namespace tfmgen

// ---- Entries

#define TFMGEN_DEFINE_REAL(name, N, suffix, T, Kernel, Spectrum)                                                       \
  TfmStatus tfmg##name##_##N##_##suffix(const T* pSrc, T* pDst, int32_t flag) {                                        \
    return tfmgen::runReal<tfmgen::Kernel##N, tfmgen::Spectrum>(pSrc, pDst, flag);                                     \
  }

#define TFMGEN_DEFINE_REAL_TYPES(name, N, Kernel, Spectrum)                                                            \
  TFMGEN_DEFINE_REAL(name, N, 32f, Tfm32f, Kernel, Spectrum)                                                           \
  TFMGEN_DEFINE_REAL(name, N, 64f, Tfm64f, Kernel, Spectrum)

#define TFMGEN_DEFINE_FORWARD(N)                                                                                       \
  TFMGEN_DEFINE_REAL_TYPES(DFTFwd_RToCCS, N, Forward, Ccs<N>)                                                          \
  TFMGEN_DEFINE_REAL_TYPES(DFTFwd_RToPack, N, Forward, Pack<N>)                                                        \
  TFMGEN_DEFINE_REAL_TYPES(DFTFwd_RToPerm, N, Forward, Perm<N>)

#define TFMGEN_DEFINE_INVERSE(N)                                                                                       \
  TFMGEN_DEFINE_REAL_TYPES(DFTInv_CCSToR, N, Inverse, Ccs<N>)                                                          \
  TFMGEN_DEFINE_REAL_TYPES(DFTInv_PackToR, N, Inverse, Pack<N>)                                                        \
  TFMGEN_DEFINE_REAL_TYPES(DFTInv_PermToR, N, Inverse, Perm<N>)

#define TFMGEN_DEFINE_HARTLEY(N) TFMGEN_DEFINE_REAL_TYPES(Hartley, N, Hartley, NoSpectrum)
