// Single elements in memory, and what keeps accesses as they are written.
#pragma once

namespace tfmgen {

// One element at any address.
template <class Real>
[[gnu::always_inline]] inline Real loadElement(const Real* from) {
  Real x;
  __builtin_memcpy(&x, from, sizeof x);
  return x;
}

template <class Real>
[[gnu::always_inline]] inline void storeElement(Real* to, Real x) {
  __builtin_memcpy(to, &x, sizeof x);
}

// A value that the compiler knows nothing about: it stays in its register, where it would otherwise be loaded again
// from the array, or joined with its neighbour in memory to one wider access.
template <class Vector>
[[gnu::always_inline]] inline Vector opaque(Vector v) {
  asm("" : "+x"(v));
  return v;
}

// Stores on both sides of this are not joined to a wider one.
[[gnu::always_inline]] inline void separateStores() {
  asm volatile("" : : : "memory");
}

} // namespace tfmgen
