// Transforms too long for the registers: passes over memory.
#pragma once

#include "wht/row.hpp"

#include <array>
#include <cstddef>
#include <cstdint>

namespace tfmgen::wht {

inline constexpr int kMaxOrder = 13;
inline constexpr int kMaxRowOrder = 7; // up to here a transform is one row and needs no buffer

// How the index bits of a long transform are shared out, lowest first.
struct Schedule {
  int rowBits;    // of a row pass over consecutive elements
  int blockBits;  // of a column pass within each block of rows; 0 when the array is one block
  int columnBits; // of the last column pass, over the whole array
};

// Of orders 8 to 13.
inline constexpr std::array<Schedule, 6> kSchedules32f = {
    {{5, 0, 3}, {6, 0, 3}, {6, 0, 4}, {6, 0, 5}, {6, 3, 3}, {6, 3, 4}}};
inline constexpr std::array<Schedule, 6> kSchedules64f = {
    {{5, 0, 3}, {5, 0, 4}, {7, 0, 3}, {5, 3, 3}, {5, 3, 4}, {7, 3, 3}}};

template <class Real>
constexpr Schedule scheduleOf(int order) {
  const auto& schedules = sizeof(Real) == sizeof(float) ? kSchedules32f : kSchedules64f;
  return schedules[static_cast<std::size_t>(order - kMaxRowOrder - 1)];
}

// Bytes of the work buffer: the array, behind it one block when there are blocks.
template <class Real>
constexpr std::int32_t bufferSize(int order) {
  if (order <= kMaxRowOrder) {
    return 0;
  }
  const Schedule s = scheduleOf<Real>(order);
  const int staging = s.blockBits == 0 ? 0 : 1 << (s.rowBits + s.blockBits);
  return static_cast<std::int32_t>(sizeof(Real)) * ((1 << order) + staging);
}

// Transforms `rows` rows of 2^bits elements from `src` on, in rising order, to the same places of `dst`.
template <class Access, int bits, int rows, class Real>
TFMGEN_INLINE inline void rowPass(const Real* src, Real* dst) {
#pragma GCC unroll 1
  for (int offset = 0; offset < rows << bits; offset += 1 << bits) {
    transformRow<Access, bits>(src + offset, [&](auto k, auto v) TFMGEN_INLINE {
      AlignedAccess<Access::kBytes>::store(dst + offset + k * kLanesOf<decltype(v)>, v);
    });
  }
}

// The stages on `bits` index bits from bit log2(distance) on, one column of vectors after the other: position k of a
// column is k * distance elements behind its first. Results go through sink(address in dst, vector).
template <class Access, int bits, int distance, class Real, class Sink>
TFMGEN_INLINE inline void columnPass(const Real* src, Real* dst, const Sink& sink) {
  using V = Vector<Real, Access::kBytes>;
#pragma GCC unroll 1
  for (int offset = 0; offset < distance; offset += kLanesOf<V>) {
    V column[1 << bits];
    unroll<1 << bits>([&](auto k) TFMGEN_INLINE { column[k] = Access::load(src + offset + k * distance); });
    butterflies<bits, 1, 0>(column, [&](auto k, auto v) TFMGEN_INLINE { sink(dst + offset + k * distance, v); });
  }
}

// The whole transform of order 8 to 13 through `buffer`, which has bufferSize<Real>(order) bytes and is aligned to 16.
// `src` has been read to its end before the first store to `dst`.
template <class Access, int order, class Real>
TFMGEN_INLINE inline void transformByPasses(const Real* src, Real* dst, Real scale, Real* buffer) {
  using Buffer = AlignedAccess<Access::kBytes>;
  constexpr Schedule s = scheduleOf<Real>(order);
  constexpr int block = 1 << (s.rowBits + s.blockBits);
  constexpr int rows = 1 << s.blockBits;
  if constexpr (s.blockBits == 0) {
    rowPass<Access, s.rowBits, 1 << s.columnBits>(src, buffer);
  } else {
    Real* const staging = buffer + (1 << order);
#pragma GCC unroll 1
    for (int offset = 0; offset < 1 << order; offset += block) {
      rowPass<Access, s.rowBits, rows>(src + offset, staging);
      columnPass<Buffer, s.blockBits, 1 << s.rowBits>(staging, buffer + offset,
                                                      [](Real* to, auto v) TFMGEN_INLINE { Buffer::store(to, v); });
    }
  }
  const auto scales = broadcast<Vector<Real, Access::kBytes>>(scale);
  columnPass<Buffer, s.columnBits, block>(buffer, dst,
                                          [&](Real* to, auto v) TFMGEN_INLINE { Access::store(to, v * scales); });
}

} // namespace tfmgen::wht
