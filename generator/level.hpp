// The levels of x86-64 that kernels are made for.
#pragma once

#include <map>
#include <string>

namespace tfmgen {

enum class Level {
  baseline, // SSE2: 16 registers of 128 bits
  v3,       // AVX2 and FMA: 16 registers of 256 bits
  v4,       // AVX-512 F, BW, CD, DQ, VL: 32 registers of 512 bits
};

// By the names that compilers and the dynamic loader give them.
inline const std::map<std::string, Level> kLevels{{"x86-64-v3", Level::v3}, {"x86-64-v4", Level::v4}};

} // namespace tfmgen
