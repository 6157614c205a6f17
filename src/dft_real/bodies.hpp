// What generated real kernels share: the packed formats and the entries of a length.
#pragma once

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

// ---- Half spectra of n real samples. re(k) and im(k) are the elements of bin k; im of bins 0 and n/2 is not kept, or
// is a constant zero.

// Pairs (re, im) of bins 0 .. n/2.
template <int n>
struct Ccs {
  static constexpr int re(int k) { return 2 * k; }
  static constexpr int im(int k) { return 2 * k + 1; }

  template <class T>
  TFMGEN_INLINE static void storeZeros(T* y) {
    storeElement(y + im(0), T(0));
    if constexpr (n % 2 == 0) {
      storeElement(y + im(n / 2), T(0));
    }
  }
};

// In bin order, without the zeros.
template <int n>
struct Pack {
  static constexpr int re(int k) { return k == 0 ? 0 : 2 * k - 1; }
  static constexpr int im(int k) { return 2 * k; }

  template <class T>
  TFMGEN_INLINE static void storeZeros(T* /*y*/) {}
};

// As Pack for odd n; for even n, bin n/2 comes behind bin 0 and the pairs start at even elements.
template <int n>
struct Perm : Pack<n> {};

template <int n>
requires(n % 2 == 0) struct Perm<n> : Pack<n> {
  static constexpr int re(int k) { return k == n / 2 ? 1 : 2 * k; }
  static constexpr int im(int k) { return 2 * k + 1; }
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
