#pragma once

namespace tfmgen::transform {

// The sign in exp(+-2*pi*i*n*k/N): the inverse direction is nothing more.
enum class RootSign : int { forward = -1, inverse = +1 };

constexpr int factor(RootSign sign) {
  return static_cast<int>(sign);
}

constexpr RootSign opposite(RootSign sign) {
  return sign == RootSign::forward ? RootSign::inverse : RootSign::forward;
}

} // namespace tfmgen::transform
