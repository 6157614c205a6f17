// The lengths that have kernels.
#pragma once

namespace tfmgen::family {

inline constexpr int kFirstLength = 2;
inline constexpr int kLastLength = 64;

} // namespace tfmgen::family
