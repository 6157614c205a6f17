// What the generated kernels for batches share: how elements reach memory, and the routines made of a kernel.
// TFMBATCH_BYTES is the width of a register.
#pragma once

#include "dft_real/formats.hpp"
#include "kernel/access.hpp"
#include "routines.hpp"
#include "samples.hpp"
#include "transpose.hpp"

#include <type_traits>

namespace tfmgen::batch {

namespace { // NOLINT(cert-dcl59-cpp): files of different widths have a constant of the same name
constexpr int kBytes = TFMBATCH_BYTES; // NOLINT(misc-definitions-in-headers)
}

// A kernel has `template <class T, class Spectrum, class Source, class Destination> static void run(x, y, s)`: the
// transform of all frames of a group, all loads before the first store, every result multiplied by s last. It reaches
// elements by loadElement(x + element) and storeElement(y + element, T); the parts of complex ones are numbered, re
// before im, and storeParts(y + 2 * element, T, T) stores both.
template <int bytes, Transform transform, class Real, int n>
struct Kernel;

// The forward transform of complex elements of doubles has vectors of them instead of T, which it reaches by
// Access::load(x + 2 * element) and Access::store(y + 2 * element, V).
//
// The inverse transform is the forward one with its results in the order 0, n-1, n-2 .. 1: the operations of a kernel
// are the same, and only the last of them, a sum or a difference, tells the two apart.
template <int bytes, int n>
using BlockKernel = Kernel<bytes, Transform::complexForward, Tfm64f, n>;

// ---- Rows of samples in memory. Steps are bytes, as the scaled indices of an address want them.

// Row `number`, from the first.
template <class Real>
TFMGEN_INLINE inline Real* row(Real* first, std::ptrdiff_t step, int number) {
  using Byte = std::conditional_t<std::is_const_v<Real>, const char, char>;
  return reinterpret_cast<Real*>(reinterpret_cast<Byte*>(first) + number * step);
}

template <int bytes, class Real>
struct Rows {
  Real* first;
  std::ptrdiff_t step;
  RowOffsets offsets;
};

template <int bytes, class Real>
struct Row {
  Real* at;
};

template <int bytes, class Real>
TFMGEN_INLINE inline Row<bytes, Real> operator+(const Rows<bytes, Real>& rows, int element) {
  return {row(rows.first, rows.step, element)};
}

template <int bytes, class Real>
TFMGEN_INLINE inline auto loadElement(Row<bytes, const Real> row) {
  return loadUnaligned<Vector<Real, bytes>>(row.at);
}

template <int bytes, class Real>
TFMGEN_INLINE inline void storeElement(Row<bytes, Real> row, Vector<Real, bytes> v) {
  storeUnaligned(row.at, v);
}

// A half spectrum of n samples in rows, in a format that is known when the routine is called. The constant zeros are
// its caller's business.
template <int n>
struct SpectrumInRows {
  struct Part {
    int bin;
    int row;
  };
  static constexpr Part re(int k) { return {k, 2 * k}; }
  static constexpr Part im(int k) { return {k, 2 * k + 1}; }

  template <int bytes, class Real>
  TFMGEN_INLINE friend Row<bytes, Real> operator+(const Rows<bytes, Real>& rows, Part part) {
    if (part.bin == 0) {
      return {rows.first};
    }
    return {2 * part.bin == n ? row(rows.first, rows.offsets.middle, 1)
                              : row(row(rows.first, rows.offsets.others, 1), rows.step, part.row)};
  }

