#include "codelets.hpp"

#include "codelet_kernels.hpp"

namespace tfmgen::dct4 {

template <class T, int N>
TfmStatus codelet(const T* src, T* dst) {
  codeletKernel<N, T>([=](auto m) TFMGEN_INLINE { return loadElement(src + m); },
                      [=](auto m, T value) TFMGEN_INLINE { storeElement(dst + m, value); });
  return tfmStsOk;
}

template TfmStatus codelet<Tfm32f, 2>(const Tfm32f*, Tfm32f*);
template TfmStatus codelet<Tfm32f, 4>(const Tfm32f*, Tfm32f*);
template TfmStatus codelet<Tfm32f, 8>(const Tfm32f*, Tfm32f*);
template TfmStatus codelet<Tfm32f, 16>(const Tfm32f*, Tfm32f*);
template TfmStatus codelet<Tfm32f, 32>(const Tfm32f*, Tfm32f*);
template TfmStatus codelet<Tfm64f, 2>(const Tfm64f*, Tfm64f*);
template TfmStatus codelet<Tfm64f, 4>(const Tfm64f*, Tfm64f*);
template TfmStatus codelet<Tfm64f, 8>(const Tfm64f*, Tfm64f*);
template TfmStatus codelet<Tfm64f, 16>(const Tfm64f*, Tfm64f*);
template TfmStatus codelet<Tfm64f, 32>(const Tfm64f*, Tfm64f*);

} // namespace tfmgen::dct4
