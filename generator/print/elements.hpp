// Programs on registers of complex elements as C++ text.
#pragma once

#include "wide/program.hpp"

#include <string>

namespace tfmgen::print {

// The statements of a kernel, one a line, for a function with these names in scope: x and y (source and destination as
// arrays of real numbers), scale. `registers` is how many of them the processor has.
std::string elementStatements(const wide::Program& program, int registers);

} // namespace tfmgen::print
