// Transforms of 2 to 128 consecutive samples as one straight line of arithmetic, without a scale.
#pragma once

#include "kernel/lanes.hpp"
#include "wht/butterfly.hpp"

#include <array>

namespace tfmgen::wht {

// Up to this order a row has its vectors in registers all the time; beyond, it is made of rows of lower order.
template <class Real>
inline constexpr int kRegisterOrder = Lanes<Real>::bits + 3;

// Index bits of a row of `order` that its last group of stages takes, over columns of 2^bits vectors.
template <class Real>
constexpr int lastGroupBits(int order) {
  return order - kRegisterOrder<Real> < 2 ? 1 : 2;
}

// The stages on the index bits inside a vector, on as many vectors as there are lanes: transposed, these bits number
// the registers, and the stages run on all rows at once. Natural order before and after.
template <class Access, class Real, int first, std::size_t count>
[[gnu::always_inline]] inline void laneStages(const Real* src,
                                              std::array<typename Lanes<Real>::Vector, count>& vectors) {
  using L = Lanes<Real>;
  auto columns = loadTransposed<Access>(src + first * L::width);
  butterflies<L::bits, 1, 0>(columns, [](auto, const auto&) {});
  L::transpose(columns);
  unroll<L::width>([&](auto k) __attribute__((always_inline)) { vectors[first + k] = columns[k]; });
}

// Transforms the 2^order samples from `src` on, with 2^order a multiple of the square of the lanes. Vector k of the
// result goes to sink(Index<k>, vector).
template <class Access, int order, class Real, class Sink>
[[gnu::always_inline]] inline void transformRow(const Real* src, const Sink& sink) {
  using L = Lanes<Real>;
  constexpr int count = (1 << order) / L::width;
  std::array<typename L::Vector, count> vectors;
  if constexpr (order <= kRegisterOrder<Real>) {
    unroll<count / L::width>([&](auto block) __attribute__((always_inline)) {
      laneStages<Access, Real, block * L::width>(src, vectors);
    });
    butterflies<order - L::bits, 1, 0>(vectors, sink);
  } else {
    constexpr int bits = lastGroupBits<Real>(order);
    constexpr int runs = 1 << bits;
    constexpr int columns = count / runs;
    unroll<runs>([&](auto run) __attribute__((always_inline)) {
      transformRow<Access, order - bits>(
          src + run * columns * L::width, [&](auto k, auto v)
                                              __attribute__((always_inline)) { vectors[run * columns + k] = v; });
    });
    unroll<columns>([&](auto column)
                        __attribute__((always_inline)) { butterflies<bits, columns, column>(vectors, sink); });
  }
}

// Transforms and stores single elements, for orders too low to fill vectors.
template <int order, class Real>
[[gnu::always_inline]] inline void transformElements(const Real* src, Real* dst, Real scale) {
  std::array<Real, 1 << order> x;
  unroll<1 << order>([&](auto k) __attribute__((always_inline)) { x[k] = loadElement(src + k); });
  butterflies<order, 1, 0>(
      x, [&](auto k, Real v) __attribute__((always_inline)) { storeElement(dst + k, v * scale); });
}

} // namespace tfmgen::wht
