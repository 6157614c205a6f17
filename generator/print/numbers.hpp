// Constants as text.
#pragma once

#include "number/quad.hpp"

#include <string>

namespace tfmgen::print {

enum class Precision { single, twofold };

// The value rounded once, with the digits that give it back: 9 for float, with its suffix, 17 for double.
std::string literal(number::Quad value, Precision precision);

} // namespace tfmgen::print
