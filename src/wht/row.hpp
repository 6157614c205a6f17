// Transforms of consecutive samples as one straight line of arithmetic, without a scale.
#pragma once

#include "kernel/access.hpp"
#include "kernel/fused_sum.hpp"
#include "wht/butterfly.hpp"

#include <bit>

namespace tfmgen::wht {

// Index bits that lie inside a vector.
template <class V>
inline constexpr int kLaneBits = std::bit_width(static_cast<unsigned>(kLanesOf<V>)) - 1;

// Up to this order a row has its vectors in registers all the time; beyond, it is made of rows of lower order. There
// are 32 registers where they have 64 bytes.
template <class V>
inline constexpr int kRegisterOrder = kLaneBits<V> + (sizeof(V) == 64 ? 4 : 3);

// Index bits of a row of `order` that its last group of stages takes, over columns of 2^bits vectors.
template <class V>
constexpr int lastGroupBits(int order) {
  return sizeof(V) == kBlockBytes && order - kRegisterOrder<V> < 2 ? 1 : 2;
}

// As many consecutive vectors as a vector has lanes, transposed: vector i holds the elements whose index within their
// row of lanes is i. Doubles that are loaded one by one are transposed by the loads themselves, lower address first.
template <class Access, class V>
TFMGEN_INLINE inline void loadTransposed(const Element<V>* from, V (&rows)[kLanesOf<V>]) {
  if constexpr (std::is_same_v<Access, Unaligned> && kLanesOf<V> == 2) {
    const auto even = loadLow(from);
    const auto odd = loadLow(from + 1);
    rows[0] = loadHigh(even, from + 2);
    rows[1] = loadHigh(odd, from + 3);
  } else {
    unroll<kLanesOf<V>>([&](auto row) TFMGEN_INLINE { rows[row] = Access::load(from + row * kLanesOf<V>); });
    transpose(rows);
  }
}

#ifdef __FMA__
// One stage on the index bit of value `bit` inside the vector: each lane meets its partner. By one operation, or by two
// that are done sooner.
template <int bit, bool soon, class V>
TFMGEN_INLINE inline V laneStage(V v) {
  return withIndices<kLanesOf<V>>([=](auto... i) TFMGEN_INLINE {
    const V partners = permute<(int{i} ^ bit)...>(v);
    if constexpr (soon) {
      return partners + flipSigns(v, V{((i & bit) == 0 ? Element<V>(0) : -Element<V>(0))...});
    } else {
      return fusedSum(partners, V{((i & bit) == 0 ? 1 : -1)...}, v);
    }
  });
}
#endif

// Vectors that take their stages on the index bits inside a vector together.
template <class V>
inline constexpr int kLaneGroup = kRegisterBytes == kBlockBytes ? kLanesOf<V> : 1;

// The stages on the index bits inside a vector, on kLaneGroup of `count` vectors. With the baseline's instructions, on
// as many as there are lanes: transposed, these bits number the registers, and the stages run on all rows at once.
// Natural order before and after.
template <class Access, int first, class V, int count>
TFMGEN_INLINE inline void laneStages(const Element<V>* src, V (&vectors)[count]) {
#ifdef __FMA__
  constexpr bool soon = count <= 2; // there is nothing else to do meanwhile
  vectors[first] = Access::load(src + first * kLanesOf<V>);
  unroll<kLaneBits<V>>([&](auto bit) TFMGEN_INLINE { vectors[first] = laneStage<1 << bit, soon>(vectors[first]); });
#else
  V columns[kLanesOf<V>];
  loadTransposed<Access>(src + first * kLanesOf<V>, columns);
  butterflies<kLaneBits<V>, 1, 0>(columns, [](auto, const auto&) TFMGEN_INLINE {});
  transpose(columns);
  unroll<kLanesOf<V>>([&](auto k) TFMGEN_INLINE { vectors[first + k] = columns[k]; });
#endif
}

// Transforms the 2^order samples from `src` on, a multiple of kLaneGroup vectors as Access loads them. Vector k of the
// result goes to sink(Index<k>, vector).
template <class Access, int order, class Real, class Sink>
TFMGEN_INLINE inline void transformRow(const Real* src, const Sink& sink) {
  using V = Vector<Real, Access::kBytes>;
  constexpr int count = (1 << order) / kLanesOf<V>;
  V vectors[count];
  if constexpr (order <= kRegisterOrder<V>) {
    unroll<count / kLaneGroup<V>>([&](auto group)
                                      TFMGEN_INLINE { laneStages<Access, group * kLaneGroup<V>>(src, vectors); });
    butterflies<order - kLaneBits<V>, 1, 0>(vectors, sink);
  } else {
    constexpr int bits = lastGroupBits<V>(order);
    constexpr int runs = 1 << bits;
    constexpr int columns = count / runs;
    unroll<runs>([&](auto run) TFMGEN_INLINE {
      transformRow<Access, order - bits>(src + run * columns * kLanesOf<V>,
                                         [&](auto k, auto v) TFMGEN_INLINE { vectors[run * columns + k] = v; });
    });
    unroll<columns>([&](auto column) TFMGEN_INLINE { butterflies<bits, columns, column>(vectors, sink); });
  }
}

// Transforms and stores single elements, for orders too low to fill vectors.
template <int order, class Real>
TFMGEN_INLINE inline void transformElements(const Real* src, Real* dst, Real scale) {
  Real x[1 << order];
  unroll<1 << order>([&](auto k) TFMGEN_INLINE { x[k] = loadElement(src + k); });
  butterflies<order, 1, 0>(x, [&](auto k, Real v) TFMGEN_INLINE { storeElement(dst + k, v * scale); });
}

} // namespace tfmgen::wht
