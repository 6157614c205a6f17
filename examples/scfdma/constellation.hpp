#pragma once

#include "tfmgen.h"

#include <string>
#include <vector>

// Writes a PNG of two complex planes side by side, with axes, each with the density of its points: black where there is
// none, the brighter the more. Throws std::runtime_error.
void writeConstellations(const std::vector<Tfm32fc>& received, const std::vector<Tfm32fc>& despread,
                         const std::string& path);
