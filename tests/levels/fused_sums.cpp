// Compiled with the options of a level, for the width TFMGEN_VECTOR_BYTES.
#include "fused_sums.hpp"

#include "kernel/access.hpp"
#include "kernel/fused_sum.hpp"

namespace tfmgen::test {
namespace {

template <class V, class Real>
void fuseAll(FusedSums<Real>& sums) {
  for (int i = 0; i < kFusedLanes; i += kLanesOf<V>) {
    const V a = loadUnaligned<V>(sums.a + i);
    const V b = loadUnaligned<V>(sums.b + i);
    storeUnaligned(sums.mixed + i, fusedSum(a, loadUnaligned<V>(sums.signs + i), b));
    storeUnaligned(sums.subtractAdd + i, subtractAdd(a, b));
    storeUnaligned(sums.addSubtract + i, addSubtract(a, b));
  }
}

} // namespace

template <>
void fuse<TFMGEN_VECTOR_BYTES>(FusedSums<float>& sums) {
  fuseAll<Vector<float, TFMGEN_VECTOR_BYTES>>(sums);
}

template <>
void fuse<TFMGEN_VECTOR_BYTES>(FusedSums<double>& sums) {
  fuseAll<Vector<double, TFMGEN_VECTOR_BYTES>>(sums);
}

} // namespace tfmgen::test
