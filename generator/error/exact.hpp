// The transforms by their definitions, unscaled, as matrices between the numbers that a kernel reads and writes.
#pragma once

#include "lower/real.hpp"
#include "number/quad.hpp"
#include "transform/root_sign.hpp"

#include <vector>

namespace tfmgen::error {

using number::Quad;
using QuadMatrix = std::vector<std::vector<Quad>>; // rows

struct Exact {
  QuadMatrix matrix;
  double norm; // the largest singular value
};

// On re and im of each element in turn.
Exact exactComplex(int length, transform::RootSign sign);

// Half spectra are numbered R(0), R(1), I(1), R(2) and so on.
Exact exactReal(int length, lower::Transform transform);

} // namespace tfmgen::error
