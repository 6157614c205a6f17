// Kernels on scalars as C++ text.
#pragma once

#include "lower/real.hpp"
#include "numbers.hpp"

#include <string>

namespace tfmgen::print {

// How the text of a kernel differs from that of another.
struct ScalarForm {
  bool readsSpectrum = false;
  bool writesSpectrum = false;
  bool storesParts = false;                 // both parts of a complex element are stored at once
  Precision constants = Precision::twofold; // single: for kernels that have no double arithmetic
  int registers = 14;                       // of 16: one for the scale, one for what is being computed
};

// The assignments of a kernel, one a line, for a function with these names in scope: T (the sample type), x and y
// (source and destination), s (the scale), Spectrum (element of a bin in the format of the side that is a spectrum).
// All loads come before the first store, so that x and y may be the same array.
std::string scalarStatements(const lower::RealKernel& kernel, const ScalarForm& form);

} // namespace tfmgen::print
