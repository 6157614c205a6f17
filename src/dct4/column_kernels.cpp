// The straight-line transforms of a column, on L columns at once.
#include "odd_transform.hpp"
#include "stages.hpp"

namespace tfmgen::dct4 {
namespace {

template <class T, int n>
[[gnu::noinline]] void transformGroup(ColumnGroup<T> group) {
  const auto sample = [=](auto t) TFMGEN_LAMBDA {
    if constexpr (2 * t < n) {
      return Lanes<T>::gather(group.up + t * group.stride, 1);
    } else {
      return Lanes<T>::gather(group.down - t * group.stride, -1);
    }
  };
  oddTransform<n, Lanes<T>>(sample, [=](auto i, const Complex<Lanes<T>>& z) TFMGEN_LAMBDA {
    z.re.store(group.out + 2 * i * group.rowStride);
    z.im.store(group.out + (2 * i + 1) * group.rowStride);
  });
}

} // namespace

template <class T>
void runColumnKernel(std::int32_t kind, const ColumnGroup<T>& group) {
  switch (kind) {
  case 1:
    return transformGroup<T, 2>(group);
  case 2:
    return transformGroup<T, 4>(group);
  case 3:
    return transformGroup<T, 8>(group);
  case 4:
    return transformGroup<T, 16>(group);
  case 5:
    return transformGroup<T, 32>(group);
  default:
    return transformGroup<T, 64>(group);
  }
}

template void runColumnKernel(std::int32_t, const ColumnGroup<Tfm32f>&);
template void runColumnKernel(std::int32_t, const ColumnGroup<Tfm64f>&);

} // namespace tfmgen::dct4
