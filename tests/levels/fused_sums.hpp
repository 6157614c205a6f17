// What the fused operations of a level make of numbers, for a test that is itself compiled for every processor.
#pragma once

namespace tfmgen::test {

// As many numbers as the longest vector of floats has.
inline constexpr int kFusedLanes = 16;

template <class Real>
struct FusedSums {
  Real a[kFusedLanes];
  Real b[kFusedLanes];
  Real signs[kFusedLanes]; // 1 or -1

  Real mixed[kFusedLanes];       // a + signs * b
  Real subtractAdd[kFusedLanes]; // a - b in even lanes, a + b in odd ones
  Real addSubtract[kFusedLanes]; // the other way round
};

// Fills in the sums by vectors of `bytes` bytes. Both levels have 16 and 32, x86-64-v4 has 64.
template <int bytes>
void fuse(FusedSums<float>& sums);
template <int bytes>
void fuse(FusedSums<double>& sums);

} // namespace tfmgen::test
