// The tags of shuffles of four lanes.
#pragma once

namespace tfmgen::lower {

// Two lanes of the left register, then two of the right one.
constexpr int selector(int left0, int left1, int right0, int right1) {
  return left0 | left1 << 2 | right0 << 4 | right1 << 6;
}

// The lane that a selector takes for lane i of the result.
constexpr int selected(int selector, int i) {
  return selector >> 2 * i & 3;
}

// Tags beside the selectors: the lower or the upper lanes of both registers in turn.
constexpr int kUnpackLow = 256;
constexpr int kUnpackHigh = 257;

} // namespace tfmgen::lower