  template <class Destination>
  TFMGEN_INLINE static void storeZeros(const Destination& /*y*/) {}
};

// ---- Rows of complex elements: two registers of re and im in turn. Their lanes are sorted within blocks of 16 bytes,
// which puts frames into another order, the same for every element.

template <int bytes, class Real>
struct ComplexRows {
  Real* first;
  std::ptrdiff_t step;
};

template <int bytes, class Real>
struct PartOfRow {
  Real* row;
  int part;
};

template <int bytes, class Real>
TFMGEN_INLINE inline PartOfRow<bytes, Real> operator+(const ComplexRows<bytes, Real>& rows, int number) {
  return {row(rows.first, rows.step, number / 2), number % 2};
}

template <int bytes>
TFMGEN_INLINE inline auto loadElement(PartOfRow<bytes, const float> from) {
  using V = Vector<float, bytes>;
  const auto first = loadUnaligned<V>(from.row);
  const auto second = loadUnaligned<V>(from.row + kLanesOf<V>);
  return from.part == 0 ? everyOther<0>(first, second) : everyOther<1>(first, second);
}

template <int bytes>
TFMGEN_INLINE inline void storeParts(PartOfRow<bytes, float> to, Vector<float, bytes> re, Vector<float, bytes> im) {
  storeUnaligned(to.row, unpackLow(re, im));
  storeUnaligned(to.row + kLanesOf<Vector<float, bytes>>, unpackHigh(re, im));
}

// ---- Elements in registers

template <class Real, int bytes, int count>
struct Registers {
  Vector<Real, bytes> v[count];
};

template <class Real, int bytes, int count>
struct RegisterOf {
  Registers<Real, bytes, count>& of;
  int element;
};

template <class Real, int bytes, int count>
TFMGEN_INLINE inline RegisterOf<Real, bytes, count> operator+(const RegisterOf<Real, bytes, count>& first,
                                                              int element) {
  return {first.of, element};
}

template <class Real, int bytes, int count>
TFMGEN_INLINE inline auto loadElement(RegisterOf<Real, bytes, count> from) {
  return from.of.v[from.element];
}

template <class Real, int bytes, int count>
TFMGEN_INLINE inline void storeElement(RegisterOf<Real, bytes, count> to, Vector<Real, bytes> v) {
  to.of.v[to.element] = v;
}

// The elements of a half spectrum, whose zeros stand there from the beginning.
template <class Layout>
struct SpectrumInRegisters : Layout {
  template <class Destination>
  TFMGEN_INLINE static void storeZeros(const Destination& /*y*/) {}
};

template <Format format, int n>
using LayoutOf =
    std::conditional_t<format == Format::ccs, Ccs<n>, std::conditional_t<format == Format::pack, Pack<n>, Perm<n>>>;

// Complex elements in two registers of frames each.
template <int bytes, int n>
struct ComplexRegisters {
  Vector<double, bytes> v[2][n];
};

template <int bytes, int n>
struct PartOfRegisters {
  ComplexRegisters<bytes, n>& of;
  int number;
};

template <int bytes, int n>
TFMGEN_INLINE inline PartOfRegisters<bytes, n> operator+(const PartOfRegisters<bytes, n>& first, int number) {
  return {first.of, number};
}

template <int bytes, int n>
TFMGEN_INLINE inline auto loadElement(PartOfRegisters<bytes, n> from) {
  const auto first = bitCast<Vector<float, bytes>>(from.of.v[0][from.number / 2]);
  const auto second = bitCast<Vector<float, bytes>>(from.of.v[1][from.number / 2]);
  return from.number % 2 == 0 ? everyOther<0>(first, second) : everyOther<1>(first, second);
}

template <int bytes, int n>
TFMGEN_INLINE inline void storeParts(PartOfRegisters<bytes, n> to, Vector<float, bytes> re, Vector<float, bytes> im) {
  to.of.v[0][to.number / 2] = bitCast<Vector<double, bytes>>(unpackLow(re, im));
  to.of.v[1][to.number / 2] = bitCast<Vector<double, bytes>>(unpackHigh(re, im));
}

// ---- Elements of two doubles, of as many frames as a register has blocks of 16 bytes. Kernels count them in doubles.

template <int bytes, class Real>
struct BlockRows {
  Real* first;
  Real* others; // where element 0 would be by the step of the others
  std::ptrdiff_t step;
};

template <int bytes, class Real>
TFMGEN_INLINE inline Row<bytes, Real> operator+(const BlockRows<bytes, Real>& rows, int number) {
  return {number == 0 ? rows.first : row(rows.others, rows.step, number / 2)};
}

// Rows whose frames lie anywhere.
template <int bytes, class Real>
struct SpreadRows {
  Real* first;
  Real* others; // where element 0 would be by the step of the others
  Spread by;
};

template <int bytes, class Real>
struct SpreadRow {
  Real* at;
  std::ptrdiff_t distance;

