// The straight-line transforms of a column, on as many columns at once as a vector has lanes.
#include "odd_transform.hpp"
#include "runs.hpp"
#include "stages.hpp"

namespace tfmgen::dct4 {
namespace {

template <class V, int n>
TFMGEN_INLINE inline void transformGroup(const Element<V>* up, const Element<V>* down, std::ptrdiff_t stride,
                                         Element<V>* out, std::ptrdiff_t rowStride) {
  const auto sample = [=](auto t) TFMGEN_INLINE {
    if constexpr (2 * t < n) {
      return loadRun<V, 1>(up + t * stride);
    } else {
      return loadRun<V, -1>(down - t * stride);
    }
  };
  oddTransform<n, V>(sample, [=](auto i, const Complex<V>& z) TFMGEN_INLINE {
    storeAligned(out + 2 * i * rowStride, z.re);
    storeAligned(out + (2 * i + 1) * rowStride, z.im);
  });
}

template <class V, int n>
[[gnu::noinline]] void transformGroups(const ColumnGroups<V>& groups) {
  const auto* up = groups.up;
  const auto* down = groups.down;
  auto* out = groups.out;
  for (std::int32_t group = groups.count; group > 0; --group) {
    transformGroup<V, n>(up, down, groups.stride, out, groups.rowStride);
    up += groups.inStep;
    down -= groups.inStep;
    out += groups.outStep;
  }
}

} // namespace

template <class V>
void runColumnKernel(std::int32_t kind, const ColumnGroups<V>& groups) {
  switch (kind) {
  case 1: return transformGroups<V, 2>(groups);
  case 2: return transformGroups<V, 4>(groups);
  case 3: return transformGroups<V, 8>(groups);
  case 4: return transformGroups<V, 16>(groups);
  case 5: return transformGroups<V, 32>(groups);
  default: return transformGroups<V, 64>(groups);
  }
}

template void runColumnKernel(std::int32_t, const ColumnGroups<Vector<Tfm32f>>&);
template void runColumnKernel(std::int32_t, const ColumnGroups<Vector<Tfm64f>>&);
#ifdef __AVX2__
template void runColumnKernel(std::int32_t, const ColumnGroups<Vector<Tfm32f, 32>>&);
template void runColumnKernel(std::int32_t, const ColumnGroups<Vector<Tfm64f, 32>>&);
#endif
#ifdef __AVX512F__
template void runColumnKernel(std::int32_t, const ColumnGroups<Vector<Tfm32f, 64>>&);
template void runColumnKernel(std::int32_t, const ColumnGroups<Vector<Tfm64f, 64>>&);
#endif

} // namespace tfmgen::dct4
