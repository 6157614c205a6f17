// The figures of all routines as lines of comma-separated values.
#pragma once

#include "print/complex.hpp"

#include <string>

namespace tfmgen::error {

// The first line. Without a scale that rounds (TFM_NO_DIV); then with one of the factors 1/n and 1/sqrt(n), whichever
// has the larger bound.
constexpr const char* tableTitles() {
  return "name,bound,predicted,scale,scaled_bound,scaled_predicted";
}

// A kernel of complex samples: its routine.
std::string tableLine(const print::ComplexKernel& kernel);

// A kernel of real samples: the routines of both sample types and all formats of its spectrum.
std::string tableLines(const lower::RealKernel& kernel, lower::Transform transform, int length);

} // namespace tfmgen::error
