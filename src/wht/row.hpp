// Transforms of 2 to 128 consecutive samples as one straight line of arithmetic, without a scale.
#pragma once

#include "kernel/access.hpp"
#include "wht/butterfly.hpp"

#include <bit>

namespace tfmgen::wht {

// Index bits that lie inside a vector.
template <class Real>
inline constexpr int kLaneBits = std::bit_width(static_cast<unsigned>(kLanes<Real>)) - 1;

// Up to this order a row has its vectors in registers all the time; beyond, it is made of rows of lower order.
template <class Real>
inline constexpr int kRegisterOrder = kLaneBits<Real> + 3;

// Index bits of a row of `order` that its last group of stages takes, over columns of 2^bits vectors.
template <class Real>
constexpr int lastGroupBits(int order) {
  return order - kRegisterOrder<Real> < 2 ? 1 : 2;
}

// As many consecutive vectors as a vector has lanes, transposed: vector i holds the elements whose index within their
// row of lanes is i. Doubles that are loaded one by one are transposed by the loads themselves, lower address first.
template <class Access, class Real>
TFMGEN_INLINE inline void loadTransposed(const Real* from, Vector<Real> (&rows)[kLanes<Real>]) {
  if constexpr (std::is_same_v<Access, Unaligned> && kLanes<Real> == 2) {
    const auto even = loadLow(from);
    const auto odd = loadLow(from + 1);
    rows[0] = loadHigh(even, from + 2);
    rows[1] = loadHigh(odd, from + 3);
  } else {
    unroll<kLanes<Real>>([&](auto row) TFMGEN_INLINE { rows[row] = Access::load(from + row * kLanes<Real>); });
    transpose(rows);
  }
}

// The stages on the index bits inside a vector, on as many vectors as there are lanes: transposed, these bits number
// the registers, and the stages run on all rows at once. Natural order before and after.
template <class Access, class Real, int first, int count>
TFMGEN_INLINE inline void laneStages(const Real* src, Vector<Real> (&vectors)[count]) {
  Vector<Real> columns[kLanes<Real>];
  loadTransposed<Access>(src + first * kLanes<Real>, columns);
  butterflies<kLaneBits<Real>, 1, 0>(columns, [](auto, const auto&) TFMGEN_INLINE {});
  transpose(columns);
  unroll<kLanes<Real>>([&](auto k) TFMGEN_INLINE { vectors[first + k] = columns[k]; });
}

// Transforms the 2^order samples from `src` on, with 2^order a multiple of the square of the lanes. Vector k of the
// result goes to sink(Index<k>, vector).
template <class Access, int order, class Real, class Sink>
TFMGEN_INLINE inline void transformRow(const Real* src, const Sink& sink) {
  constexpr int count = (1 << order) / kLanes<Real>;
  Vector<Real> vectors[count];
  if constexpr (order <= kRegisterOrder<Real>) {
    unroll<count / kLanes<Real>>([&](auto block)
                                     TFMGEN_INLINE { laneStages<Access, Real, block * kLanes<Real>>(src, vectors); });
    butterflies<order - kLaneBits<Real>, 1, 0>(vectors, sink);
  } else {
    constexpr int bits = lastGroupBits<Real>(order);
    constexpr int runs = 1 << bits;
    constexpr int columns = count / runs;
    unroll<runs>([&](auto run) TFMGEN_INLINE {
      transformRow<Access, order - bits>(src + run * columns * kLanes<Real>,
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
