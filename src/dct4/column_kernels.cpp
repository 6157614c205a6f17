// The straight-line transforms of a column, on L columns at once.
#include "odd_transform.hpp"
#include "stages.hpp"

namespace tfmgen::dct4 {
namespace {

template <class T, int n>
TFMGEN_INLINE inline void transformGroup(const T* up, const T* down, std::ptrdiff_t stride, T* out,
                                         std::ptrdiff_t rowStride) {
  const auto sample = [=](auto t) TFMGEN_INLINE {
    if constexpr (2 * t < n) {
      return gather<Vector<T>>(up + t * stride, 1);
    } else {
      return gather<Vector<T>>(down - t * stride, -1);
    }
  };
  oddTransform<n, Vector<T>>(sample, [=](auto i, const Complex<Vector<T>>& z) TFMGEN_INLINE {
    storeAligned(out + 2 * i * rowStride, z.re);
    storeAligned(out + (2 * i + 1) * rowStride, z.im);
  });
}

template <class T, int n>
[[gnu::noinline]] void transformGroups(const ColumnGroups<T>& groups) {
  const T* up = groups.up;
  const T* down = groups.down;
  T* out = groups.out;
  for (std::int32_t group = groups.count; group > 0; --group) {
    transformGroup<T, n>(up, down, groups.stride, out, groups.rowStride);
    up += groups.inStep;
    down -= groups.inStep;
    out += groups.outStep;
  }
}

} // namespace

template <class T>
void runColumnKernel(std::int32_t kind, const ColumnGroups<T>& groups) {
  switch (kind) {
  case 1: return transformGroups<T, 2>(groups);
  case 2: return transformGroups<T, 4>(groups);
  case 3: return transformGroups<T, 8>(groups);
  case 4: return transformGroups<T, 16>(groups);
  case 5: return transformGroups<T, 32>(groups);
  default: return transformGroups<T, 64>(groups);
  }
}

template void runColumnKernel(std::int32_t, const ColumnGroups<Tfm32f>&);
template void runColumnKernel(std::int32_t, const ColumnGroups<Tfm64f>&);

} // namespace tfmgen::dct4
