// Kernels on scalars as C++ text.
#pragma once

#include "lower/real.hpp"

#include <string>

namespace tfmgen::print {

// The assignments of a kernel, one a line, for a function with these names in scope: T (the sample type), x and y
// (source and destination), s (the scale), Spectrum (element of a bin in the format of the side that is a spectrum).
// All loads come before the first store, so that x and y may be the same array.
std::string scalarStatements(const lower::RealKernel& kernel, bool readsSpectrum, bool writesSpectrum);

} // namespace tfmgen::print
