#include "batch.hpp"

#include <cstring>

namespace tfmgen::batch {

namespace {

// Frames one by one, where their elements do not stand side by side by way of a copy.
template <int elementBytes>
void transformElements(const Batch& batch) {
  constexpr std::ptrdiff_t size = elementBytes;
  const Family& family = *batch.family;
  const int inputs = sourceLength(family.transform, family.format, batch.length);
  const int outputs = destinationLength(family.transform, family.format, batch.length);
  alignas(16) std::byte in[(kLongest + 2) * elementBytes];
  alignas(16) std::byte out[(kLongest + 2) * elementBytes];
  for (std::int64_t f = 0; f < batch.count; ++f) {
    const std::byte* const src = batch.src.first + f * batch.src.distance * size;
    std::byte* const dst = batch.dst.first + f * batch.dst.distance * size;
    for (int i = 0; batch.src.step != 1 && i < inputs; ++i) {
      std::memcpy(in + i * size, src + i * batch.src.step * size, elementBytes);
    }
    family.single(batch.src.step == 1 ? src : in, batch.dst.step == 1 ? dst : out, batch.length, batch.flag);
    for (int i = 0; batch.dst.step != 1 && i < outputs; ++i) {
      std::memcpy(dst + i * batch.dst.step * size, out + i * size, elementBytes);
    }
  }
}

} // namespace

void transformSingly(const Batch& batch) {
  switch (batch.family->elementBytes) {
  case sizeof(Tfm32f): return transformElements<sizeof(Tfm32f)>(batch);
  case sizeof(Tfm32fc): return transformElements<sizeof(Tfm32fc)>(batch);
  default: return transformElements<sizeof(Tfm64fc)>(batch);
  }
}

} // namespace tfmgen::batch
