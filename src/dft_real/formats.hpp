// Half spectra of n real samples. re(k) and im(k) are the elements of bin k; im of bins 0 and n/2 is not kept, or is a
// constant zero.
#pragma once

#include "kernel/memory.hpp"

namespace tfmgen {

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

} // namespace tfmgen
