// Single elements in memory, and what keeps accesses as they are written.
#pragma once

#include "inline.hpp"

namespace tfmgen {

// One element at any address.
template <class Real>
TFMGEN_INLINE inline Real loadElement(const Real* from) {
  Real x;
  __builtin_memcpy(&x, from, sizeof x);
  return x;
}

template <class Real>
TFMGEN_INLINE inline void storeElement(Real* to, Real x) {
  __builtin_memcpy(to, &x, sizeof x);
}

// A value that the compiler knows nothing about: it stays in its register, where it would otherwise be loaded again
// from the array, or joined with its neighbour in memory to one wider access.
template <class Value>
TFMGEN_INLINE inline Value opaque(Value v) {
  asm("" : "+x"(v));
  return v;
}

// Stores on both sides of this are not joined to a wider one.
TFMGEN_INLINE inline void separateStores() {
  asm volatile("" : : : "memory");
}

} // namespace tfmgen
