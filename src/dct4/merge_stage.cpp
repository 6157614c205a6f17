// The merge stage: adjacent rows of `work`, one in each lane, are rotated and go through the transpose of T(2f),
// whose outputs are 2f runs of L adjacent samples of the result.
#include "factor.hpp"
#include "odd_transform.hpp"
#include "runs.hpp"
#include "stages.hpp"

#include <algorithm>

namespace tfmgen::dct4 {
namespace {

// Column j of as many rows as V has lanes.
template <class V, int f>
TFMGEN_INLINE inline Complex<V> loadColumn(const Element<V>* work, int j) {
  return {gather<V>(work + j, 2 * f), gather<V>(work + f + j, 2 * f)};
}

// As many columns as V has lanes, from j on, into columns[j] and those behind it.
template <class V, int f, int j>
TFMGEN_INLINE inline void loadColumns(const Element<V>* work, Complex<V> (&columns)[f]) {
  V re[kLanesOf<V>];
  V im[kLanesOf<V>];
  unroll<kLanesOf<V>>([&](auto row) TFMGEN_INLINE {
    re[row] = loadAligned<V>(work + 2 * row * f + j);
    im[row] = loadAligned<V>(work + (2 * row + 1) * f + j);
  });
  transpose(re);
  transpose(im);
  unroll<kLanesOf<V>>([&](auto k) TFMGEN_INLINE { columns[j + k] = {re[k], im[k]}; });
}

template <class V, int f>
TFMGEN_INLINE inline void mergeBlock(const Element<V>* work, const Element<V>* table, Element<V>* up, Element<V>* down,
                                     std::ptrdiff_t n) {
  constexpr int lanes = kLanes<Element<V>>;
  const auto transform = [=](const auto& column) TFMGEN_INLINE {
    const auto rotated = [=](auto j) TFMGEN_INLINE {
      constexpr std::ptrdiff_t entry = 2 * lanes * mergePosition(f, j);
      constexpr std::ptrdiff_t block = std::ptrdiff_t{2} * lanes * f;
      const Complex<V> z = column(j);
      return rotate(z, Complex<V>{loadBlocks<V>(table + entry, block), loadBlocks<V>(table + entry + lanes, block)});
    };
    oddTransposed<2 * f, V>(rotated, [=](auto c, const V& value) TFMGEN_INLINE {
      if constexpr (c < f) {
        storeRun<1>(up + c * n, value);
      } else {
        storeRun<-1>(down - c * n, value);
      }
    });
  };
  if constexpr (kRegisterBytes == kBlockBytes || f < kLanesOf<V>) {
    transform([=](auto j) TFMGEN_INLINE { return loadColumn<V, f>(work, j); });
  } else {
    Complex<V> columns[f];
    unroll<f / kLanesOf<V>>([&](auto tile) TFMGEN_INLINE { loadColumns<V, f, tile * kLanesOf<V>>(work, columns); });
    transform([&](auto j) TFMGEN_INLINE { return columns[j]; });
  }
}

template <class V, int f, class T>
[[gnu::noinline]] void mergeRows(const TfmgDCT4MergeLoop<T>& loop, T* dst, const T* work) {
  constexpr std::int32_t blocks = kLanesOf<V> / kLanes<T>;
  const T* table = loop.table;
  T* up = dst;
  T* down = dst + loop.mirror;
  for (std::int32_t block = 0; block < loop.blocks; block += blocks) {
    mergeBlock<V, f>(work, table, up, down, loop.columnLength);
    work += blocks * loop.blockStride;
    table += kLanesOf<V> * 2 * f;
    up += kLanesOf<V>;
    down -= kLanesOf<V>;
  }
}

// By V or, where its rows do not come out even, by shorter vectors.
template <class V, int f, class T>
void mergeAllRows(const TfmgDCT4MergeLoop<T>& loop, T* dst, const T* work) {
  if constexpr (sizeof(V) > kBlockBytes) {
    if (loop.blocks % (kLanesOf<V> / kLanes<T>) != 0) {
      return mergeAllRows<HalfVector<V>, f>(loop, dst, work);
    }
  }
  mergeRows<V, f>(loop, dst, work);
}

// The longest vectors that a row of f columns is made of.
template <class T, int f>
using RowVector = Vector<T, std::clamp(f* int{sizeof(T)}, kBlockBytes, kRegisterBytes)>;

} // namespace

template <class T>
TfmStatus runMergeLoop(const TfmgDCT4MergeLoop<T>& loop, T* dst, const T* work) {
  switch (loop.kind) {
  case 1: mergeAllRows<RowVector<T, 1>, 1>(loop, dst, work); break;
  case 2: mergeAllRows<RowVector<T, 2>, 2>(loop, dst, work); break;
  case 3: mergeAllRows<RowVector<T, 4>, 4>(loop, dst, work); break;
  case 4: mergeAllRows<RowVector<T, 8>, 8>(loop, dst, work); break;
  case 5: mergeAllRows<RowVector<T, 16>, 16>(loop, dst, work); break;
  case 6: mergeAllRows<RowVector<T, 32>, 32>(loop, dst, work); break;
  default: return tfmStsBadArg;
  }
  return tfmStsOk;
}

template TfmStatus runMergeLoop(const TfmgDCT4MergeLoop<Tfm32f>&, Tfm32f*, const Tfm32f*);
template TfmStatus runMergeLoop(const TfmgDCT4MergeLoop<Tfm64f>&, Tfm64f*, const Tfm64f*);

} // namespace tfmgen::dct4
