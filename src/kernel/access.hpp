// The ways by which vectors reach memory.
#pragma once

#include "memory.hpp"
#include "vector.hpp"

#include <cstddef>

namespace tfmgen {

// ---- Whole vectors by one access

// The vector as an array of Real holds it, at a multiple of `alignment`.
template <class V, int alignment>
struct InMemory {
  using Type [[gnu::vector_size(sizeof(V)), gnu::aligned(alignment), gnu::may_alias]] = Element<V>;
};

// At a multiple of kBlockBytes, the alignment that is promised for vectors of any width.
template <class V>
TFMGEN_INLINE inline V loadAligned(const Element<V>* from) {
  return *reinterpret_cast<const typename InMemory<V, kBlockBytes>::Type*>(from);
}

template <class V>
TFMGEN_INLINE inline void storeAligned(Element<V>* to, V v) {
  *reinterpret_cast<typename InMemory<V, kBlockBytes>::Type*>(to) = v;
}

// At any address.
template <class V>
TFMGEN_INLINE inline V loadUnaligned(const Element<V>* from) {
  return *reinterpret_cast<const typename InMemory<V, 1>::Type*>(from);
}

template <class V>
TFMGEN_INLINE inline void storeUnaligned(Element<V>* to, V v) {
  *reinterpret_cast<typename InMemory<V, 1>::Type*>(to) = v;
}

// ---- 16 bytes by their halves: one double or one complex number of two floats each

// The 8 bytes of a half, at any address, below zeros.
template <class Real>
TFMGEN_INLINE inline Vector<double> loadHalf(const Real* from) {
  double half;
  __builtin_memcpy(&half, from, sizeof half);
  return Vector<double>{half};
}

template <class Real>
TFMGEN_INLINE inline void storeHalf(Real* to, double half) {
  __builtin_memcpy(to, &half, sizeof half);
  separateStores();
}

template <class Real>
TFMGEN_INLINE inline Vector<Real> loadLow(const Real* from) {
  return bitCast<Vector<Real>>(opaque(loadHalf(from)));
}

// The lower half of `low` and a loaded upper half.
template <class V>
TFMGEN_INLINE inline V loadHigh(V low, const Element<V>* from) {
  return bitCast<V>(opaque(unpackLow(bitCast<Vector<double>>(low), loadHalf(from))));
}

template <class Real>
TFMGEN_INLINE inline Vector<Real> loadHalves(const Real* low, const Real* high) {
  return loadHigh(loadLow(low), high);
}

template <class V>
TFMGEN_INLINE inline void storeLow(Element<V>* to, V v) {
  storeHalf(to, bitCast<Vector<double>>(v)[0]);
}

template <class V>
TFMGEN_INLINE inline void storeHigh(Element<V>* to, V v) {
  storeHalf(to, bitCast<Vector<double>>(v)[1]);
}

template <class V>
TFMGEN_INLINE inline void storeHalves(Element<V>* low, Element<V>* high, V v) {
  const auto halves = bitCast<Vector<double>>(v);
  storeHalf(low, halves[0]);
  storeHalf(high, halves[1]);
}

// ---- 16 bytes by single elements, at any address

// Lane l from from[l * step].
template <class V>
TFMGEN_INLINE inline V gather(const Element<V>* from, std::ptrdiff_t step) {
  if constexpr (kLanesOf<V> == 2) {
    return unpackLow(opaque(V{loadElement(from)}), V{loadElement(from + step)});
  } else {
    const auto pair = [=](std::ptrdiff_t lane) TFMGEN_INLINE {
      const V low = opaque(V{loadElement(from + lane * step)});
      return unpackLow(low, V{loadElement(from + (lane + 1) * step)});
    };
    const V low = pair(0);
    return shuffle<0, 1, 4, 5>(low, pair(2));
  }
}

// Lane l to to[l * step].
template <class V>
TFMGEN_INLINE inline void scatter(Element<V>* to, std::ptrdiff_t step, V v) {
  storeElement(to, v[0]);
  if constexpr (kLanesOf<V> == 2) {
    storeElement(to + step, opaque(v)[1]);
  } else {
    storeElement(to + step, opaque(permute<1, 0, 0, 0>(v))[0]);
    storeElement(to + 2 * step, opaque(permute<2, 0, 0, 0>(v))[0]);
    storeElement(to + 3 * step, opaque(permute<3, 0, 0, 0>(v))[0]);
  }
}

// ---- Arrays of a caller, as kernels are compiled twice for them: every load is one access

// Both arrays start at a multiple of kBlockBytes.
template <int bytes>
struct AlignedAccess {
  static constexpr int kBytes = bytes;

  template <class Real>
  TFMGEN_INLINE static Vector<Real, bytes> load(const Real* from) {
    return opaque(loadAligned<Vector<Real, bytes>>(from));
  }

  template <class V>
  TFMGEN_INLINE static void store(Element<V>* to, V v) {
    storeAligned(to, v);
  }
};

// Any address. 16 bytes of doubles go by their halves.
template <int bytes>
struct UnalignedAccess {
  static constexpr int kBytes = bytes;

  template <class Real>
  TFMGEN_INLINE static Vector<Real, bytes> load(const Real* from) {
    if constexpr (kLanes<Real, bytes> == 2) {
      return loadHalves(from, from + 1);
    } else {
      return opaque(loadUnaligned<Vector<Real, bytes>>(from));
    }
  }

  template <class V>
  TFMGEN_INLINE static void store(Element<V>* to, V v) {
    if constexpr (kLanesOf<V> == 2) {
      storeHalves(to, to + 1, v);
    } else {
      storeUnaligned(to, v);
    }
  }
};

using Aligned = AlignedAccess<kBlockBytes>;
using Unaligned = UnalignedAccess<kBlockBytes>;

} // namespace tfmgen
