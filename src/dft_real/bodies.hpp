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

#define TFMGEN_DEFINE_REAL(name, T, Kernel, Spectrum)                                                                  \
  TfmStatus tfmg##name(const T* pSrc, T* pDst, int32_t flag) {                                                         \
    return tfmgen::runReal<tfmgen::Kernel, tfmgen::Spectrum>(pSrc, pDst, flag);                                        \
  }
