// The compiled routines of one width and how they are called. `bytes` is the width of a register; every name here holds
// it, so that no routine of one width is ever taken for that of another.
#pragma once

#include "family.hpp"
#include "kernel/vector.hpp"
#include "tfmgen.h"

namespace tfmgen::batch {

// Complex elements of doubles stay together, one in every 16 bytes.
template <Transform transform, class Real>
inline constexpr bool isInBlocks = isComplex(transform) && sizeof(Real) == sizeof(double);

// Whether no prime above 5 divides n: the lengths with the shortest kernels.
constexpr bool isSmooth(int n) {
  for (const int prime : {2, 3, 5}) {
    while (n % prime == 0) {
      n /= prime;
    }
  }
  return n == 1;
}

// Whether frames go from their memory to the registers of a kernel and back without a table of rows between. That is
// faster at nearly all lengths, where registers are widest by up to a quarter, since a table is stored and loaded once
// more. But it takes a second kernel: short ones have it, and of longer ones those that gain most for their size.
template <int bytes, Transform transform, Format format, class Real>
constexpr bool isInRegisters(int n) {
  if (isInBlocks<transform, Real>) {
    constexpr int longest = bytes == 64 ? 32 : bytes == 32 ? 8 : 0; // a group of one frame is rows anyway
    return n <= longest || (bytes == 64 && isSmooth(n));
  }
  if (isComplex(transform)) {
    constexpr int longest = bytes == 64 ? 36 : bytes == 32 ? 25 : 16;
    return n <= longest && (n <= 17 || isSmooth(n));
  }
  if (format == Format::pack || format == Format::perm) {
    return n <= 8;
  }
  constexpr int longest = bytes == 64 && sizeof(Real) == sizeof(double) ? 36 : 16;
  return n <= 16 || (n <= longest && isSmooth(n));
}

// Blocks of longer frames are put together as a kernel loads them, which needs no registers for elements that wait.
inline constexpr int kLongestLoadedInTiles = 32;

// Whether frames of two blocks to a register are faster without a table too: a kernel that takes registers apart as it
// loads and stores.
template <int bytes>
constexpr bool isInPieces(int n) {
  return bytes == 32 && n >= kShortest && !isInRegisters<bytes, Transform::complexForward, Format::plain, Tfm64f>(n);
}

// Where elements deviate from one row each, in bytes from the first row: the only row of bin N/2 of a real signal's
// spectrum, and where all others but the first begin: of a spectrum row 2k would be the real part of bin k.
struct RowOffsets {
  std::ptrdiff_t middle;
  std::ptrdiff_t others;
};

// Groups of frames, a frame a lane or a block: as many as `bytes` bytes have of them. Element e of all of them is a row
// sx * e bytes from x; of complex elements a row holds both parts of each frame in turn. All loads come before the
// first store.
template <int bytes, Transform transform, class Real, int n>
struct InRows {
  static void run(const Real* x, std::ptrdiff_t sx, Real* y, std::ptrdiff_t sy, RowOffsets offsets, Real scale);
};
template <class Real>
using RowsRoutine = void(const Real* x, std::ptrdiff_t sx, Real* y, std::ptrdiff_t sy, RowOffsets offsets, Real scale);

// The same for frames each in one piece, frame f at dx * f elements from x.
template <int bytes, Transform transform, Format format, class Real, int n>
struct InFrames {
  static void run(const Real* x, std::ptrdiff_t dx, Real* y, std::ptrdiff_t dy, Real scale);
};
template <class Real>
using FramesRoutine = void(const Real* x, std::ptrdiff_t dx, Real* y, std::ptrdiff_t dy, Real scale);
template <int bytes, Transform transform, Format format, class Real, int n>
requires(!isInRegisters<bytes, transform, format, Real>(n)) struct InFrames<bytes, transform, format, Real, n> {
};

// Complex elements of doubles in any layout, in bytes. As in InRows, all results but the first begin at
// `others`.
struct Spread {
  std::ptrdiff_t step;
  std::ptrdiff_t distance;
};
template <int bytes, int n, bool exists = isInPieces<bytes>(n)>
struct InPieces {};
template <int bytes, int n>
struct InPieces<bytes, n, true> {
  static void run(const Tfm64f* x, Spread from, Tfm64f* y, Spread to, std::ptrdiff_t others, Tfm64f scale);
};
using PiecesRoutine = void(const Tfm64f* x, Spread from, Tfm64f* y, Spread to, std::ptrdiff_t others, Tfm64f scale);

} // namespace tfmgen::batch
