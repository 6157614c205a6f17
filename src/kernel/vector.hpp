// Vectors of floats or doubles. Sums, differences, products and negations are the operators of the language, lane by
// lane, each rounded once; here are the type and the moves between lanes, for every width.
//
// Lanes are moved within vectors of any width, but only widths that the compiler was told of are registers: 16 bytes
// always, 32 with AVX, 64 with AVX-512.
#pragma once

#include "unroll.hpp"

#include <cstdint>
#include <type_traits>

namespace tfmgen {

// The vectors that every processor has. Longer ones are blocks of as much, within which lanes move cheaply.
inline constexpr int kBlockBytes = 16;

// The widest registers that this is compiled for.
#if defined(__AVX512F__)
inline constexpr int kRegisterBytes = 64;
#elif defined(__AVX2__)
inline constexpr int kRegisterBytes = 32;
#else
inline constexpr int kRegisterBytes = kBlockBytes;
#endif

template <class Real, int bytes>
struct VectorOf {
  using Type [[gnu::vector_size(bytes)]] = Real;
};

// `bytes` bytes of Real: 16, 32 or 64.
template <class Real, int bytes = kBlockBytes>
using Vector = typename VectorOf<Real, bytes>::Type;

template <class Real, int bytes = kBlockBytes>
inline constexpr int kLanes = bytes / int{sizeof(Real)};

template <class Value>
struct ElementOf {
  using Type = Value;
};
template <class Value>
requires requires(Value v) {
  v[0];
}
struct ElementOf<Value> {
  using Type = std::remove_cvref_t<decltype(Value{}[0])>;
};

// What the lanes of a vector hold; of a scalar, the scalar itself.
template <class Value>
using Element = typename ElementOf<Value>::Type;

// The lanes of a vector type.
template <class V>
inline constexpr int kLanesOf = kLanes<Element<V>, sizeof(V)>;

// x in every lane of a vector; of a scalar, x.
template <class Value>
TFMGEN_INLINE inline Value broadcast(Element<Value> x) {
  if constexpr (std::is_same_v<Value, Element<Value>>) {
    return x;
  } else {
    return withIndices<kLanesOf<Value>>([&](auto... lane) TFMGEN_INLINE { return Value{(void(lane), x)...}; });
  }
}

// The same bits as another type.
template <class To, class From>
TFMGEN_INLINE inline To bitCast(From v) {
  static_assert(sizeof(To) == sizeof(From));
  return __builtin_bit_cast(To, v);
}

// Whole numbers as wide as the lanes of V.
template <class V>
using Bits = Vector<std::conditional_t<sizeof(Element<V>) == 4, std::int32_t, std::int64_t>, sizeof(V)>;

// Every lane as a number of another type, rounded to nearest: floats to as many doubles and back.
template <class Real, class V>
TFMGEN_INLINE inline auto convert(V v) {
  return __builtin_convertvector(v, Vector<Real, int{sizeof(Real)} * kLanesOf<V>>);
}

// Changes the sign of the lanes where `signs` has -0, keeps it where `signs` has +0.
template <class V>
TFMGEN_INLINE inline V flipSigns(V v, V signs) {
  return bitCast<V>(bitCast<Bits<V>>(v) ^ bitCast<Bits<V>>(signs));
}

// ---- Moves

// Lanes of a, from 0 on, and of b, numbered behind them, in any order; as many as wanted. Each is named: what -1 leaves
// to the compiler costs extra moves with g++.
template <int... lane, class V>
TFMGEN_INLINE inline auto shuffle(V a, V b) {
  return __builtin_shufflevector(a, b, lane...);
}

// Lanes of one vector. The instruction for whole numbers needs no copy of its operand.
template <int... lane, class V>
TFMGEN_INLINE inline V permute(V v) {
  const auto bits = bitCast<Bits<V>>(v);
  return bitCast<V>(__builtin_shufflevector(bits, bits, lane...));
}

// The lanes from the last to the first.
template <class V>
TFMGEN_INLINE inline V reverse(V v) {
  return withIndices<kLanesOf<V>>([=](auto... i) TFMGEN_INLINE { return permute<(kLanesOf<V> - 1 - i)...>(v); });
}

// The lower lanes of a and b in turn, in every block of 16 bytes.
template <class V>
TFMGEN_INLINE inline V unpackLow(V a, V b) {
  constexpr int block = kLanes<Element<V>>;
  return withIndices<kLanesOf<V>>([&](auto... i) TFMGEN_INLINE {
    return shuffle<(i % 2 * kLanesOf<V> + i / block * block + i % block / 2)...>(a, b);
  });
}

// The upper lanes of a and b in turn, in every block of 16 bytes.
template <class V>
TFMGEN_INLINE inline V unpackHigh(V a, V b) {
  constexpr int block = kLanes<Element<V>>;
  return withIndices<kLanesOf<V>>([&](auto... i) TFMGEN_INLINE {
    return shuffle<(i % 2 * kLanesOf<V> + i / block * block + (block + i % block) / 2)...>(a, b);
  });
}

// i * v for pairs of a real and an imaginary part: swapped, the real part negated.
template <class V>
TFMGEN_INLINE inline V timesI(V v) {
  return withIndices<kLanesOf<V>>([&](auto... i) TFMGEN_INLINE {
    return flipSigns(shuffle<(i ^ 1)...>(v, v), V{(i % 2 == 0 ? Element<V>(-0.0) : Element<V>(0))...});
  });
}

// The halves of a vector, and a vector of two halves.
template <class V>
TFMGEN_INLINE inline auto lowHalf(V v) {
  return withIndices<kLanesOf<V> / 2>([&](auto... i) TFMGEN_INLINE { return shuffle<i...>(v, v); });
}

template <class V>
TFMGEN_INLINE inline auto highHalf(V v) {
  constexpr int half = kLanesOf<V> / 2;
  return withIndices<half>([&](auto... i) TFMGEN_INLINE { return shuffle<(half + i)...>(v, v); });
}

template <class V>
TFMGEN_INLINE inline auto join(V low, V high) {
  return withIndices<2 * kLanesOf<V>>([&](auto... i) TFMGEN_INLINE { return shuffle<i...>(low, high); });
}

// Exchanges the runs of `length` lanes of `first` with an odd number with those of `second` with an even one.
template <int length, class V>
TFMGEN_INLINE inline void exchangeRuns(V& first, V& second) {
  withIndices<kLanesOf<V>>([&](auto... i) TFMGEN_INLINE {
    const V low = shuffle<((i & length) == 0 ? i : kLanesOf<V> + i - length)...>(first, second);
    second = shuffle<((i & length) == 0 ? i + length : kLanesOf<V> + i)...>(first, second);
    first = low;
  });
}

// Two runs of as many blocks of 16 bytes as a half has: the even or the odd blocks of a, then of b.
template <int first, class V>
TFMGEN_INLINE inline V everyOtherBlock(V a, V b) {
  constexpr int block = kLanes<Element<V>>;
  return withIndices<kLanesOf<V>>(
      [&](auto... i) TFMGEN_INLINE { return shuffle<(2 * (i / block * block) + first * block + i % block)...>(a, b); });
}

// Transposes the square matrices of blocks of 16 bytes in rows that are `distance` apart.
template <int distance, class V, int count>
TFMGEN_INLINE inline void transposeBlocks(V (&rows)[count]) {
  constexpr int block = kLanes<Element<V>>;
  constexpr int blocks = count / distance;
  static_assert(blocks <= 4);
  unroll<distance>([&]([[maybe_unused]] auto row) TFMGEN_INLINE {
    if constexpr (blocks == 2) {
      exchangeRuns<block>(rows[row], rows[row + distance]);
    } else if constexpr (blocks == 4) {
      V(&r)[count] = rows;
      const V even01 = everyOtherBlock<0>(r[row], r[row + distance]);
      const V odd01 = everyOtherBlock<1>(r[row], r[row + distance]);
      const V even23 = everyOtherBlock<0>(r[row + 2 * distance], r[row + 3 * distance]);
      const V odd23 = everyOtherBlock<1>(r[row + 2 * distance], r[row + 3 * distance]);
      r[row] = everyOtherBlock<0>(even01, even23);
      r[row + distance] = everyOtherBlock<0>(odd01, odd23);
      r[row + 2 * distance] = everyOtherBlock<1>(even01, even23);
      r[row + 3 * distance] = everyOtherBlock<1>(odd01, odd23);
    }
  });
}

// Transposes the square matrix of as many rows as a vector has lanes; of fewer rows, down to the lanes of 16 bytes, the
// square matrices that stand side by side. First within blocks of 16 bytes, then by blocks.
template <class V, int count>
TFMGEN_INLINE inline void transpose(V (&rows)[count]) {
  constexpr int block = kLanes<Element<V>>;
  static_assert(count % block == 0 && count <= kLanesOf<V>);
  if constexpr (block == 2) {
    unroll<count / block>([&](auto i) TFMGEN_INLINE { exchangeRuns<1>(rows[2 * i], rows[2 * i + 1]); });
  } else {
    unroll<count / block>([&](auto i) TFMGEN_INLINE {
      V low01 = unpackLow(rows[4 * i], rows[4 * i + 1]);
      V high01 = unpackHigh(rows[4 * i], rows[4 * i + 1]);
      V low23 = unpackLow(rows[4 * i + 2], rows[4 * i + 3]);
      V high23 = unpackHigh(rows[4 * i + 2], rows[4 * i + 3]);
      exchangeRuns<2>(low01, low23);
      exchangeRuns<2>(high01, high23);
      rows[4 * i] = low01;
      rows[4 * i + 1] = low23;
      rows[4 * i + 2] = high01;
      rows[4 * i + 3] = high23;
    });
  }
  transposeBlocks<block>(rows);
}

} // namespace tfmgen
