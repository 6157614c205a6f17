// Kernels on vectors taken apart: every lane of every register a value of its own.
#pragma once

#include "kernel.hpp"
#include "real.hpp"

namespace tfmgen::lower {

// The numbers that the lanes of registers hold.
struct RegisterType {
  int lanes;      // 2 or 4
  int sampleBits; // of a lane: constants are rounded to it
};

// The scalar graph of a kernel without signed references: a lane move becomes a name, lanes that nothing needs vanish,
// equal operations are one. Sample 2*n is the real part of element n, 2*n + 1 the imaginary part, in loads and results.
//
// It computes the bits of the kernel, for zeros of both signs, infinities and denormals too, but for the sign of NaNs.
// So it changes operations only where every value keeps its bits:
//
//   1 * x = x              a + (-b) = a - b       x - (+0) = x       c * (-a) = -(c * a)
//   -1 * x = -x            a - (-b) = a + b       x + (-0) = x
//   -(-x) = x              (-a) + b = b - a       (-0) - x = -x
//
// and keeps what differs in the sign of a zero, or for infinities: 0 * x, x + (+0), (-a) + (-b) beside -(a + b), b - a
// beside -(a - b).
RealKernel perLane(const Kernel& kernel, RegisterType type);

} // namespace tfmgen::lower
