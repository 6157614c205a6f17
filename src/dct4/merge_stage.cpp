// The merge stage: L adjacent rows of `work`, one in each lane, are rotated and go through the transpose of T(2f),
// whose outputs are 2f runs of L adjacent samples of the result.
#include "factor.hpp"
#include "odd_transform.hpp"
#include "stages.hpp"

namespace tfmgen::dct4 {
namespace {

template <class T, int f>
TFMGEN_INLINE inline void mergeBlock(const T* work, const T* table, T* up, T* down, std::ptrdiff_t n) {
  using V = Vector<T>;
  const auto rotated = [=](auto j) TFMGEN_INLINE {
    constexpr std::ptrdiff_t entry = 2 * kLanes<T> * mergePosition(f, j);
    const Complex<V> z{gather<V>(work + j, 2 * f), gather<V>(work + f + j, 2 * f)};
    return rotate(z, Complex<V>{loadAligned<V>(table + entry), loadAligned<V>(table + entry + kLanes<T>)});
  };
  oddTransposed<2 * f, V>(rotated, [=](auto c, const V& value) TFMGEN_INLINE {
    if constexpr (c < f) {
      scatter(up + c * n, 1, value);
    } else {
      scatter(down - c * n, -1, value);
    }
  });
}

template <class T, int f>
[[gnu::noinline]] void mergeRows(const TfmgDCT4MergeLoop<T>& loop, T* dst, const T* work) {
  const T* table = loop.table;
  T* up = dst;
  T* down = dst + loop.mirror;
  for (std::int32_t block = 0; block < loop.blocks; ++block) {
    mergeBlock<T, f>(work, table, up, down, loop.columnLength);
    work += loop.blockStride;
    table += kLanes<T> * 2 * f;
    up += kLanes<T>;
    down -= kLanes<T>;
  }
}

} // namespace

template <class T>
TfmStatus runMergeLoop(const TfmgDCT4MergeLoop<T>& loop, T* dst, const T* work) {
  switch (loop.kind) {
  case 1: mergeRows<T, 1>(loop, dst, work); break;
  case 2: mergeRows<T, 2>(loop, dst, work); break;
  case 3: mergeRows<T, 4>(loop, dst, work); break;
  case 4: mergeRows<T, 8>(loop, dst, work); break;
  case 5: mergeRows<T, 16>(loop, dst, work); break;
  case 6: mergeRows<T, 32>(loop, dst, work); break;
  default: return tfmStsBadArg;
  }
  return tfmStsOk;
}

template TfmStatus runMergeLoop(const TfmgDCT4MergeLoop<Tfm32f>&, Tfm32f*, const Tfm32f*);
template TfmStatus runMergeLoop(const TfmgDCT4MergeLoop<Tfm64f>&, Tfm64f*, const Tfm64f*);

} // namespace tfmgen::dct4
