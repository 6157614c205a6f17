// The general entries and the size queries.
#include "frame/dispatch.hpp"
#include "wht/passes.hpp"

namespace {

using tfmgen::wht::bufferSize;
using tfmgen::wht::kMaxOrder;

template <class Real>
TfmStatus getBufferSize(std::int32_t order, std::int32_t* size) {
  if (order < 1 || order > kMaxOrder) {
    return tfmStsBadSize;
  }
  *size = [order]<int... k>(std::integer_sequence<int, k...>) {
    static constexpr std::int32_t sizes[] = {bufferSize<Real>(k + 1)...};
    return sizes[order - 1];
  }
  (std::make_integer_sequence<int, kMaxOrder>{});
  return tfmStsOk;
}

template <class Real>
using Entry = TfmStatus(const Real*, Real*, std::int32_t, std::uint8_t*);

constexpr Entry<Tfm32f>* kEntries32f[] = {tfmgWHT_1_32f,  tfmgWHT_2_32f,  tfmgWHT_3_32f, tfmgWHT_4_32f, tfmgWHT_5_32f,
                                          tfmgWHT_6_32f,  tfmgWHT_7_32f,  tfmgWHT_8_32f, tfmgWHT_9_32f, tfmgWHT_10_32f,
                                          tfmgWHT_11_32f, tfmgWHT_12_32f, tfmgWHT_13_32f};
constexpr Entry<Tfm64f>* kEntries64f[] = {tfmgWHT_1_64f,  tfmgWHT_2_64f,  tfmgWHT_3_64f, tfmgWHT_4_64f, tfmgWHT_5_64f,
                                          tfmgWHT_6_64f,  tfmgWHT_7_64f,  tfmgWHT_8_64f, tfmgWHT_9_64f, tfmgWHT_10_64f,
                                          tfmgWHT_11_64f, tfmgWHT_12_64f, tfmgWHT_13_64f};

} // namespace

TfmStatus tfmgWHT_32f(const Tfm32f* pSrc, Tfm32f* pDst, int32_t order, int32_t flag, uint8_t* pBuffer) {
  return tfmgen::dispatch<1>(kEntries32f, order, pSrc, pDst, flag, pBuffer);
}

TfmStatus tfmgWHT_64f(const Tfm64f* pSrc, Tfm64f* pDst, int32_t order, int32_t flag, uint8_t* pBuffer) {
  return tfmgen::dispatch<1>(kEntries64f, order, pSrc, pDst, flag, pBuffer);
}

TfmStatus tfmgWHTGetBufferSize_32f(int32_t order, int32_t* pSize) {
  return getBufferSize<Tfm32f>(order, pSize);
}

TfmStatus tfmgWHTGetBufferSize_64f(int32_t order, int32_t* pSize) {
  return getBufferSize<Tfm64f>(order, pSize);
}
