// The compiled routines of one width and how they are called. `bytes` is the width of a register; every name here holds
// it, so that no routine of one width is ever taken for that of another.
#pragma once

#include "family.hpp"
#include "tfmgen.h"

namespace tfmgen::batch {

// The longest frames that are transposed in registers, between their memory and a kernel.
constexpr int longestInRegisters(Format format) {
  return format == Format::pack || format == Format::perm ? 8 : 16;
}

// Where the spectrum of a real signal deviates from one row of samples an element: distances in samples from the first
// row to the only row of bin N/2, and to where row 2k would be the real part of bin k.
struct SpectrumRows {
  std::ptrdiff_t middle;
  std::ptrdiff_t bins;
};

// Groups of frames, a frame a lane: as many as `bytes` bytes have lanes of Real. Element e of all of them is a row at
// x + e * sx; of complex elements a row holds both parts of each frame in turn. All loads come before the first store.
template <int bytes, Transform transform, class Real, int n>
struct InRows {
  static void run(const Real* x, std::ptrdiff_t sx, Real* y, std::ptrdiff_t sy, SpectrumRows spectrum, Real scale);
};
template <class Real>
using RowsRoutine = void(const Real* x, std::ptrdiff_t sx, Real* y, std::ptrdiff_t sy, SpectrumRows spectrum,
                         Real scale);

// The same for frames each in one piece, frame f at x + f * dx.
template <int bytes, Transform transform, Format format, class Real, int n>
struct InFrames {
  static void run(const Real* x, std::ptrdiff_t dx, Real* y, std::ptrdiff_t dy, Real scale);
};
template <class Real>
using FramesRoutine = void(const Real* x, std::ptrdiff_t dx, Real* y, std::ptrdiff_t dy, Real scale);

// Complex elements of doubles in groups of bytes / 16 frames, forward. Elements lie at x + k * step + f * distance, of
// the result at y + f * distance for k = 0 and at y + others + k * step + f * distance else.
struct BlockLayout {
  std::ptrdiff_t step;
  std::ptrdiff_t distance;
};
template <int bytes, int n>
struct InBlocks {
  static void run(const Tfm64f* x, BlockLayout from, Tfm64f* y, BlockLayout to, std::ptrdiff_t others, Tfm64f scale);
  // The same frames side by side: distance 2 on both sides.
  static void runRows(const Tfm64f* x, std::ptrdiff_t sx, Tfm64f* y, std::ptrdiff_t sy, std::ptrdiff_t others,
                      Tfm64f scale);
};

} // namespace tfmgen::batch