  TFMGEN_INLINE Real* operator()(int frame) const { return row(at, distance, frame); }
};

template <int bytes, class Real>
TFMGEN_INLINE inline SpreadRow<bytes, Real> operator+(const SpreadRows<bytes, Real>& rows, int number) {
  return {number == 0 ? rows.first : row(rows.others, rows.by.step, number / 2), rows.by.distance};
}

template <int bytes>
TFMGEN_INLINE inline auto loadElement(SpreadRow<bytes, const Tfm64f> row) {
  return loadPieces<Vector<Tfm64f, bytes>, 2, 1>(row, 0, 0);
}

template <int bytes>
TFMGEN_INLINE inline void storeElement(SpreadRow<bytes, Tfm64f> row, Vector<Tfm64f, bytes> v) {
  storePieces<2, 1>(row, 0, 0, v);
}

template <int bytes, int count>
struct BlockRegisters {
  Registers<Tfm64f, bytes, count>& of;
};

template <int bytes, int count>
TFMGEN_INLINE inline RegisterOf<Tfm64f, bytes, count> operator+(const BlockRegisters<bytes, count>& registers,
                                                                int number) {
  return {registers.of, number / 2};
}

template <int bytes>
struct BlockAccess {
  template <class Place>
  TFMGEN_INLINE static Vector<Tfm64f, bytes> load(Place from) {
    return loadElement(from);
  }

  template <class Place>
  TFMGEN_INLINE static void store(Place to, Vector<Tfm64f, bytes> v) {
    storeElement(to, v);
  }
};
// The lanes of a block in every block.
template <class V>
TFMGEN_INLINE inline V repeated(double re, double im) {
  return withIndices<kLanesOf<V>>([&](auto... i) TFMGEN_INLINE { return V{(i % 2 == 0 ? re : im)...}; });
}

// ---- Samples whose products are double

template <class Place, int bytes>
TFMGEN_INLINE inline void storeElement(Place to, Samples<bytes> x) {
  storeElement(to, x.v);
}

template <class Place, int bytes>
TFMGEN_INLINE inline void storeParts(Place to, Samples<bytes> re, Samples<bytes> im) {
  storeParts(to, re.v, im.v);
}

// What a kernel computes with, whose Constant is the type of its constants and so of its products.
template <class Kernel, class Real, int bytes>
using Computed =
    std::conditional_t<(sizeof(typename Kernel::Constant) > sizeof(Real)), Samples<bytes>, Vector<Real, bytes>>;

// ---- Routines

template <int bytes, Transform transform, class Real, int n>
void InRows<bytes, transform, Real, n>::run(const Real* x, std::ptrdiff_t sx, Real* y, std::ptrdiff_t sy,
                                            RowOffsets offsets, Real scale) {
  const auto s = broadcast<Vector<Real, bytes>>(scale);
  if constexpr (isInBlocks<transform, Real>) {
    BlockKernel<bytes, n>::template run<Vector<Real, bytes>, BlockAccess<bytes>>(
        BlockRows<bytes, const Real>{x, x, sx}, BlockRows<bytes, Real>{y, row(y, offsets.others, 1), sy}, s);
  } else if constexpr (isComplex(transform)) {
    using K = Kernel<bytes, transform, Real, n>;
    using T = Computed<K, Real, bytes>;
    K::template run<T, void>(ComplexRows<bytes, const Real>{x, sx}, ComplexRows<bytes, Real>{y, sy}, s);
  } else {
    using K = Kernel<bytes, transform, Real, n>;
    using T = Computed<K, Real, bytes>;
    K::template run<T, SpectrumInRows<n>>(Rows<bytes, const Real>{x, sx, offsets}, Rows<bytes, Real>{y, sy, offsets},
                                          s);
  }
}

template <int bytes, Transform transform, Format format, class Real, int n>
void InFrames<bytes, transform, format, Real, n>::run(const Real* x, std::ptrdiff_t dx, Real* y, std::ptrdiff_t dy,
                                                      Real scale) {
  const auto s = broadcast<Vector<Real, bytes>>(scale);
  if constexpr (isInBlocks<transform, Real>) {
    using V = Vector<Real, bytes>;
    Registers<Real, bytes, n> out;
    const auto run = [&](const auto& from) TFMGEN_INLINE {
      BlockKernel<bytes, n>::template run<V, BlockAccess<bytes>>(from, BlockRegisters<bytes, n>{out}, s);
    };
    if constexpr (n <= kLongestLoadedInTiles) {
      Registers<Real, bytes, n> in;
      loadFrames<V, 2>(EvenFrames<const Real>{x, 2 * dx}, n, [&](int e, V v) TFMGEN_INLINE { in.v[e] = v; });
      run(BlockRegisters<bytes, n>{in});
    } else {
      constexpr std::ptrdiff_t block = kBlockBytes;
      run(SpreadRows<bytes, const Real>{x, x, {block, block * dx}});
    }
    storeFrames<V, 2>(EvenFrames<Real>{y, 2 * dy}, n, [&](int e) TFMGEN_INLINE {
      return out.v[transform == Transform::complexInverse ? (n - e) % n : e];
    });
  } else if constexpr (isComplex(transform)) {
    using V = Vector<double, bytes>;
    constexpr int frames = kLanesOf<V>;
    const auto* from = reinterpret_cast<const double*>(x); // a complex element is moved as a double
    auto* to = reinterpret_cast<double*>(y);
    ComplexRegisters<bytes, n> in;
    ComplexRegisters<bytes, n> out;
    unroll<2>([&](auto half) TFMGEN_INLINE {
      loadFrames<V, 1>(EvenFrames<const double>{from + half * frames * dx, dx}, n,
                       [&](int element, V v) TFMGEN_INLINE { in.v[half][element] = v; });
    });
    using K = Kernel<bytes, transform, Real, n>;
    using T = Computed<K, Real, bytes>;
    K::template run<T, void>(PartOfRegisters<bytes, n>{in, 0}, PartOfRegisters<bytes, n>{out, 0}, s);
    unroll<2>([&](auto half) TFMGEN_INLINE {
      storeFrames<V, 1>(EvenFrames<double>{to + half * frames * dy, dy}, n,
                        [&](int element) TFMGEN_INLINE { return out.v[half][element]; });
    });
  } else {
    using V = Vector<Real, bytes>;
    constexpr int inputs = sourceLength(transform, format, n);
    constexpr int outputs = destinationLength(transform, format, n);
    Registers<Real, bytes, inputs> in;
    Registers<Real, bytes, outputs> out{};
    loadFrames<V, 1>(EvenFrames<const Real>{x, dx}, inputs, [&](int element, V v) TFMGEN_INLINE { in.v[element] = v; });
    using K = Kernel<bytes, transform, Real, n>;
    using T = Computed<K, Real, bytes>;
    K::template run<T, SpectrumInRegisters<LayoutOf<format, n>>>(RegisterOf<Real, bytes, inputs>{in, 0},
                                                                 RegisterOf<Real, bytes, outputs>{out, 0}, s);
    // Short stores between the long ones of two spectra cost up to half the time of the whole, as measured.
    constexpr bool isLongSpectrum = transform == Transform::realForward && n > 16;
    storeFrames<V, 1, isLongSpectrum ? Rest::inWholeTile : Rest::inNarrowTiles>(
        EvenFrames<Real>{y, dy}, outputs, [&](int element) TFMGEN_INLINE { return out.v[element]; });
  }
}

template <int bytes, int n>
void InPieces<bytes, n, true>::run(const Tfm64f* x, Spread from, Tfm64f* y, Spread to, std::ptrdiff_t others,
                                   Tfm64f scale) {
  BlockKernel<bytes, n>::template run<Vector<Tfm64f, bytes>, BlockAccess<bytes>>(
      SpreadRows<bytes, const Tfm64f>{x, x, from}, SpreadRows<bytes, Tfm64f>{y, row(y, others, 1), to},
      broadcast<Vector<Tfm64f, bytes>>(scale));
}

} // namespace tfmgen::batch
